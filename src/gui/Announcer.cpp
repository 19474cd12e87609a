#include "gui/Announcer.h"

#include <QAccessibleWidget>

namespace kelvane {

namespace {

QAccessibleInterface* AnnouncerAccessibleFactory(const QString& /*className*/, QObject* object) {
    if (auto* announcer = dynamic_cast<Announcer*>(object)) {
        return new QAccessibleWidget(announcer, QAccessible::Notification);
    }
    return nullptr;
}

}  // namespace

Announcer::Announcer(QWidget* parent) : QWidget(parent) {
    QAccessible::installFactory(AnnouncerAccessibleFactory);
    setFocusPolicy(Qt::NoFocus);
    setFixedSize(0, 0);
    hide();
}

// Hidden first, so that the news is told as it shows even when it is the same
// as the last.
void Announcer::Announce(const QString& news) {
    hide();
    setAccessibleName(news);
    show();
}

}  // namespace kelvane
