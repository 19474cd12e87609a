#include "store/DocumentFile.h"

namespace kelvane {

namespace {

// The year every whole-document walk selects its dates in.
constexpr qint16 kWalkYear = 2000;

CalendarFileSettings CurrentSettings(const Store& store, MonthViewControl& monthView,
                                     const ViewFlags& flags) {
    CalendarFileSettings settings;
    monthView.FirstDayandYear(settings.Year, settings.FirstDay, true);
    settings.ToolsShown = flags.ToolsShown;
    settings.CalenderShown = flags.CalenderShown;
    monthView.GetFont(settings.FontName, settings.FontSize);
    settings.ColourList = store.calender.ColourList;
    return settings;
}

// The date as the working copies hold it after loading it. Its fields are
// made from the copies at once, not first made blank.
CalendarFileDate LoadedDate(const Store& store, qint16 month, qint16 day) {
    const qint16 count = store.appointments.CountAppointments();
    std::vector<Appointment> schedule;
    schedule.reserve(static_cast<std::size_t>(count));
    for (qint16 i = 1; i <= count; ++i) {
        schedule.push_back(store.appointments.AppointmentList[i]);
    }
    return CalendarFileDate{.Month = month,
                            .Day = day,
                            .Entry = store.calender.CurrentEntry,
                            .Schedule = std::move(schedule),
                            .Note = store.diary.NoteBuffer.Value()};
}

void ApplyDate(Store& store, MonthViewControl& monthView, const CalendarFileDate& date) {
    monthView.SetDate(kWalkYear, date.Month, date.Day);
    DateEntry& entry = store.calender.CurrentEntry;
    entry.Title = date.Entry.Title;
    entry.TextColour = date.Entry.TextColour;
    entry.BackColour = date.Entry.BackColour;

    const QString key = MakeDateKey(date.Month, date.Day);
    // The working list becomes the schedule and empty slots after it, and the
    // date's block is written once, whole.
    AppointmentSlots& list = store.appointments.AppointmentList;
    int slot = 1;
    for (const Appointment& appointment : date.Schedule) {
        if (!AppointmentSlots::Contains(slot)) {
            break;
        }
        list[slot++] = appointment;
    }
    const Appointment empty;
    for (; AppointmentSlots::Contains(slot); ++slot) {
        list[slot] = empty;
    }
    // The schedule is written before the note, so that on a full disk the
    // schedule's message comes first.
    store.appointments.SaveAppointments(key);
    store.diary.NoteBuffer = date.Note;
    store.diary.SaveNote(key);
    monthView.UpdateSelectedDate(false);
}

void WriteOpenEdit(LineWriter& out, const CalendarFileDate& date) {
    const bool content =
        DateHasContent(date.Entry, date.Note, static_cast<int>(date.Schedule.size()));
    WriteDaySlot(out, content ? &date : nullptr);
}

}  // namespace

QString MonthPercentage(qint16 month) {
    return QString::number(month * 100 / 12) + QLatin1Char('%');
}

void WriteDocument(Store& store, MonthViewControl& monthView, const ViewFlags& flags,
                   LineWriter& out, const StatusSink& status, const CalendarFileDate* openEdit) {
    WriteCalendarSettings(out, CurrentSettings(store, monthView, flags));
    for (qint16 month = 1; month <= 12; ++month) {
        for (qint16 day = 1; day <= store.module1.DaysInMonth[month]; ++day) {
            if (openEdit != nullptr && openEdit->Month == month && openEdit->Day == day) {
                WriteOpenEdit(out, *openEdit);
                continue;
            }
            monthView.SetDate(kWalkYear, month, day);
            const QString key = MakeDateKey(month, day);
            store.appointments.LoadAppointments(key);
            store.diary.LoadNote(key);
            if (store.DateHasContent()) {
                const CalendarFileDate date = LoadedDate(store, month, day);
                WriteDaySlot(out, &date);
            } else {
                WriteDaySlot(out, nullptr);
            }
        }
        status(QStringLiteral("Saving ") + MonthPercentage(month));
    }
}

void ApplyDocument(Store& store, MonthViewControl& monthView, const CalendarFileContent& content,
                   const StatusSink& status) {
    const CalendarFileSettings& settings = content.Settings;
    qint16 yy = settings.Year;
    qint16 dd = settings.FirstDay;
    monthView.FirstDayandYear(yy, dd, false);
    monthView.SetFont(settings.FontName, settings.FontSize);
    store.calender.ColourList = settings.ColourList;

    // The reader gives the dates in calendar order.
    auto next = content.Dates.begin();
    for (qint16 month = 1; month <= 12; ++month) {
        for (; next != content.Dates.end() && next->Month == month; ++next) {
            ApplyDate(store, monthView, *next);
        }
        status(QStringLiteral("Loading") + MonthPercentage(month));
    }
}

}  // namespace kelvane
