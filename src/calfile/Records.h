#pragma once

#include <QString>
#include <QtGlobal>

#include <array>

#include "calfile/FixedText.h"
#include "calfile/OneBased.h"

// The records and constants every part of a calendar document shares.
namespace kelvane {

inline constexpr int DaySlotCount = 366;
inline constexpr int MaxAppointmentsPerDate = 40;
inline constexpr int NoteLength = 800;
inline constexpr int TitleLength = 255;
inline constexpr int RecentFileCount = 4;
inline constexpr int ColourListCount = 21;
inline constexpr int ColourNameLength = 20;

// Day slots of each month, January first: February always has 29.
inline constexpr std::array<qint16, 12> SlotsPerMonth = {31, 29, 31, 30, 31, 30,
                                                         31, 31, 30, 31, 30, 31};

// A colour as red + green * 256 + blue * 65536.
using ColourValue = qint32;

// Month lengths indexed by month 1..12.
using MonthLengths = OneBased<qint16, 12>;

// A date. The field order Year, Day, Month is the document's own.
struct CalDate {
    qint16 Year = 0;
    qint16 Day = 0;
    qint16 Month = 0;

    friend bool operator==(const CalDate&, const CalDate&) = default;
};

// A time of day without seconds. An Hour of -1 marks an absent end time.
struct ClockTime {
    qint16 Hour = 0;
    qint16 Minute = 0;

    friend bool operator==(const ClockTime&, const ClockTime&) = default;
};

// A colour choice: absolute channels 0..255 when Absolute, otherwise offsets
// added to a base colour; ignored altogether when not Enabled.
struct ColourChoice {
    qint16 Red = 0;
    qint16 Green = 0;
    qint16 Blue = 0;
    bool Absolute = false;
    bool Enabled = false;

    friend bool operator==(const ColourChoice&, const ColourChoice&) = default;
};

// One named entry of the grid's colour scheme; an empty name marks a free slot.
struct ColourListItem {
    FixedText<ColourNameLength> Name;
    qint16 Red = 0;
    qint16 Green = 0;
    qint16 Blue = 0;
    bool Absolute = false;
    bool Enabled = false;

    friend bool operator==(const ColourListItem&, const ColourListItem&) = default;
};

// The grid's colour scheme, slots 0..20; slot 0 colours the header band, slot 1
// today's cell and slot 2 the selected cell.
using ColourListTable = std::array<ColourListItem, ColourListCount>;

// A date's title and colours. Text2 travels with the entry but is neither shown
// nor saved to a calendar file.
struct DateEntry {
    FixedText<TitleLength> Title;
    FixedText<TitleLength> Text2;
    ColourChoice TextColour;
    ColourChoice BackColour;

    friend bool operator==(const DateEntry&, const DateEntry&) = default;
};

}  // namespace kelvane
