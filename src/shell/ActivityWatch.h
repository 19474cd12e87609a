#pragma once

#include <QString>

#include <functional>
#include <optional>

#include "calfile/Records.h"
#include "store/AppointmentMOD.h"
#include "store/MonthViewControl.h"
#include "store/Store.h"

namespace kelvane {

class usrDocViewer;

// Shows whether announcements are allowed: the status bar's "warn" panel.
class AlertIndicator {
  public:
    virtual ~AlertIndicator() = default;
    virtual void ShowAlertsEnabled(bool enabled) = 0;
};

// Today's schedule and the watch over it. The table holds today's activities
// (and an examined date's, listed first) for the schedule panel; every tick of
// the main window's timer compares them with the clock and gathers the starts
// and ends it sees into one message box.
//
// A command that holds the shared working copies or shows a modal window takes
// a hold on the watch (WatchHold) for as long as it does. While any hold is
// taken a tick only gathers what starts and ends: it neither rebuilds the
// table, which would load other dates into the working copies, nor shows a
// box. The end of the last hold is told to the main window, which then runs
// what was put off at once.
//
// Every minute of the table's date is looked at once. The minutes the watch
// could not look at, because its own box waited for the person or the table
// was of another date, are caught up by the first rebuild that can: the rest
// of the old date on the old table, the new date's from midnight on on the new
// one. Minutes that no tick came for at all, while the machine slept, are
// skipped.
class ActivityWatch {
  public:
    // Told when the first rebuild on a new date, by a tick or a command, has
    // built the schedule for it: the date the schedule was for and today.
    using NewDayHandler = std::function<void(const CalDate& before, const CalDate& today)>;

    static constexpr int SlotCount = 80;
    using ScheduleTable = OneBased<Appointment, SlotCount>;

    ActivityWatch(Store& store, MonthViewControl& calender1, usrDocViewer& schedule,
                  AlertIndicator& indicator);
    ActivityWatch(const ActivityWatch&) = delete;
    ActivityWatch& operator=(const ActivityWatch&) = delete;

    // The activities shown and watched, from slot 1 up; a slot without an
    // activity has a start hour of -1.
    ScheduleTable ScheduleSlots;
    // The next start or end the watch waits for; 23:59 when none is pending.
    ClockTime WatchTime{23, 59};
    // A heading went into PendingAlertText during this tick.
    bool AlertAnnounced = false;
    // Announcement lines not yet shown, separated by carriage returns.
    QString PendingAlertText;
    // True while announcements may be shown.
    bool AlertsEnabled = false;

    // The date examined beside today; used only while ExamineActive.
    CalDate ExamineDate;
    bool ExamineActive = false;
    // The date the table was last built for; no date before the first build.
    CalDate ScheduleDate;

    // Rebuilds the table, WatchTime and the schedule panel from the stores,
    // and announces what starts or ends in the minutes not looked at yet.
    void BuildTodaysSchedule();
    void AppendAlert(const QString& line);
    void AlertsOn();
    void AlertsOff();
    // One look at the clock: announces what starts or ends now, or keeps it
    // for later while announcements are off or a hold is taken. The first
    // tick on a new date rebuilds the table first. The caller stops its timer
    // around it.
    void WatchTick();

    // True while any hold is taken; holds nest.
    bool Held() const { return holds_ > 0; }

    void OnNewDay(NewDayHandler handler) { newDay_ = std::move(handler); }
    // Told when the last hold ends: whatever the ticks put off meanwhile, a
    // rebuild or an announcement, is due now.
    void OnHoldsEnded(std::function<void()> handler) { holdsEnded_ = std::move(handler); }

  private:
    // Holds are taken and released by WatchHold alone, so that every hold is
    // released exactly once.
    friend class WatchHold;
    void Hold() { ++holds_; }
    void Release();

    // A minute of a date, to look at each minute's events once.
    struct Minute {
        CalDate Date;
        ClockTime Time;
    };

    ClockTime Now() const;
    CalDate Today();
    bool Examining() const;
    bool DateMoved();
    void FinishOldDay();
    void BeginNewDay();
    void Rebuild(const CalDate& today);
    void CatchUp();
    void LookAtTheClock();
    void ReadDateAndTime();
    void SkipMinutesWithoutTicks();
    static qint64 MinutesBetween(const Minute& from, const Minute& to);
    static Minute MinuteBefore(const Minute& minute);
    void QueueAlertsUpTo(const Minute& now);
    int FillTable(const CalDate& today);
    void CopyWorkingList(int firstSlot, int count);
    void SortAndFindWatchTime(int count);
    void PlaceLatest(int slot, int count);
    void ConsiderWatchCandidate(const Appointment& activity, bool& found);
    void ListCurrent(int count);
    template <typename InGroup>
    void ListGroup(int count, const QString& heading, InGroup inGroup);
    void ListDue(int count);
    void ListDone(int count);
    void AddActivity(const QString& description, const Appointment& activity);
    void QueueAlertsOfMinute(const ClockTime& minute);
    void QueueAlert(Appointment& activity, const QString& heading, const QString& verb);
    void ShowPendingAlerts();

    Store& store_;
    MonthViewControl& calender1_;
    usrDocViewer& schedule_;
    AlertIndicator& indicator_;
    int holds_ = 0;
    // The last minute whose starts and ends were looked at; none before the
    // first build.
    std::optional<Minute> lookedThrough_;
    // The minute of the last tick; none while the watch's own box waited.
    std::optional<Minute> lastTick_;
    NewDayHandler newDay_;
    std::function<void()> holdsEnded_;
};

}  // namespace kelvane
