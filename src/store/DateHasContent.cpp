#include "store/DateHasContent.h"

#include "calfile/Conversions.h"

namespace kelvane {

namespace {

bool ColourIsSet(const ColourChoice& colour) {
    return colour.Absolute || colour.Enabled || colour.Red != 0 || colour.Green != 0 ||
           colour.Blue != 0;
}

}  // namespace

bool DateHasContent(const DateEntry& entry, const QString& note, int appointmentCount) {
    return !entry.Title.IsBlank() || ColourIsSet(entry.TextColour) ||
           ColourIsSet(entry.BackColour) || !Trim(note).isEmpty() || appointmentCount >= 1;
}

}  // namespace kelvane
