#pragma once

#include <QLabel>
#include <QList>
#include <QPushButton>
#include <QString>
#include <QWidget>

namespace kelvane {

// A new child widget that carries its control name as object name.
template <typename Widget>
Widget* NamedWidget(QWidget* parent, const char* name) {
    auto* widget = new Widget(parent);
    widget->setObjectName(QString::fromLatin1(name));
    return widget;
}

// The same, with a caption (labels, buttons, check boxes) or a first text (boxes).
template <typename Widget>
Widget* NamedWidget(QWidget* parent, const char* name, const QString& caption) {
    Widget* widget = NamedWidget<Widget>(parent, name);
    widget->setText(caption);
    return widget;
}

// A dialog button that Enter in a box does not press: no button of ours is
// the default one.
inline QPushButton* NamedButton(QWidget* parent, const char* name, const QString& caption) {
    auto* button = NamedWidget<QPushButton>(parent, name, caption);
    button->setAutoDefault(false);
    button->setDefault(false);
    return button;
}

// Makes `label` the buddy of `list` and names the list after the label's text,
// less a closing colon. Qt names boxes after their buddy labels, but not lists.
inline void LabelList(QLabel* label, QWidget* list) {
    label->setBuddy(list);
    QString name = label->text();
    if (name.endsWith(QLatin1Char(':'))) {
        name.chop(1);
    }
    list->setAccessibleName(name);
}

// Tab walks these widgets in the order given.
inline void SetTabOrder(const QList<QWidget*>& widgets) {
    for (qsizetype i = 1; i < widgets.size(); ++i) {
        QWidget::setTabOrder(widgets[i - 1], widgets[i]);
    }
}

}  // namespace kelvane
