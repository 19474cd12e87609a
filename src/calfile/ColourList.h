#pragma once

#include <QString>

#include "calfile/Records.h"

// The colour list as a calendar file holds it, and the scheme a new document starts with.
namespace kelvane {

// One colour-list entry; the name is cut or padded to 20 characters.
ColourListItem MakeColourListItem(const QString& name, qint16 red, qint16 green, qint16 blue,
                                  bool absolute, bool enabled);

// The colour of a colour-list entry, as ResolveColour takes it.
ColourChoice ChoiceOf(const ColourListItem& item);

// Free slots everywhere except the three defaults: "Back Colour" (-25, -5, 20),
// "Current Date" (100, 0, 0) and "Selected Date" (0, 100, 0), all enabled offsets.
void BuildColourList(ColourListTable& colourList);

}  // namespace kelvane
