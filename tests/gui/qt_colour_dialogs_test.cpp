#include <QApplication>
#include <QColorDialog>
#include <QTimer>

#include <gtest/gtest.h>

#include "gui/QtColourDialogs.h"

namespace kelvane {
namespace {

// Shows the dialog and, once it is up, notes its colour and picks `choose`
// or, without one, cancels.
std::optional<qint32> ShowAndAnswer(qint32 initial, std::optional<QColor> choose, QColor& seen) {
    QTimer::singleShot(0, [&] {
        auto* dialog = qobject_cast<QColorDialog*>(QApplication::activeModalWidget());
        ASSERT_NE(dialog, nullptr);
        seen = dialog->currentColor();
        if (choose) {
            dialog->setCurrentColor(*choose);
            dialog->accept();
        } else {
            dialog->reject();
        }
    });
    QtColourDialogs dialogs;
    return dialogs.Show(initial);
}

TEST(QtColourDialogs, OpensOnTheInitialColourAndGivesTheChosenOneAsRedGreenBlue) {
    QColor seen;
    const std::optional<qint32> chosen = ShowAndAnswer(0x563412, QColor(1, 2, 3), seen);
    EXPECT_EQ(seen, QColor(0x12, 0x34, 0x56));
    ASSERT_TRUE(chosen.has_value());
    EXPECT_EQ(*chosen, 1 + 2 * 256 + 3 * 65536);
}

TEST(QtColourDialogs, ACancelGivesNothing) {
    QColor seen;
    EXPECT_FALSE(ShowAndAnswer(0, std::nullopt, seen).has_value());
    EXPECT_EQ(seen, QColor(0, 0, 0));
}

}  // namespace
}  // namespace kelvane
