#include <QAbstractButton>
#include <QAccessible>
#include <QApplication>
#include <QCoreApplication>
#include <QDir>
#include <QMessageBox>
#include <QRegularExpression>
#include <QStandardPaths>
#include <QTimer>

#include <gtest/gtest.h>

#include "gui/QtPlatform.h"

namespace kelvane {
namespace {

TEST(QtSystemClock, GivesMonthDayYearAndTwentyFourHourTime) {
    QtSystemClock clock;
    EXPECT_TRUE(QRegularExpression(QStringLiteral("^\\d\\d-\\d\\d-\\d{4}$"))
                    .match(clock.DateText())
                    .hasMatch())
        << clock.DateText().toStdString();
    EXPECT_TRUE(QRegularExpression(QStringLiteral("^\\d\\d:\\d\\d:\\d\\d$"))
                    .match(clock.TimeText())
                    .hasMatch())
        << clock.TimeText().toStdString();
    EXPECT_GE(clock.SecondsSinceMidnight(), 0.0);
    EXPECT_LT(clock.SecondsSinceMidnight(), 86400.0);
}

TEST(MersenneRandomSource, StaysInTheHalfOpenUnitRange) {
    MersenneRandomSource random;
    random.Seed(12345);
    double lowest = 1.0;
    double highest = 0.0;
    for (int i = 0; i < 100000; ++i) {
        const double value = random.Next();
        ASSERT_GE(value, 0.0);
        ASSERT_LT(value, 1.0);
        lowest = std::min(lowest, value);
        highest = std::max(highest, value);
    }
    EXPECT_LT(lowest, 0.01);
    EXPECT_GT(highest, 0.99);
}

TEST(MersenneRandomSource, TheSameSeedGivesTheSameNumbers) {
    MersenneRandomSource first;
    MersenneRandomSource second;
    first.Seed(40000);
    second.Seed(40000);
    for (int i = 0; i < 10; ++i) {
        EXPECT_EQ(first.Next(), second.Next());
    }
}

TEST(QtProgramDirectory, IsTheExecutablesDirectory) {
    // The tests run from the build tree, which can be written.
    QtProgramDirectory directory;
    EXPECT_EQ(directory.Path(), QDir::toNativeSeparators(QCoreApplication::applicationDirPath()));
}

TEST(ChooseProgramDirectory, KeepsAProgramDirectoryThatCanBeWritten) {
    EXPECT_EQ(ChooseProgramDirectory(QStringLiteral("/opt/kelvane"), true,
                                     QStringLiteral("/home/ann/.local/share/Kelvane")),
              QDir::toNativeSeparators(QStringLiteral("/opt/kelvane")));
}

TEST(ChooseProgramDirectory, TakesTheUsersFolderWhenTheProgramDirectoryCannotBeWritten) {
    EXPECT_EQ(ChooseProgramDirectory(QStringLiteral("/usr/bin"), false,
                                     QStringLiteral("/home/ann/.local/share/Kelvane")),
              QDir::toNativeSeparators(QStringLiteral("/home/ann/.local/share/Kelvane")));
}

TEST(ChooseProgramDirectory, StaysWithTheProgramDirectoryWhenThereIsNoUsersFolder) {
    EXPECT_EQ(ChooseProgramDirectory(QStringLiteral("/usr/bin"), false, QString()),
              QDir::toNativeSeparators(QStringLiteral("/usr/bin")));
}

TEST(UserProgramDataDirectory, IsNamedAfterTheApplicationInTheUsersDataFolder) {
    const QString dataFolder =
        QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation);
    ASSERT_FALSE(dataFolder.isEmpty());
    EXPECT_EQ(UserProgramDataDirectory(),
              dataFolder + QLatin1Char('/') + QCoreApplication::applicationName());
}

TEST(QtPlatform, HandsOutItsServices) {
    QtPlatform platform;
    EXPECT_EQ(&platform.Services.Messages, &platform.Messages);
    EXPECT_EQ(&platform.Services.FileDialog, &platform.FileDialog);
    EXPECT_EQ(&platform.Services.ColourDialog, &platform.ColourDialog);
    EXPECT_EQ(&platform.Services.Settings, &platform.Settings);
    EXPECT_EQ(&platform.Services.Instance, &platform.Instance);
    EXPECT_EQ(&platform.Services.Accessibility, &platform.Accessibility);
}

// Shows a box through QtMessageBoxes and presses `button` on it once it is up.
struct ShownBox {
    QString title;
    QString text;
    QMessageBox::Icon icon = QMessageBox::NoIcon;
    QMessageBox::StandardButtons buttons;
    // As a screen reader reads it.
    QString description;
    MessageAnswer answer = MessageAnswer::Ok;
};

ShownBox ShowAndPress(MessageButtons buttons, MessageIcon icon, QMessageBox::StandardButton press,
                      const QString& description = QString()) {
    ShownBox shown;
    QTimer::singleShot(0, [&] {
        auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
        ASSERT_NE(box, nullptr);
        shown.title = box->windowTitle();
        shown.text = box->text();
        shown.icon = box->icon();
        shown.buttons = box->standardButtons();
        shown.description =
            QAccessible::queryAccessibleInterface(box)->text(QAccessible::Description);
        box->button(press)->click();
    });
    QtMessageBoxes messages;
    MessageBoxes& boxes = messages;
    shown.answer = boxes.Show(QStringLiteral("There is another 'me' running\rSecond line"), buttons,
                              icon, QString(), description);
    return shown;
}

TEST(QtMessageBoxes, ShowsTitleTextIconAndButtons) {
    const ShownBox shown = ShowAndPress(MessageButtons::Ok, MessageIcon::Critical, QMessageBox::Ok);
    EXPECT_EQ(shown.title, QStringLiteral("Kelvane"));
    EXPECT_EQ(shown.text, QStringLiteral("There is another 'me' running\nSecond line"));
    EXPECT_EQ(shown.icon, QMessageBox::Critical);
    EXPECT_EQ(shown.buttons, QMessageBox::StandardButtons(QMessageBox::Ok));
    EXPECT_EQ(shown.answer, MessageAnswer::Ok);
}

TEST(QtMessageBoxes, AnswersYesOrNo) {
    const ShownBox yes =
        ShowAndPress(MessageButtons::YesNo, MessageIcon::Exclamation, QMessageBox::Yes);
    EXPECT_EQ(yes.answer, MessageAnswer::Yes);
    EXPECT_EQ(yes.icon, QMessageBox::Warning);
    EXPECT_EQ(yes.buttons, QMessageBox::Yes | QMessageBox::No);
    const ShownBox no = ShowAndPress(MessageButtons::YesNo, MessageIcon::Question, QMessageBox::No);
    EXPECT_EQ(no.answer, MessageAnswer::No);
    EXPECT_EQ(no.icon, QMessageBox::Question);
}

TEST(QtMessageBoxes, GivesScreenReadersTheDescriptionAndShowsOnlyTheText) {
    const ShownBox shown = ShowAndPress(MessageButtons::YesNo, MessageIcon::None, QMessageBox::No,
                                        QStringLiteral("Thursday 12 March"));
    EXPECT_EQ(shown.description, QStringLiteral("Thursday 12 March"));
    EXPECT_EQ(shown.text, QStringLiteral("There is another 'me' running\nSecond line"));
    EXPECT_EQ(shown.title, QStringLiteral("Kelvane"));
}

}  // namespace
}  // namespace kelvane
