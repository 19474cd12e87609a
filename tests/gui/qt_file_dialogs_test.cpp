#include <QApplication>
#include <QFileDialog>
#include <QTemporaryDir>
#include <QTimer>

#include <gtest/gtest.h>

#include "gui/QtFileDialogs.h"
#include "support/QtPrinting.h"

namespace kelvane {
namespace {

const QString kCalendarFilter = QStringLiteral("Calender Files (*.cal)|*.cal|All Files (*.*)|*.*");

TEST(QtNameFilters, KeepTheDescriptionsAndMatchEveryFileForStarDotStar) {
    EXPECT_EQ(QtNameFilters(kCalendarFilter),
              (QStringList{"Calender Files (*.cal)", "All Files (*)"}));
    EXPECT_EQ(QtNameFilters(QStringLiteral("Bitmap (*.bmp)|*.bmp")), QStringList{"Bitmap (*.bmp)"});
    EXPECT_EQ(QtNameFilters(QStringLiteral("Pictures|*.bmp")), QStringList{"Pictures (*.bmp)"});
    EXPECT_TRUE(QtNameFilters(QString()).isEmpty());
}

struct SeenDialog {
    QString title;
    QStringList filters;
    bool saving = false;
    bool confirmsOverwrite = true;
    QString suffix;
};

// Shows a dialog and, once it is up, either picks `choose` or cancels.
QString ShowAndAnswer(const FileDialogRequest& request, const QString& choose, SeenDialog& seen) {
    QTimer::singleShot(0, [&] {
        auto* dialog = qobject_cast<QFileDialog*>(QApplication::activeModalWidget());
        ASSERT_NE(dialog, nullptr);
        seen.title = dialog->windowTitle();
        seen.filters = dialog->nameFilters();
        seen.saving = dialog->acceptMode() == QFileDialog::AcceptSave;
        seen.confirmsOverwrite = !dialog->testOption(QFileDialog::DontConfirmOverwrite);
        seen.suffix = dialog->defaultSuffix();
        if (choose.isEmpty()) {
            dialog->reject();
        } else {
            dialog->selectFile(choose);
            static_cast<QDialog*>(dialog)->accept();  // public there
        }
    });
    QtFileDialogs dialogs;
    return dialogs.Show(request);
}

TEST(QtFileDialogs, SaveGivesTheChosenFileWithoutAskingToReplaceIt) {
    QTemporaryDir directory;
    const QString path = directory.filePath(QStringLiteral("plans.cal"));
    SeenDialog seen;
    const QString chosen = ShowAndAnswer(
        {FileDialogKind::Save, QStringLiteral("Save Calender"), QString(), kCalendarFilter}, path,
        seen);
    EXPECT_EQ(chosen, path);
    EXPECT_EQ(seen.title, QStringLiteral("Save Calender"));
    EXPECT_EQ(seen.filters, (QStringList{"Calender Files (*.cal)", "All Files (*)"}));
    EXPECT_TRUE(seen.saving);
    EXPECT_FALSE(seen.confirmsOverwrite);
    EXPECT_EQ(seen.suffix, QStringLiteral("cal"));
}

TEST(QtFileDialogs, CancelGivesAnEmptyName) {
    SeenDialog seen;
    const QString chosen =
        ShowAndAnswer({FileDialogKind::Open, QStringLiteral("Open"), QString(), kCalendarFilter},
                      QString(), seen);
    EXPECT_TRUE(chosen.isEmpty());
    EXPECT_EQ(seen.title, QStringLiteral("Open"));
    EXPECT_FALSE(seen.saving);
    EXPECT_TRUE(seen.suffix.isEmpty());
}

}  // namespace
}  // namespace kelvane
