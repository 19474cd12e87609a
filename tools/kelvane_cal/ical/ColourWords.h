#pragma once

#include <QString>

#include "calfile/Records.h"

namespace kelvane::cal {

// A date's colour choice in words: "the grid's own" when it is not enabled,
// "light orange (255, 220, 150)" when absolute, and "the grid's own, red +20,
// blue -5" for offsets from the grid's colour.
QString ColourInWords(const ColourChoice& colour);

// The name of the listed colour nearest to red, green, blue.
QString NearestColourName(int red, int green, int blue);

}  // namespace kelvane::cal
