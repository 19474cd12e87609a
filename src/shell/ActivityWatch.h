#pragma once

#include <QString>

#include "store/AppointmentMOD.h"
#include "store/MonthViewControl.h"
#include "store/Records.h"
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
class ActivityWatch {
  public:
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

    // Rebuilds the table, WatchTime and the schedule panel from the stores.
    void BuildTodaysSchedule();
    void AppendAlert(const QString& line);
    void AlertsOn();
    void AlertsOff();
    // One look at the clock: announces what starts or ends now, or keeps it
    // for later while announcements are off. The caller stops its timer around it.
    void WatchTick();

  private:
    ClockTime Now() const;
    bool Examining() const;
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
    void AnnounceEvents();
    void Announce(Appointment& activity, const QString& heading, const QString& verb);
    void ShowPendingAlerts();

    Store& store_;
    MonthViewControl& calender1_;
    usrDocViewer& schedule_;
    AlertIndicator& indicator_;
};

}  // namespace kelvane
