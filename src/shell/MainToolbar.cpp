#include "shell/MainToolbar.h"

#include "shell/ToolbarIcons.h"

namespace kelvane {

namespace {

struct ButtonDesign {
    const char* ToolTip;  // nullptr for a separator
    ToolbarImage Image;
    bool Pressable;
};

// Button 1 has no tool tip, so its action has no text either: Qt would
// otherwise show the text as the tip.
constexpr ButtonDesign kButtons[MainToolbar::ButtonCount] = {
    {"", ToolbarImage::New, false},
    {"Open", ToolbarImage::Open, false},
    {"Save", ToolbarImage::Save, false},
    {nullptr, ToolbarImage::New, false},
    {"Edit", ToolbarImage::Edit, false},
    {"Erase", ToolbarImage::Erase, false},
    {"Colour Fill", ToolbarImage::ColourFill, false},
    {nullptr, ToolbarImage::New, false},
    {"Previous Month", ToolbarImage::PreviousMonth, false},
    {"Select Month", ToolbarImage::SelectMonth, false},
    {"Next Month", ToolbarImage::NextMonth, false},
    {nullptr, ToolbarImage::New, false},
    {"View Calender", ToolbarImage::ViewCalender, true},
    {"View Schedule", ToolbarImage::ViewSchedule, true},
    {"Comming Up", ToolbarImage::CommingUp, false},
};

// Screen readers name a button by its tool tip; the first, which has none,
// by what it does.
void NameForScreenReaders(QToolBar* bar, QAction* button, const char* toolTip) {
    QWidget* widget = bar->widgetForAction(button);
    if (widget == nullptr || toolTip == nullptr) {
        return;
    }
    const QString name = QString::fromLatin1(toolTip);
    widget->setAccessibleName(name.isEmpty() ? QStringLiteral("New") : name);
}

}  // namespace

void BuildMainToolbar(QMainWindow* window, MainToolbar& toolbar) {
    toolbar.tbMain = window->addToolBar(QString());
    toolbar.tbMain->setObjectName(QStringLiteral("tbMain"));
    toolbar.tbMain->setMovable(false);
    toolbar.tbMain->setFloatable(false);
    toolbar.tbMain->setIconSize(QSize(16, 16));
    toolbar.tbMain->toggleViewAction()->setVisible(false);
    window->setContextMenuPolicy(Qt::NoContextMenu);
    for (int index = 1; index <= MainToolbar::ButtonCount; ++index) {
        const ButtonDesign& design = kButtons[index - 1];
        QAction* button = design.ToolTip == nullptr ? toolbar.tbMain->addSeparator()
                                                    : toolbar.tbMain->addAction(QString());
        button->setObjectName(QStringLiteral("tbMainButton%1").arg(index));
        if (design.ToolTip != nullptr) {
            button->setText(QString::fromLatin1(design.ToolTip));
            button->setToolTip(QString::fromLatin1(design.ToolTip));
            button->setIcon(ToolbarIcon(design.Image));
            button->setCheckable(design.Pressable);
            button->setChecked(design.Pressable);
        }
        toolbar.Buttons[index] = button;
        NameForScreenReaders(toolbar.tbMain, button, design.ToolTip);
    }
}

}  // namespace kelvane
