// The watch's look at the clock: the tick, the minutes it catches up and the
// announcements it gathers and shows.
#include "shell/ActivityWatch.h"

#include <QDate>

#include <tuple>
#include <utility>

namespace kelvane {

namespace {

constexpr int kMinutesPerHour = 60;
constexpr qint64 kMinutesPerDay = 24 * kMinutesPerHour;
// Ticks come every 40 seconds; a longer silence means the machine slept or the
// clock was set forward.
constexpr qint64 kLongestTickGap = 2;

int MinuteOfDay(const ClockTime& time) {
    return time.Hour * kMinutesPerHour + time.Minute;
}

ClockTime TimeOfMinute(int minute) {
    return ClockTime{static_cast<qint16>(minute / kMinutesPerHour),
                     static_cast<qint16>(minute % kMinutesPerHour)};
}

qint64 DayNumber(const CalDate& date) {
    return QDate(date.Year, date.Month, date.Day).toJulianDay();
}

bool EarlierDate(const CalDate& a, const CalDate& b) {
    return std::tie(a.Year, a.Month, a.Day) < std::tie(b.Year, b.Month, b.Day);
}

}  // namespace

void ActivityWatch::Release() {
    Q_ASSERT(holds_ > 0);
    --holds_;
    if (holds_ == 0 && holdsEnded_) {
        holdsEnded_();
    }
}

void ActivityWatch::WatchTick() {
    ReadDateAndTime();
    SkipMinutesWithoutTicks();
    // After a day with nothing pending WatchTime is 23:59, which the clock
    // never passes: a new date rebuilds too.
    if (!Held() && (DateMoved() || ClockTimeBefore(WatchTime, Now()))) {
        BuildTodaysSchedule();
    }
    LookAtTheClock();
    if (AlertsEnabled && !Held()) {
        ShowPendingAlerts();
    }
}

// The time and the date are read apart. When midnight passes between the two
// readings the time is read again, so that a tick never takes 23:59 for a
// time of the new date.
void ActivityWatch::ReadDateAndTime() {
    const CalDate before = Today();
    store_.module1.ReadClock();
    if (Today() != before) {
        store_.module1.ReadClock();
    }
}

// Minutes that no tick came for, while the machine slept or after the clock
// was set forward, are not announced hours late: the watch goes on from this
// tick's minute. The time the watch's own box waits is not such a silence.
void ActivityWatch::SkipMinutesWithoutTicks() {
    const Minute now{Today(), Now()};
    if (lastTick_ && lookedThrough_ && MinutesBetween(*lastTick_, now) > kLongestTickGap) {
        lookedThrough_ = MinuteBefore(now);
    }
    lastTick_ = now;
}

qint64 ActivityWatch::MinutesBetween(const Minute& from, const Minute& to) {
    return (DayNumber(to.Date) - DayNumber(from.Date)) * kMinutesPerDay + MinuteOfDay(to.Time) -
           MinuteOfDay(from.Time);
}

// The minute before midnight belongs to the day before.
ActivityWatch::Minute ActivityWatch::MinuteBefore(const Minute& minute) {
    if (MinuteOfDay(minute.Time) > 0) {
        return Minute{minute.Date, TimeOfMinute(MinuteOfDay(minute.Time) - 1)};
    }
    const QDate dayBefore = QDate(minute.Date.Year, minute.Date.Month, minute.Date.Day).addDays(-1);
    const CalDate date{static_cast<qint16>(dayBefore.year()), static_cast<qint16>(dayBefore.day()),
                       static_cast<qint16>(dayBefore.month())};
    return Minute{date, ClockTime{23, 59}};
}

// Also while a hold is taken, when no rebuild has moved WatchTime on since: each
// minute is looked at once. A table of an earlier date is not looked at; the
// first rebuild on the new date catches its minutes up.
void ActivityWatch::LookAtTheClock() {
    const Minute now{Today(), Now()};
    if (ScheduleDate != CalDate{} && now.Date != ScheduleDate) {
        return;
    }
    if (!ClockTimeBefore(now.Time, WatchTime)) {
        QueueAlertsUpTo(now);
    }
    lookedThrough_ = now;
}

// The rest of the date the table was built for, before a new date's table
// replaces it.
void ActivityWatch::FinishOldDay() {
    if (lookedThrough_ && lookedThrough_->Date == ScheduleDate) {
        QueueAlertsUpTo(Minute{ScheduleDate, ClockTime{23, 59}});
    }
}

// After a rebuild: the minutes of the table's date up to now that no tick
// looked at. The first build only starts the count.
void ActivityWatch::CatchUp() {
    const Minute now{ScheduleDate, Now()};
    if (lookedThrough_) {
        QueueAlertsUpTo(now);
    }
    lookedThrough_ = now;
}

// The starts and ends of the minutes after the last one looked at, up to and
// including `now`: from midnight on when the last one was of an earlier date,
// none when the clock went back to an earlier date.
void ActivityWatch::QueueAlertsUpTo(const Minute& now) {
    int first = 0;
    if (lookedThrough_ && lookedThrough_->Date == now.Date) {
        first = MinuteOfDay(lookedThrough_->Time) + 1;
    } else if (lookedThrough_ && EarlierDate(now.Date, lookedThrough_->Date)) {
        return;
    }
    for (int minute = first; minute <= MinuteOfDay(now.Time); ++minute) {
        QueueAlertsOfMinute(TimeOfMinute(minute));
    }
}

// The first event of a tick brings the heading: "Activities Starting/Ending"
// when it is a start, "Activities Starting" when it is an end.
void ActivityWatch::QueueAlertsOfMinute(const ClockTime& minute) {
    int slot = 1;
    while (slot <= SlotCount) {
        Appointment& activity = ScheduleSlots[slot];
        if (activity.StartTime.Hour < 0) {
            // An empty slot ends the first half of the table and all of the second.
            if (slot > MaxAppointmentsPerDate) {
                break;
            }
            slot = MaxAppointmentsPerDate;
        } else if (activity.StartTime == minute) {
            QueueAlert(activity, QStringLiteral("Activities Starting/Ending"),
                       QStringLiteral("starting "));
        } else if (activity.EndTime.Hour >= 0 && activity.EndTime == minute) {
            QueueAlert(activity, QStringLiteral("Activities Starting"), QStringLiteral("ending "));
        }
        ++slot;
    }
}

// The heading goes in only with the tick's first event.
void ActivityWatch::QueueAlert(Appointment& activity, const QString& heading, const QString& verb) {
    if (!AlertAnnounced) {
        AppendAlert(heading);
        AlertAnnounced = true;
    }
    activity.Description = activity.Description.Trimmed();
    AppendAlert(verb + activity.Description.Trimmed());
}

// The text is taken before the box waits for the person, so that nothing
// gathered meanwhile is cleared unseen; a rebuild after it that catches up
// minutes announces them anew.
void ActivityWatch::ShowPendingAlerts() {
    if (!PendingAlertText.isEmpty()) {
        const QString text = std::exchange(PendingAlertText, QString());
        store_.module1.Services().Messages.Show(text, MessageButtons::Ok, MessageIcon::Exclamation);
        lastTick_.reset();
    }
    if (AlertAnnounced) {
        AlertAnnounced = false;
        BuildTodaysSchedule();
    }
}

}  // namespace kelvane
