#include "shell/ActivityWatch.h"

#include "report/usrDocViewer.h"
#include "store/CalenderMOD.h"

namespace kelvane {

namespace {

// A slot with no activity in it: the tick's scan treats a negative start hour
// as the end of a half of the table.
Appointment EmptySlot() {
    Appointment slot;
    slot.StartTime = ClockTime{-1, 0};
    slot.EndTime = ClockTime{-1, 0};
    return slot;
}

bool ClockTimeAfter(const ClockTime& a, const ClockTime& b) {
    return CompareClockTime(a, b) > 0;
}

// True when `a` belongs before `b` in the panel's order: the later start
// first, and of two equal starts the later end.
bool StartsLater(const Appointment& a, const Appointment& b) {
    const int byStart = CompareClockTime(a.StartTime, b.StartTime);
    return byStart > 0 || (byStart == 0 && ClockTimeAfter(a.EndTime, b.EndTime));
}

QString TimeLine(const Appointment& activity) {
    QString line = QStringLiteral("From ") + FormatClockTime(activity.StartTime, 0);
    if (activity.EndTime.Hour >= 0) {
        line += QStringLiteral(" to ") + FormatClockTime(activity.EndTime, 0);
    }
    return line;
}

}  // namespace

ActivityWatch::ActivityWatch(Store& store, MonthViewControl& calender1, usrDocViewer& schedule,
                             AlertIndicator& indicator)
    : store_(store), calender1_(calender1), schedule_(schedule), indicator_(indicator) {
    ScheduleSlots.Fill(EmptySlot());
}

ClockTime ActivityWatch::Now() const {
    return ClockTime{store_.module1.CurrentHour, store_.module1.CurrentMinute};
}

CalDate ActivityWatch::Today() {
    CalDate today;
    store_.module1.GetToday(today);
    return today;
}

bool ActivityWatch::Examining() const {
    return ExamineActive && ExamineDate.Day > 0 && ExamineDate.Month > 0;
}

void ActivityWatch::AppendAlert(const QString& line) {
    if (Trim(PendingAlertText).isEmpty()) {
        PendingAlertText = line;
    } else {
        PendingAlertText += QLatin1Char('\r') + line;
    }
}

void ActivityWatch::AlertsOn() {
    AlertsEnabled = true;
    indicator_.ShowAlertsEnabled(true);
}

void ActivityWatch::AlertsOff() {
    AlertsEnabled = false;
    indicator_.ShowAlertsEnabled(false);
}

// The first rebuild on a new date, whoever asks for it, finishes the old day
// and starts the new one.
void ActivityWatch::BuildTodaysSchedule() {
    const CalDate before = ScheduleDate;
    const bool newDay = DateMoved();
    if (newDay) {
        FinishOldDay();
        BeginNewDay();
    }
    ScheduleDate = Today();
    Rebuild(ScheduleDate);
    CatchUp();
    if (newDay && newDay_) {
        newDay_(before, ScheduleDate);
    }
}

bool ActivityWatch::DateMoved() {
    return ScheduleDate != CalDate{} && Today() != ScheduleDate;
}

// The clock may have been read last on the day before. Examining the new
// today is the same as examining nothing.
void ActivityWatch::BeginNewDay() {
    store_.module1.ReadClock();
    const CalDate today = Today();
    if (ExamineDate.Month == today.Month && ExamineDate.Day == today.Day) {
        ExamineActive = false;
    }
}

void ActivityWatch::Rebuild(const CalDate& today) {
    AlertsOff();
    schedule_.ClearLines();
    WatchTime = ClockTime{23, 59};
    {
        // Today is selected for the rebuild only; the selection the person or
        // the last load made comes back. Before any, today stays selected.
        const SelectionKept kept(calender1_);
        // The year is always 2000: the document's slots cover every month and day.
        calender1_.SetDate(2000, today.Month, today.Day);
    }
    schedule_.AddLine(QStringLiteral("T O D A Y S   S C H E D U L E"));
    schedule_.AddLine(QStringLiteral("Today: ") + FormatCalDate(today) + QStringLiteral(" (") +
                      store_.module1.DayNameOf(today.Month, today.Day) + QLatin1Char(')'));
    const int count = FillTable(today);
    if (count == 0) {
        // The alerts stay off: with nothing to watch there is no "warn".
        schedule_.AddLine(QStringLiteral("No Schedule Defined"));
        schedule_.RefreshDisplay();
        return;
    }
    SortAndFindWatchTime(count);
    ListCurrent(count);
    ListDue(count);
    ListDone(count);
    schedule_.RefreshDisplay();
    AlertsOn();
}

// Today's activities, behind the examined date's when one is examined; returns
// how many. Slots 41 and up hold today's while the examined date's are read.
int ActivityWatch::FillTable(const CalDate& today) {
    AppointmentMOD& appointments = store_.appointments;
    appointments.LoadAppointments(MakeDateKey(today.Month, today.Day));
    const int todays = appointments.CountAppointments();
    int count = todays;
    if (Examining()) {
        schedule_.AddLine(
            QStringLiteral("Other: ") + FormatCalDate(ExamineDate) + QLatin1Char('(') +
            store_.module1.DayNameOf(ExamineDate.Month, ExamineDate.Day) + QLatin1Char(')'));
        CopyWorkingList(MaxAppointmentsPerDate + 1, todays);
        appointments.LoadAppointments(MakeDateKey(ExamineDate.Month, ExamineDate.Day));
        const int examined = appointments.CountAppointments();
        CopyWorkingList(1, examined);
        for (int i = 1; i <= todays; ++i) {
            ScheduleSlots[examined + i] = ScheduleSlots[MaxAppointmentsPerDate + i];
        }
        count = examined + todays;
    } else {
        CopyWorkingList(1, todays);
    }
    // Nothing of an earlier table, nor today's copy, may be watched twice.
    for (int slot = count + 1; slot <= SlotCount; ++slot) {
        ScheduleSlots[slot] = EmptySlot();
    }
    return count;
}

void ActivityWatch::CopyWorkingList(int firstSlot, int count) {
    for (int entry = 1; entry <= count; ++entry) {
        ScheduleSlots[firstSlot + entry - 1] = store_.appointments.AppointmentList[entry];
    }
}

// Orders the table latest start first and picks the next start or end to
// watch for on the way.
void ActivityWatch::SortAndFindWatchTime(int count) {
    bool found = false;
    for (int slot = 1; slot <= count; ++slot) {
        PlaceLatest(slot, count);
        ConsiderWatchCandidate(ScheduleSlots[slot], found);
    }
    if (found) {
        schedule_.AddLine(QStringLiteral("Time to watch:") + FormatClockTime(WatchTime, 0));
    }
}

void ActivityWatch::PlaceLatest(int slot, int count) {
    int latest = slot;
    for (int other = slot + 1; other <= count; ++other) {
        if (StartsLater(ScheduleSlots[other], ScheduleSlots[latest])) {
            latest = other;
        }
    }
    std::swap(ScheduleSlots[slot], ScheduleSlots[latest]);
}

// An activity under way is watched for its end, any other for its start. An
// end in the hour 0 is never watched for.
void ActivityWatch::ConsiderWatchCandidate(const Appointment& activity, bool& found) {
    const ClockTime now = Now();
    const bool underWay = activity.EndTime.Hour > 0 && !ClockTimeBefore(now, activity.StartTime);
    const ClockTime candidate = underWay ? activity.EndTime : activity.StartTime;
    if (ClockTimeBefore(candidate, WatchTime) && ClockTimeBefore(now, candidate)) {
        WatchTime = candidate;
        found = true;
    }
}

// Every current activity gets its own heading.
void ActivityWatch::ListCurrent(int count) {
    const ClockTime now = Now();
    for (int slot = 1; slot <= count; ++slot) {
        const Appointment& activity = ScheduleSlots[slot];
        if (!ClockTimeBefore(now, activity.StartTime) && activity.EndTime.Hour >= 0 &&
            !ClockTimeAfter(now, activity.EndTime)) {
            schedule_.AddLine(QString());
            schedule_.AddLine(QStringLiteral("CURRENT ACTIVITIES"));
            AddActivity(QStringLiteral("* ") + activity.Description.Value(), activity);
        }
    }
}

// The due and the done activities, earliest first, under one heading with "-"
// between them.
template <typename InGroup>
void ActivityWatch::ListGroup(int count, const QString& heading, InGroup inGroup) {
    bool first = true;
    for (int slot = count; slot >= 1; --slot) {
        const Appointment& activity = ScheduleSlots[slot];
        if (!inGroup(activity)) {
            continue;
        }
        schedule_.AddLine(first ? QString() : QStringLiteral("-"));
        if (first) {
            schedule_.AddLine(heading);
        }
        first = false;
        AddActivity(activity.Description.Value(), activity);
    }
}

void ActivityWatch::ListDue(int count) {
    const ClockTime now = Now();
    ListGroup(count, QStringLiteral("ACTIVITIES DUE"), [&now](const Appointment& activity) {
        return ClockTimeBefore(now, activity.StartTime);
    });
}

// An activity without an end counts as done from its start minute on.
void ActivityWatch::ListDone(int count) {
    const ClockTime now = Now();
    ListGroup(count, QStringLiteral("ACTIVITIES DONE"), [&now](const Appointment& activity) {
        return ClockTimeAfter(now, activity.EndTime) && !ClockTimeBefore(now, activity.StartTime);
    });
}

void ActivityWatch::AddActivity(const QString& description, const Appointment& activity) {
    schedule_.AddLine(description);
    schedule_.AddLine(TimeLine(activity));
}

}  // namespace kelvane
