#include "kelvane_cal/ical/ImportedDates.h"

#include <QDate>

#include <algorithm>

#include "kelvane_cal/ical/CalendarFacts.h"

#include "calfile/ColourList.h"
#include "calfile/Conversions.h"
#include "calfile/Graphemes.h"
#include "calfile/NoteText.h"
#include "calfile/YearRules.h"

namespace kelvane::cal {

namespace {

const QString kTitleSeparator = QStringLiteral("; ");

int SlotOf(int month, int day) {
    if (month < 1 || month > 12 || day < 1 ||
        day > SlotsPerMonth[static_cast<std::size_t>(month - 1)]) {
        return -1;
    }
    int slot = day - 1;
    for (int m = 1; m < month; ++m) {
        slot += SlotsPerMonth[static_cast<std::size_t>(m - 1)];
    }
    return slot;
}

// Texts from other programs may hold line breaks where a title has none.
QString OneLine(const QString& text) {
    QString line = text;
    line.replace(QLatin1Char('\r'), QLatin1Char(' ')).replace(QLatin1Char('\n'), QLatin1Char(' '));
    return line.trimmed();
}

bool SameActivity(const Appointment& a, const Appointment& b) {
    return a.Description.Trimmed() == b.Description.Trimmed() && a.StartTime == b.StartTime &&
           a.EndTime == b.EndTime;
}

// Whether `part` stands whole in `held`: as all of it, or between `separator`s
// and its ends. The held text is never split, so a part that holds the
// separator itself ("Team; Offsite") is found as well, and a part is not found
// inside a longer one ("Room 1" is not in "Room 12").
bool HoldsWhole(const QString& held, const QString& part, const QString& separator) {
    if (held == part) {
        return true;
    }
    return held.startsWith(part + separator) || held.endsWith(separator + part) ||
           held.contains(separator + part + separator);
}

// Whether a full `held` text ends in the beginning of `part`, as it does when
// the part was cut to fit by an earlier import of the same file: the part's
// next grapheme would not have fitted.
bool HoldsCut(const QString& held, const QString& part, const QString& separator, qsizetype limit) {
    const qsizetype at = held.lastIndexOf(separator);
    const QString tail = at < 0 ? held : held.mid(at + separator.size());
    if (tail.isEmpty() || tail.size() >= part.size() || !part.startsWith(tail)) {
        return false;
    }
    const qsizetype nextGrapheme = NextGraphemeEnd(part, tail.size()) - tail.size();
    return held.size() + nextGrapheme > limit;
}

// `held` followed by the `parts` it does not hold yet, each after `separator`,
// within `limit` characters; a cut never splits a grapheme. False
// when something had to be cut. A date that lacks nothing keeps its text as
// it is, and so does one whose text is full: a cut that leaves nothing of the
// new parts but their separator leaves the held text alone.
bool AddMissingParts(const QString& held, const QStringList& parts, const QString& separator,
                     qsizetype limit, QString& joined) {
    QStringList all;
    if (!held.isEmpty()) {
        all << held;
    }
    for (const QString& part : parts) {
        if (!HoldsWhole(held, part, separator) && !HoldsCut(held, part, separator, limit)) {
            all << part;
        }
    }
    joined = all.join(separator);
    if (joined.size() <= limit) {
        return true;
    }
    joined = CutText(joined, limit);
    if (!held.isEmpty() && joined.size() <= held.size() + separator.size()) {
        joined = held;
    }
    return false;
}

// A title's parts after the held title, joined by "; "; false when cut.
bool JoinTitles(const QString& held, const QStringList& parts, QString& title) {
    return AddMissingParts(held, parts, kTitleSeparator, TitleLength, title);
}

// A note's texts after the held note, one per paragraph; false when cut.
bool JoinNote(const QString& held, const QStringList& texts, QString& note) {
    // CR LF is one grapheme, so a cut never leaves a line break half made.
    return AddMissingParts(held, texts, kNoteLineBreak, NoteLength, note);
}

// Leaves the kActivitiesPerDate earliest activities of a schedule in their
// order, the earlier in the schedule first among those that start together;
// how many were left out.
int KeepEarliest(std::vector<Appointment>& schedule) {
    const auto most = static_cast<std::size_t>(ImportedDates::kActivitiesPerDate);
    if (schedule.size() <= most) {
        return 0;
    }
    std::vector<std::size_t> byStart(schedule.size());
    for (std::size_t i = 0; i < byStart.size(); ++i) {
        byStart[i] = i;
    }
    std::stable_sort(byStart.begin(), byStart.end(), [&](std::size_t a, std::size_t b) {
        return CompareClockTime(schedule[a].StartTime, schedule[b].StartTime) < 0;
    });
    std::vector<bool> kept(schedule.size(), false);
    for (std::size_t i = 0; i < most; ++i) {
        kept[byStart[i]] = true;
    }
    std::vector<Appointment> earliest;
    for (std::size_t i = 0; i < schedule.size(); ++i) {
        if (kept[i]) {
            earliest.push_back(schedule[i]);
        }
    }
    const int leftOut = static_cast<int>(schedule.size() - most);
    schedule = std::move(earliest);
    return leftOut;
}

}  // namespace

ImportedDates::Day* ImportedDates::DayAt(int month, int day) {
    const int slot = SlotOf(month, day);
    if (slot < 0) {
        return nullptr;
    }
    return &days_[static_cast<std::size_t>(slot)];
}

void ImportedDates::AddTitle(int month, int day, const QString& title) {
    Day* found = DayAt(month, day);
    const QString line = OneLine(title);
    if (found == nullptr || line.isEmpty() || found->Titles.contains(line)) {
        return;
    }
    found->Touched = true;
    // Titles past the title's length are cut anyway; one is kept to say so.
    if (found->Titles.join(kTitleSeparator).size() <= TitleLength) {
        found->Titles << line;
    }
}

void ImportedDates::AddActivity(int month, int day, const QString& description,
                                const ClockTime& start, const ClockTime& end) {
    Day* found = DayAt(month, day);
    if (found == nullptr) {
        return;
    }
    QString text = OneLine(description);
    if (text.isEmpty()) {
        text = QStringLiteral("(no title)");
    }
    if (text.size() > FixedText<50>::Length) {
        ++descriptionsCut_;
        // Cut as the description field cuts, never inside a grapheme, so
        // that the same event compares equal to what an import kept of it.
        text = CutText(text, FixedText<50>::Length);
    }
    found->Touched = true;
    auto& activities = found->Activities;
    // A full date keeps an activity that starts no earlier than its last
    // one no more than it would after putting it last.
    if (static_cast<int>(activities.size()) >= kActivitiesPerDate &&
        CompareClockTime(start, activities.back().StartTime) >= 0) {
        ++found->ActivitiesLeftOut;
        return;
    }
    Appointment entry;
    entry.Description = text;
    entry.StartTime = start;
    entry.EndTime = end;
    const auto later = std::upper_bound(activities.begin(), activities.end(), entry,
                                        [](const Appointment& a, const Appointment& b) {
                                            return CompareClockTime(a.StartTime, b.StartTime) < 0;
                                        });
    activities.insert(later, entry);
    if (static_cast<int>(activities.size()) > kActivitiesPerDate) {
        activities.pop_back();
        ++found->ActivitiesLeftOut;
    }
}

void ImportedDates::AddNote(int month, int day, const QString& text) {
    Day* found = DayAt(month, day);
    const QString note = Trim(WithCrLfBreaks(text));
    if (found == nullptr || note.trimmed().isEmpty() || found->NoteFull ||
        found->NoteTexts.contains(note)) {
        return;
    }
    found->Touched = true;
    found->NoteTexts << note;
    found->NoteLength += note.size() + kNoteLineBreak.size();
    found->NoteFull = found->NoteLength > NoteLength;
}

bool ImportedDates::Empty() const {
    return DatesTouched() == 0;
}

int ImportedDates::DatesTouched() const {
    return static_cast<int>(
        std::count_if(days_.begin(), days_.end(), [](const Day& day) { return day.Touched; }));
}

CalendarFileContent ImportedDates::NewCalendar(int year, QStringList& warnings) const {
    CalendarFileContent calendar;
    // The year line is read as a leap indicator: below 0 lays out a year
    // without 29 February, so the weekdays after February are the year's own.
    calendar.Settings.Year = static_cast<qint16>(QDate::isLeapYear(year) ? year : -year);
    calendar.Settings.FirstDay = FirstWeekdayOfGregorianYear(year);
    calendar.Settings.FontName = QStringLiteral("Arial");
    calendar.Settings.FontSize = 9;
    BuildColourList(calendar.Settings.ColourList);
    MergeInto(calendar, warnings);
    return calendar;
}

void ImportedDates::MergeInto(CalendarFileContent& calendar, QStringList& warnings) const {
    std::vector<CalendarFileDate> merged;
    auto held = calendar.Dates.begin();
    std::size_t slot = 0;
    for (qint16 month = 1; month <= 12; ++month) {
        for (qint16 day = 1; day <= SlotsPerMonth[static_cast<std::size_t>(month - 1)]; ++day) {
            CalendarFileDate date;
            date.Month = month;
            date.Day = day;
            const bool isHeld =
                held != calendar.Dates.end() && held->Month == month && held->Day == day;
            if (isHeld) {
                date = std::move(*held++);
            }
            const Day& imported = days_[slot++];
            if (imported.Touched) {
                MergeDay(imported, date, warnings);
            }
            if (isHeld || imported.Touched) {
                merged.push_back(std::move(date));
            }
        }
    }
    calendar.Dates = std::move(merged);
    if (descriptionsCut_ > 0) {
        warnings << QStringLiteral("%1 cut to 50 characters")
                        .arg(Counted(descriptionsCut_, QStringLiteral("activity description was"),
                                     QStringLiteral("activity descriptions were")));
    }
}

void ImportedDates::MergeDay(const Day& imported, CalendarFileDate& date,
                             QStringList& warnings) const {
    const QString where = DayAndMonth(date.Month, date.Day);
    const QString heldTitle = date.Entry.Title.Trimmed();
    QString title;
    if (!JoinTitles(heldTitle, imported.Titles, title)) {
        warnings
            << QStringLiteral("%1: the title was cut to %2 characters").arg(where).arg(TitleLength);
    }
    if (title != heldTitle) {
        date.Entry.Title = title;
    }

    // Only what the date held before counts as there already: two events
    // alike are two activities.
    const auto heldEnd = static_cast<std::ptrdiff_t>(date.Schedule.size());
    for (const Appointment& entry : imported.Activities) {
        const bool held = std::any_of(date.Schedule.begin(), date.Schedule.begin() + heldEnd,
                                      [&](const Appointment& a) { return SameActivity(a, entry); });
        if (!held) {
            date.Schedule.push_back(entry);
        }
    }
    const int leftOut = imported.ActivitiesLeftOut + KeepEarliest(date.Schedule);
    if (leftOut > 0) {
        warnings << QStringLiteral("%1: %2 after the %3 earliest left out")
                        .arg(where, Counted(leftOut, QStringLiteral("activity"),
                                            QStringLiteral("activities")))
                        .arg(kActivitiesPerDate);
    }

    const QString heldNote = Trim(date.Note);
    QString note;
    if (!JoinNote(heldNote, imported.NoteTexts, note)) {
        warnings
            << QStringLiteral("%1: the note was cut to %2 characters").arg(where).arg(NoteLength);
    }
    if (note != heldNote) {
        date.Note = note;
    }
}

}  // namespace kelvane::cal
