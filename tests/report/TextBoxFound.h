#pragma once

#include <QString>
#include <QWidget>

#include "report/LineTextView.h"

namespace kelvane {

// The child named txtDocument, the box a report is shown in; null when there
// is none or it is not a LineTextView. LineTextView has no meta-object of its
// own, so findChild<LineTextView*> alone would take any scroll area by that
// name.
inline LineTextView* TextBoxFound(const QObject& parent) {
    return dynamic_cast<LineTextView*>(parent.findChild<QWidget*>(QStringLiteral("txtDocument")));
}

}  // namespace kelvane
