#include "calfile/CalendarFile.h"

#include <algorithm>
#include <array>
#include <limits>
#include <utility>

#include "calfile/ColourList.h"
#include "calfile/Conversions.h"
#include "calfile/Flags.h"
#include "calfile/NoteText.h"

namespace kelvane {

namespace {

constexpr qsizetype kLongestFontName = 255;

bool ReadFlag(LineReader& in, bool& flag) {
    qint16 number = 0;
    if (!in.ReadNumber16(number)) {
        return false;
    }
    flag = NumberToFlag(number);
    return true;
}

// Absolute, Enabled, Red, Green, Blue.
bool ReadColour(LineReader& in, ColourChoice& colour) {
    std::array<qint16, 5> values{};
    if (!in.ReadValueList16(values)) {
        return false;
    }
    colour = ColourChoice{values[2], values[3], values[4], NumberToFlag(values[0]),
                          NumberToFlag(values[1])};
    return true;
}

bool ReadClockTime(LineReader& in, ClockTime& time) {
    std::array<qint16, 2> values{};
    if (!in.ReadValueList16(values)) {
        return false;
    }
    time = ClockTime{values[0], values[1]};
    return true;
}

bool ReadSettings(LineReader& in, CalendarFileSettings& settings) {
    if (!in.ReadNumber16(settings.Year) || !in.ReadNumber16(settings.FirstDay) ||
        !ReadFlag(in, settings.ToolsShown) || !ReadFlag(in, settings.CalenderShown) ||
        !in.ReadLine(settings.FontName) || !in.ReadNumber16(settings.FontSize)) {
        return false;
    }
    // No installed font has a longer name; a longer line is not worth keeping.
    settings.FontName = CutText(settings.FontName, kLongestFontName);
    for (ColourListItem& item : settings.ColourList) {
        QString name;
        ColourChoice colour;
        if (!in.ReadLine(name) || !ReadColour(in, colour)) {
            return false;
        }
        item = MakeColourListItem(Trim(name), colour.Red, colour.Green, colour.Blue,
                                  colour.Absolute, colour.Enabled);
    }
    return true;
}

// A schedule count below 1 means no entries; entries past the 40 a date can
// hold are read over so that the dates after it still line up.
bool ReadSchedule(LineReader& in, std::vector<Appointment>& schedule) {
    qint16 count = 0;
    if (!in.ReadNumber16(count)) {
        return false;
    }
    schedule.reserve(static_cast<std::size_t>(std::clamp<int>(count, 0, MaxAppointmentsPerDate)));
    QString description;  // one buffer for every line
    for (int i = 0; i < count; ++i) {
        Appointment entry;
        if (!in.ReadLine(description) || !ReadClockTime(in, entry.EndTime) ||
            !ReadClockTime(in, entry.StartTime)) {
            return false;
        }
        if (i < MaxAppointmentsPerDate) {
            entry.Description = description;
            schedule.push_back(std::move(entry));
        }
    }
    return true;
}

bool ReadDate(LineReader& in, CalendarFileDate& date) {
    QString title;
    if (!in.ReadLine(title) || !ReadColour(in, date.Entry.TextColour) ||
        !ReadColour(in, date.Entry.BackColour) || !ReadSchedule(in, date.Schedule)) {
        return false;
    }
    date.Entry.Title = title;
    return ReadNoteSection(in, date.Note);
}

bool ReadDaySlots(LineReader& in, std::vector<CalendarFileDate>& dates) {
    for (qint16 month = 1; month <= 12; ++month) {
        for (qint16 day = 1; day <= SlotsPerMonth[static_cast<std::size_t>(month - 1)]; ++day) {
            bool hasContent = false;
            if (!ReadFlag(in, hasContent)) {
                return false;
            }
            if (!hasContent) {
                continue;
            }
            CalendarFileDate date;
            date.Month = month;
            date.Day = day;
            if (!ReadDate(in, date)) {
                return false;
            }
            dates.push_back(std::move(date));
        }
    }
    return true;
}

void WriteColour(LineWriter& out, const ColourChoice& colour) {
    out.WriteValueList({FlagToDigit(colour.Absolute), FlagToDigit(colour.Enabled), colour.Red,
                        colour.Green, colour.Blue});
}

}  // namespace

CalendarFileReport ReadCalendarFile(const QByteArray& bytes, CalendarFileContent& content) {
    LineReader in(bytes);
    QString header;
    if (!in.ReadLine(header) || header != CalendarFileHeader) {
        return {CalendarFileStatus::Unrecognized, 1, QStringLiteral("not a calendar file")};
    }
    if (!ReadSettings(in, content.Settings) || !ReadDaySlots(in, content.Dates)) {
        return {CalendarFileStatus::Damaged, in.FailureLine(), in.FailureReason()};
    }
    return {};
}

void WriteCalendarSettings(LineWriter& out, const CalendarFileSettings& settings) {
    out.WriteText(CalendarFileHeader);
    out.WriteNumber(settings.Year);
    out.WriteNumber(settings.FirstDay);
    out.WriteNumber(FlagToDigit(settings.ToolsShown));
    out.WriteNumber(FlagToDigit(settings.CalenderShown));
    out.WriteText(settings.FontName);
    out.WriteNumber(settings.FontSize);
    for (const ColourListItem& item : settings.ColourList) {
        out.WriteText(item.Name.Trimmed());
        WriteColour(out, ChoiceOf(item));
    }
}

void WriteDaySlot(LineWriter& out, const CalendarFileDate* date) {
    if (date == nullptr) {
        out.WriteNumber(0);
        return;
    }
    out.WriteNumber(1);
    out.WriteText(TrimmedView(date->Entry.Title.Value()));
    WriteColour(out, date->Entry.TextColour);
    WriteColour(out, date->Entry.BackColour);
    out.WriteNumber(static_cast<qint64>(date->Schedule.size()));
    for (const Appointment& entry : date->Schedule) {
        out.WriteText(TrimmedView(entry.Description.Value()));
        out.WriteValueList({entry.EndTime.Hour, entry.EndTime.Minute});
        out.WriteValueList({entry.StartTime.Hour, entry.StartTime.Minute});
    }
    WriteNoteSection(out, date->Note);
}

void WriteCalendarFile(LineWriter& out, const CalendarFileContent& content) {
    WriteCalendarSettings(out, content.Settings);
    auto next = content.Dates.begin();
    for (qint16 month = 1; month <= 12; ++month) {
        for (qint16 day = 1; day <= SlotsPerMonth[static_cast<std::size_t>(month - 1)]; ++day) {
            const bool here =
                next != content.Dates.end() && next->Month == month && next->Day == day;
            WriteDaySlot(out, here ? &*next : nullptr);
            if (here) {
                ++next;
            }
        }
    }
}

}  // namespace kelvane
