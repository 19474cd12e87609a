#include "shell/MainStatusBar.h"

#include <QDate>
#include <QLocale>
#include <QTime>

namespace kelvane {

namespace {

// The clock's "mm-dd-yyyy" and "hh:mm:ss" in the user's own short forms.
QString LocalDate(const QString& monthDayYear) {
    const QDate date = QDate::fromString(monthDayYear, QStringLiteral("MM-dd-yyyy"));
    return date.isValid() ? QLocale::system().toString(date, QLocale::ShortFormat) : monthDayYear;
}

QString LocalTime(const QString& hoursMinutesSeconds) {
    const QTime time = QTime::fromString(hoursMinutesSeconds, QStringLiteral("hh:mm:ss"));
    return time.isValid() ? QLocale::system().toString(time, QLocale::ShortFormat)
                          : hoursMinutesSeconds;
}

}  // namespace

MainStatusBar::MainStatusBar(const SystemClock& clock, QWidget* parent)
    : QStatusBar(parent), clock_(clock) {
    setObjectName(QStringLiteral("sbStatusBar"));
    setSizeGripEnabled(true);
    panels_[0] = AddPanel(QStringLiteral("sbStatusBarPanel1"), 1);
    panels_[1] = AddPanel(QStringLiteral("sbStatusBarPanel2"), 0);
    panels_[1]->setText(QStringLiteral("warn"));
    panels_[1]->setVisible(false);
    panels_[2] = AddPanel(QStringLiteral("sbStatusBarPanel3"), 0);
    panels_[3] = AddPanel(QStringLiteral("sbStatusBarPanel4"), 0);
    ShowDateAndTime();
    ticker_.setInterval(1000);
    connect(&ticker_, &QTimer::timeout, this, &MainStatusBar::ShowDateAndTime);
    ticker_.start();
}

QLabel* MainStatusBar::AddPanel(const QString& name, int stretch) {
    auto* panel = new QLabel(this);
    panel->setObjectName(name);
    panel->setFrameShape(QFrame::Panel);
    panel->setFrameShadow(QFrame::Sunken);
    panel->setMargin(1);
    addPermanentWidget(panel, stretch);
    return panel;
}

QLabel* MainStatusBar::Panel(int index) const {
    Q_ASSERT(index >= 1 && index <= 4);
    return panels_[index - 1];
}

void MainStatusBar::ShowAlertsEnabled(bool enabled) {
    if (enabled) {
        Panel(2)->setText(QStringLiteral("warn"));
    }
    Panel(2)->setVisible(enabled);
}

void MainStatusBar::ShowDateAndTime() {
    Panel(3)->setText(LocalDate(clock_.DateText()));
    Panel(4)->setText(LocalTime(clock_.TimeText()));
}

}  // namespace kelvane
