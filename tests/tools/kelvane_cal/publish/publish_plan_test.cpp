#include <gtest/gtest.h>

#include <QCryptographicHash>

#include "kelvane_cal/caldav/CalDavUrl.h"
#include "kelvane_cal/ical/EventTexts.h"
#include "kelvane_cal/publish/PublishPlan.h"

namespace kelvane::cal {
namespace {

EventText Local(const QString& uid, const QByteArray& hash) {
    return {uid, "BEGIN:VCALENDAR\r\n...", hash};
}

class PublishPlanTest : public ::testing::Test {
  protected:
    PublishPlan Plan(bool force = false) {
        return PlanPublish(local, published, server, force, [](const QString& uid) {
            return uid.endsWith(QStringLiteral("@mine"));
        });
    }

    std::map<QString, EventText> local;
    std::map<QString, PublishedEvent> published;
    std::map<QString, ServerEvent> server;
};

PublishStep StepOf(const PublishPlan& plan, const QString& uid) {
    for (const PublishAction& action : plan.Actions) {
        if (action.Uid == uid) {
            return action.Step;
        }
    }
    ADD_FAILURE() << "no action for " << uid.toStdString();
    return PublishStep::Forget;
}

TEST_F(PublishPlanTest, NewEventsAreCreatedAndUnchangedOnesLeftAlone) {
    local["a@mine"] = Local("a@mine", "1");
    local["b@mine"] = Local("b@mine", "2");
    published["b@mine"] = {"\"e2\"", "2"};
    server["b@mine"] = {"/c/b@mine.ics", "\"e2\""};
    const PublishPlan plan = Plan();
    EXPECT_EQ(StepOf(plan, "a@mine"), PublishStep::Create);
    EXPECT_EQ(plan.Actions.size(), 1u);
    EXPECT_EQ(plan.Unchanged, 1);
}

TEST_F(PublishPlanTest, AChangedEventIsReplacedWithTheETagItWasPublishedWith) {
    local["a@mine"] = Local("a@mine", "new");
    published["a@mine"] = {"\"e1\"", "old"};
    server["a@mine"] = {"/c/a@mine.ics", "\"e1\""};
    const PublishPlan plan = Plan();
    ASSERT_EQ(plan.Actions.size(), 1u);
    EXPECT_EQ(plan.Actions[0].Step, PublishStep::Replace);
    EXPECT_EQ(plan.Actions[0].IfMatch, "\"e1\"");
}

// Another ETag may be our own change whose answer was lost: it is checked.
TEST_F(PublishPlanTest, AnotherETagIsCheckedAndADeletionOnTheServerIsAConflict) {
    local["a@mine"] = Local("a@mine", "new");
    local["b@mine"] = Local("b@mine", "same");
    local["c@mine"] = Local("c@mine", "same");
    published["a@mine"] = {"\"e1\"", "old"};
    published["b@mine"] = {"\"e2\"", "same"};
    published["c@mine"] = {"", "same"};
    server["a@mine"] = {"/c/a@mine.ics", "\"theirs\""};
    server["c@mine"] = {"/c/c@mine.ics", ""};
    EXPECT_EQ(StepOf(Plan(), "a@mine"), PublishStep::Check);
    EXPECT_EQ(StepOf(Plan(), "b@mine"), PublishStep::Conflict);
    EXPECT_EQ(StepOf(Plan(), "c@mine"), PublishStep::Check);
    EXPECT_EQ(StepOf(Plan(true), "b@mine"), PublishStep::Create);
}

TEST_F(PublishPlanTest, AnotherYearsEventsInTheStateAreLeftAlone) {
    published["2025-old"] = {"\"e1\"", "1"};
    server["2025-old"] = {"/c/2025-old.ics", "\"e1\""};
    EXPECT_TRUE(Plan().Actions.empty());
}

TEST_F(PublishPlanTest, GoneEventsAreDeletedButForeignOnesNeverTouched) {
    published["a@mine"] = {"\"e1\"", "1"};
    server["a@mine"] = {"/c/a@mine.ics", "\"e1\""};
    server["left-over@mine"] = {"/c/left-over@mine.ics", "\"e9\""};
    server["lunch@example.org"] = {"/c/lunch.ics", "\"f1\""};
    published["gone@mine"] = {"\"e3\"", "3"};
    const PublishPlan plan = Plan();
    EXPECT_EQ(StepOf(plan, "a@mine"), PublishStep::Delete);
    EXPECT_EQ(StepOf(plan, "left-over@mine"), PublishStep::Delete);
    EXPECT_EQ(StepOf(plan, "gone@mine"), PublishStep::Forget);
    for (const PublishAction& action : plan.Actions) {
        EXPECT_NE(action.Uid, QStringLiteral("lunch@example.org"));
    }
}

TEST_F(PublishPlanTest, AnEventOnTheServerThatTheStateDoesNotKnowIsChecked) {
    local["a@mine"] = Local("a@mine", "1");
    server["a@mine"] = {"/c/a@mine.ics", "\"e1\""};
    EXPECT_EQ(StepOf(Plan(), "a@mine"), PublishStep::Check);
}

TEST(EventTexts, SplitsAnExportIntoOneCalendarPerEvent) {
    const QByteArray calendar =
        "BEGIN:VCALENDAR\r\nVERSION:2.0\r\nPRODID:x\r\n"
        "BEGIN:VEVENT\r\nUID:one\r\nDTSTAMP:20261123T093000Z\r\nSUMMARY:A long\r\n  title\r\n"
        "END:VEVENT\r\nBEGIN:VEVENT\r\nUID:two\r\nSUMMARY:B\r\nEND:VEVENT\r\nEND:VCALENDAR\r\n";
    const std::vector<EventText> events = SplitEvents(calendar);
    ASSERT_EQ(events.size(), 2u);
    EXPECT_EQ(events[0].Uid, QStringLiteral("one"));
    EXPECT_EQ(events[0].Text,
              "BEGIN:VCALENDAR\r\nVERSION:2.0\r\nPRODID:x\r\nBEGIN:VEVENT\r\nUID:one\r\n"
              "DTSTAMP:20261123T093000Z\r\nSUMMARY:A long\r\n  title\r\nEND:VEVENT\r\n"
              "END:VCALENDAR\r\n");
    EXPECT_EQ(events[1].Uid, QStringLiteral("two"));
}

TEST(EventTexts, TheHashIgnoresTheStampTheOrderAndTheFolds) {
    const QByteArray ours =
        "BEGIN:VEVENT\r\nUID:one\r\nDTSTAMP:20261123T093000Z\r\n"
        "SUMMARY:A long title\r\nEND:VEVENT\r\n";
    const QByteArray theirs =
        "BEGIN:VEVENT\nSUMMARY:A long\n  title\nUID:one\n"
        "DTSTAMP:20270101T000000Z\nEND:VEVENT\n";
    EXPECT_EQ(EventHash(ours), EventHash(theirs));
    EXPECT_NE(EventHash(ours), EventHash("BEGIN:VEVENT\r\nUID:one\r\nSUMMARY:Other\r\n"
                                         "END:VEVENT\r\n"));
}

// The stamp is left out whatever the case of its name, and nothing else is;
// an event split from a calendar has the hash of its own text.
TEST(EventTexts, TheHashLeavesOutOnlyTheStampInAnyCase) {
    const QByteArray plain = "BEGIN:VEVENT\r\nUID:one\r\nEND:VEVENT\r\n";
    EXPECT_EQ(EventHash("BEGIN:VEVENT\r\nUID:one\r\ndtStamp:1\r\nEND:VEVENT\r\n"),
              EventHash(plain));
    EXPECT_NE(EventHash("BEGIN:VEVENT\r\nUID:one\r\nDTSTAMX:1\r\nEND:VEVENT\r\n"),
              EventHash(plain));
    EXPECT_NE(EventHash("BEGIN:VEVENT\r\nUID:one\r\nDTSTA\r\nEND:VEVENT\r\n"), EventHash(plain));
    const QByteArray event =
        "BEGIN:VEVENT\r\nUID:o\r\n ne\r\nDTSTAMP:2\r\nSUMMARY:\xc3\xa9t\xc3\xa9\r\nEND:VEVENT\r\n";
    const std::vector<EventText> events =
        SplitEvents("BEGIN:VCALENDAR\r\nVERSION:2.0\r\n" + event + "END:VCALENDAR\r\n");
    ASSERT_EQ(events.size(), 1u);
    EXPECT_EQ(events[0].Uid, QStringLiteral("one"));
    EXPECT_EQ(events[0].Hash, EventHash(event));
}

// The hash is SHA-256 over the unfolded lines without the stamp, sorted,
// each ending in CRLF: the state files of earlier runs keep hashes made so.
TEST(EventTexts, TheHashIsOfTheSortedUnfoldedLinesWithoutTheStamp) {
    const QByteArray event =
        "BEGIN:VEVENT\nUID:u\r\n 1\r\n\t2\r\n\r\nDTSTAMP:5\r\nb:\r\r\nA:\xff\r\n"
        "SUMMARY:x\r\n \r\nEND:VEVENT";
    const QByteArray expected = QCryptographicHash::hash(
                                    "A:\xff\r\nBEGIN:VEVENT\r\nEND:VEVENT\r\nSUMMARY:x\r\n"
                                    "UID:u12\r\nb:\r\r\n",
                                    QCryptographicHash::Sha256)
                                    .toHex();
    EXPECT_EQ(EventHash(event), expected);
    const std::vector<EventText> events = SplitEvents("BEGIN:VCALENDAR\r\n" + event + "\r\n");
    ASSERT_EQ(events.size(), 1u);
    EXPECT_EQ(events[0].Uid, QStringLiteral("u12"));
    EXPECT_EQ(events[0].Hash, expected);
}

TEST(EventTexts, JoinsCalendarsKeepingEachTimeZoneOnce) {
    const QByteArray zone = "BEGIN:VTIMEZONE\r\nTZID:Europe/Berlin\r\nEND:VTIMEZONE\r\n";
    const QByteArray first = "BEGIN:VCALENDAR\r\nVERSION:2.0\r\n" + zone +
                             "BEGIN:VEVENT\r\nUID:1\r\nEND:VEVENT\r\nEND:VCALENDAR\r\n";
    const QByteArray second = "BEGIN:VCALENDAR\r\nVERSION:2.0\r\n" + zone +
                              "BEGIN:VEVENT\r\nUID:2\r\nEND:VEVENT\r\nEND:VCALENDAR\r\n";
    const QByteArray joined = JoinCalendars({first, second});
    EXPECT_EQ(joined.count("BEGIN:VTIMEZONE"), 1);
    EXPECT_EQ(joined.count("BEGIN:VEVENT"), 2);
    EXPECT_TRUE(joined.startsWith("BEGIN:VCALENDAR\r\n"));
    EXPECT_TRUE(joined.endsWith("END:VCALENDAR\r\n"));
}

TEST(CalDavUrl, NamesEachEventByItsUid) {
    const QUrl collection(QStringLiteral("https://dav.example.org/alice/plan/"));
    EXPECT_EQ(EventUrl(collection, QStringLiteral("20260317-day-abc@kelvane")).path(),
              QStringLiteral("/alice/plan/20260317-day-abc@kelvane.ics"));
    EXPECT_EQ(UidOfHref(QStringLiteral("/alice/plan/20260317-day-abc%40kelvane.ics")),
              QStringLiteral("20260317-day-abc@kelvane"));
    EXPECT_EQ(UidOfHref(QStringLiteral("/alice/plan/")), QString());
}

}  // namespace
}  // namespace kelvane::cal
