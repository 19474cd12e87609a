#include <gtest/gtest.h>

#include "gui/FakePlatform.h"

namespace kelvane {
namespace {

TEST(FakeMessageBoxes, RecordsEveryBoxWithTheApplicationTitleByDefault) {
    FakeMessageBoxes boxes;
    MessageBoxes& messages = boxes;
    EXPECT_EQ(messages.Show(QStringLiteral("Did Not Find")), MessageAnswer::Ok);
    messages.Show(QStringLiteral("Delete Date?"), MessageButtons::YesNo, MessageIcon::Question,
                  QStringLiteral("Watch out ***"));
    ASSERT_EQ(boxes.Shown.size(), 2);
    EXPECT_EQ(boxes.Shown[0],
              (MessageBoxRequest{QStringLiteral("Did Not Find"), QStringLiteral("Kelvane"),
                                 MessageButtons::Ok, MessageIcon::None}));
    EXPECT_EQ(boxes.Shown[1].Title, QStringLiteral("Watch out ***"));
    EXPECT_EQ(boxes.Shown[1].Icon, MessageIcon::Question);
}

TEST(FakeMessageBoxes, AnswersFromTheScriptInOrder) {
    FakeMessageBoxes boxes;
    boxes.Answer(MessageAnswer::Yes);
    boxes.Answer(MessageAnswer::No);
    MessageBoxes& messages = boxes;
    EXPECT_EQ(messages.Show(QStringLiteral("a"), MessageButtons::YesNo), MessageAnswer::Yes);
    EXPECT_EQ(messages.Show(QStringLiteral("b"), MessageButtons::YesNo), MessageAnswer::No);
    EXPECT_EQ(boxes.UnscriptedQuestions, 0);
}

TEST(FakeMessageBoxes, AnUnscriptedQuestionIsAnsweredNoAndCounted) {
    FakeMessageBoxes boxes;
    MessageBoxes& messages = boxes;
    EXPECT_EQ(messages.Show(QStringLiteral("sure?"), MessageButtons::YesNo), MessageAnswer::No);
    EXPECT_EQ(boxes.UnscriptedQuestions, 1);
}

TEST(FakeSystemClock, GivesTheTextsOfTheTimeSet) {
    FakeSystemClock clock;
    clock.Set(2026, 3, 7, 9, 5, 2);
    EXPECT_EQ(clock.DateText(), QStringLiteral("03-07-2026"));
    EXPECT_EQ(clock.TimeText(), QStringLiteral("09:05:02"));
    EXPECT_EQ(clock.SecondsSinceMidnight(), 9 * 3600 + 5 * 60 + 2);
}

TEST(FakeSystemClock, StepsByMinutesAcrossMidnight) {
    FakeSystemClock clock;
    clock.Set(2026, 12, 31, 23, 59);
    clock.AdvanceMinutes(2);
    EXPECT_EQ(clock.DateText(), QStringLiteral("01-01-2027"));
    EXPECT_EQ(clock.TimeText(), QStringLiteral("00:01:00"));
}

TEST(FakeRandomSource, GivesTheScriptThenARepeatableSequence) {
    FakeRandomSource first;
    first.Script = {0.25, 0.5};
    EXPECT_EQ(first.Next(), 0.25);
    EXPECT_EQ(first.Next(), 0.5);
    first.Seed(7);
    FakeRandomSource second;
    second.Seed(7);
    for (int i = 0; i < 100; ++i) {
        const double value = first.Next();
        EXPECT_EQ(value, second.Next());
        EXPECT_GE(value, 0.0);
        EXPECT_LT(value, 1.0);
    }
    EXPECT_EQ(first.Seeds, QList<std::uint32_t>{7});
}

TEST(FakeSettingsStore, GivesWhatTheTestPutThereOrTheDefault) {
    FakeSettingsStore fake;
    fake.Values.insert(FakeSettingsStore::Key(QStringLiteral("Kelvane"), QStringLiteral("Settings"),
                                              QStringLiteral("Font")),
                       QStringLiteral("Courier"));
    const SettingsStore& settings = fake;
    EXPECT_EQ(settings.GetSetting(QStringLiteral("Kelvane"), QStringLiteral("Settings"),
                                  QStringLiteral("Font"), QStringLiteral("Arial")),
              QStringLiteral("Courier"));
    EXPECT_EQ(settings.GetSetting(QStringLiteral("Kelvane"), QStringLiteral("Other"),
                                  QStringLiteral("Font"), QStringLiteral("Arial")),
              QStringLiteral("Arial"));
    EXPECT_EQ(fake.Saves, 0);
}

TEST(FakeSettingsStore, KeepsAndCountsWhatIsSaved) {
    FakeSettingsStore fake;
    SettingsStore& settings = fake;
    settings.SaveSetting(QStringLiteral("Kelvane"), QStringLiteral("Settings"),
                         QStringLiteral("Size"), QStringLiteral("12"));
    settings.SaveSetting(QStringLiteral("Kelvane"), QStringLiteral("Settings"),
                         QStringLiteral("Size"), QStringLiteral("14"));
    EXPECT_EQ(fake.Saves, 2);
    EXPECT_EQ(fake.Values, (QMap<QString, QString>{{"Kelvane/Settings/Size", "14"}}));
    EXPECT_EQ(settings.GetSetting(QStringLiteral("Kelvane"), QStringLiteral("Settings"),
                                  QStringLiteral("Size"), QString()),
              QStringLiteral("14"));
}

TEST(FakeInstanceGuard, SaysWhatTheTestSetAndCountsTheChecks) {
    FakeInstanceGuard fake;
    InstanceGuard& guard = fake;
    EXPECT_FALSE(guard.AnotherCopyRunning());
    fake.OtherCopy = true;
    EXPECT_TRUE(guard.AnotherCopyRunning());
    EXPECT_EQ(fake.Checks, 2);
}

TEST(FakePlatform, HandsOutItsFakes) {
    FakePlatform fake(QStringLiteral("/some/where"));
    EXPECT_EQ(fake.Services.Directory.Path(), QStringLiteral("/some/where"));
    fake.Services.Messages.Show(QStringLiteral("hello"));
    EXPECT_EQ(fake.Messages.Shown.size(), 1);
    fake.Clock.Set(2001, 2, 3);
    EXPECT_EQ(fake.Services.Clock.DateText(), QStringLiteral("02-03-2001"));
    fake.Services.Settings.SaveSetting(QStringLiteral("Kelvane"), QStringLiteral("Settings"),
                                       QStringLiteral("Key"), QStringLiteral("value"));
    EXPECT_EQ(fake.Settings.Saves, 1);
    fake.Instance.OtherCopy = true;
    EXPECT_TRUE(fake.Services.Instance.AnotherCopyRunning());
    EXPECT_EQ(fake.Instance.Checks, 1);
}

}  // namespace
}  // namespace kelvane
