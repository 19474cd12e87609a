#pragma once

#include <QString>

#include "store/MonthViewQueries.h"

namespace kelvane {

// The main window's month view as the calendar file and the document commands
// drive it: they set its year up, walk its dates through the current date
// entry, carry its font and ask it to redraw. The month view control
// implements it.
class MonthViewControl : public MonthViewQueries {
  public:
    // Selects a date and loads its entry into the current date entry.
    virtual void SetDate(qint16 y, qint16 m, qint16 d) = 0;
    // `way` false sets the year up from a leap indicator and a weekday of
    // 1 January; true gives today's year and the weekday of 1 January.
    virtual void FirstDayandYear(qint16& yy, qint16& dd, bool way) = 0;
    // True loads the selected date's entry into the current date entry; false
    // stores the current date entry back.
    virtual void UpdateSelectedDate(bool blnGet) = 0;
    virtual void GetFont(QString& strName, qint16& size) const = 0;
    virtual void SetFont(const QString& strName, qint16 size) = 0;
    virtual void Display() = 0;
    // Lays out today's year (yy 0) or a leap indicator's; see the month view.
    virtual void InitializeVariables(qint16 yy, qint16& dd, bool clearDates) = 0;

  private:
    // While held, redraws are put off; releasing the last hold makes one
    // redraw when any was asked for. Loading a whole file holds them so that
    // the dates it stores one by one are drawn once, at the end. Every hold
    // is a RedrawsHeld, so that each is released once.
    virtual void HoldRedraws(bool hold) = 0;
    friend class RedrawsHeld;
};

// Holds the month view's redraws for the length of a walk over its dates.
class RedrawsHeld {
  public:
    explicit RedrawsHeld(MonthViewControl& monthView) : monthView_(monthView) {
        monthView_.HoldRedraws(true);
    }
    ~RedrawsHeld() { monthView_.HoldRedraws(false); }
    RedrawsHeld(const RedrawsHeld&) = delete;
    RedrawsHeld& operator=(const RedrawsHeld&) = delete;

  private:
    MonthViewControl& monthView_;
};

// Keeps the month view's selection across a walk that selects other dates for
// its own needs: redraws are held meanwhile, and the date selected before, if
// any, is selected again at the end, before the held redraws are released.
// The grid thus keeps highlighting the date the commands act on.
class SelectionKept {
  public:
    explicit SelectionKept(MonthViewControl& monthView) : monthView_(monthView), held_(monthView) {
        monthView_.GetDate(year_, month_, day_);
    }
    ~SelectionKept() {
        if (day_ > 0 && month_ > 0) {
            monthView_.SetDate(year_, month_, day_);
        }
    }
    SelectionKept(const SelectionKept&) = delete;
    SelectionKept& operator=(const SelectionKept&) = delete;

  private:
    MonthViewControl& monthView_;
    RedrawsHeld held_;
    qint16 year_ = 0;
    qint16 month_ = 0;
    qint16 day_ = 0;
};

}  // namespace kelvane
