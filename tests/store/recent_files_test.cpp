#include <gtest/gtest.h>

#include <QStringList>

#include "store/RecentFiles.h"
#include "support/QtPrinting.h"

namespace kelvane {
namespace {

QStringList Entries(const RecentFileList& list) {
    return {list.RecentFiles[1], list.RecentFiles[2], list.RecentFiles[3], list.RecentFiles[4]};
}

TEST(RecentFileList, OnWindowsANameLoadedInAnotherCaseIsTheSameEntry) {
    RecentFileList list(WindowsFileNameRules());
    list.Add(QStringLiteral("C:\\Data\\a.cal"));
    list.Add(QStringLiteral("c:\\data\\A.CAL"));
    EXPECT_EQ(list.RecentFiles[1], QStringLiteral("C:\\DATA\\A.CAL"));
    EXPECT_EQ(list.RecentFiles[2], QString());
    EXPECT_EQ(list.Menu().Items[1].Caption, QStringLiteral("1)A.CAL"));
}

TEST(RecentFileList, WhereCaseCountsNamesKeepTheirCase) {
    RecentFileList list(FileNameRules{false, QStringLiteral("/")});
    list.Add(QStringLiteral("/home/ann/Plans.cal"));
    list.Add(QStringLiteral("/home/ann/plans.cal"));
    EXPECT_EQ(list.RecentFiles[1], QStringLiteral("/home/ann/plans.cal"));
    EXPECT_EQ(list.RecentFiles[2], QStringLiteral("/home/ann/Plans.cal"));
    EXPECT_EQ(list.Menu().Items[2].Caption, QStringLiteral("2)Plans.cal"));
}

TEST(RecentFileList, AnExistingEntryMovesToTheTopAndANewOnePushesTheOldestOut) {
    RecentFileList list(WindowsFileNameRules());
    for (const char* name : {"A", "B", "C", "D"}) {
        list.Add(QString::fromLatin1(name));
    }
    list.Add(QStringLiteral("B"));
    EXPECT_EQ(Entries(list), (QStringList{"B", "D", "C", "A"}));
    list.Add(QStringLiteral("E"));
    EXPECT_EQ(Entries(list), (QStringList{"E", "B", "D", "C"}));
}

TEST(RecentFileList, ShowsANameOf21CharactersShortenedAndOneOf20Whole) {
    RecentFileList list(WindowsFileNameRules());
    list.Add(QStringLiteral("C:\\CAL\\ABCDEFGHIJKLMNOP.CAL"));   // 20 characters
    list.Add(QStringLiteral("C:\\CAL\\ABCDEFGHIJKLMNOPQ.CAL"));  // 21 characters
    const RecentMenu menu = list.Menu();
    EXPECT_EQ(menu.Items[1].Caption, QStringLiteral("1)...FGHIJKLMNOPQ.CAL"));
    EXPECT_EQ(menu.Items[2].Caption, QStringLiteral("2)ABCDEFGHIJKLMNOP.CAL"));
}

TEST(RecentFileList, HidesEmptyItemsAndTheSeparatorWithThem) {
    RecentFileList list(WindowsFileNameRules());
    RecentMenu menu = list.Menu();
    EXPECT_FALSE(menu.SeparatorVisible);
    for (const RecentMenuItem& item : menu.Items) {
        EXPECT_EQ(item, RecentMenuItem{});
    }
    list.RecentFiles[3] = QStringLiteral("   ");
    list.RecentFiles[2] = QStringLiteral("X.CAL");
    menu = list.Menu();
    EXPECT_TRUE(menu.SeparatorVisible);
    EXPECT_FALSE(menu.Items[1].Visible);
    EXPECT_EQ(menu.Items[2], (RecentMenuItem{QStringLiteral("2)X.CAL"), true}));
    EXPECT_FALSE(menu.Items[3].Visible);
}

TEST(BareFileName, TakesThePartAfterTheLastSeparator) {
    EXPECT_EQ(BareFileName(QStringLiteral("C:\\a/b\\c.cal"), WindowsFileNameRules()),
              QStringLiteral("c.cal"));
    EXPECT_EQ(BareFileName(QStringLiteral("C:/a/b.cal"), WindowsFileNameRules()),
              QStringLiteral("b.cal"));
    EXPECT_EQ(BareFileName(QStringLiteral("plain.cal"), WindowsFileNameRules()),
              QStringLiteral("plain.cal"));
    EXPECT_EQ(BareFileName(QStringLiteral("/x/back\\slash.cal"), FileNameRules{false, "/"}),
              QStringLiteral("back\\slash.cal"));
}

}  // namespace
}  // namespace kelvane
