#include "shell/MainStatusBar.h"

#include <QDate>
#include <QLocale>
#include <QRegularExpression>
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

// The time in the user's short form without its seconds: the clock panel's
// accessible name, so that a screen reader hears of a change once a minute
// rather than every second.
QString SpokenTime(const QString& hoursMinutesSeconds) {
    const QTime time = QTime::fromString(hoursMinutesSeconds, QStringLiteral("hh:mm:ss"));
    if (!time.isValid()) {
        return hoursMinutesSeconds;
    }
    QString format = QLocale::system().timeFormat(QLocale::ShortFormat);
    format.remove(QRegularExpression(QStringLiteral("[:.]?\\bs{1,2}\\b")));
    return QLocale::system().toString(time, format);
}

// QLabel::setText announces a new name only while the label has none of its
// own, and setting the same name again would announce it anyway.
void SetSpokenName(QLabel& panel, const QString& name) {
    if (panel.accessibleName() != name) {
        panel.setAccessibleName(name);
    }
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
    const QString time = clock_.TimeText();
    SetSpokenName(*Panel(4), SpokenTime(time));
    Panel(4)->setText(LocalTime(time));
}

}  // namespace kelvane
