#include <gtest/gtest.h>

#include <QCoreApplication>
#include <QFileInfo>
#include <QTemporaryDir>

#include <sys/resource.h>

#include <csignal>

#include "fixtures/CalFiles.h"
#include "kelvane_cal/publish/PublishState.h"

// What publish keeps of what it published: a saved state, and a journal that
// takes every change as it is made.
namespace kelvane::cal {
namespace {

const QString kUrl = QStringLiteral("https://cloud.example.org/dav/alice/plan/");

class PublishStateTest : public ::testing::Test {
  protected:
    std::unique_ptr<PublishState> Fresh(const QString& seed = QStringLiteral("plan.cal")) {
        return std::make_unique<PublishState>(folder.path(), kUrl, seed);
    }

    // The events a new run would find, or a failure when they cannot be read.
    std::map<QString, PublishedEvent> Reloaded() {
        auto state = Fresh();
        QString problem;
        EXPECT_TRUE(state->Load(problem)) << problem.toStdString();
        return state->Events();
    }

    QTemporaryDir folder;
};

bool operator==(const PublishedEvent& a, const PublishedEvent& b) {
    return a.ETag == b.ETag && a.Hash == b.Hash;
}

TEST_F(PublishStateTest, NothingSavedIsAnEmptyState) {
    EXPECT_TRUE(Reloaded().empty());
}

TEST_F(PublishStateTest, ASavedStateComesBackAndTheJournalGoes) {
    auto state = Fresh();
    QString problem;
    ASSERT_TRUE(state->StartJournal(problem)) << problem.toStdString();
    state->Put(QStringLiteral("a"), {"\"1\"", "h1"});
    state->Put(QStringLiteral("b"), {"\"2\"", "h2"});
    ASSERT_TRUE(state->Save(problem)) << problem.toStdString();
    EXPECT_TRUE(QFile::exists(state->FileName()));
    EXPECT_FALSE(QFile::exists(state->JournalName()));
    const auto events = Reloaded();
    ASSERT_EQ(events.size(), 2u);
    EXPECT_TRUE(events.at(QStringLiteral("b")) == (PublishedEvent{"\"2\"", "h2"}));
}

// A refusal is kept by the journal and by the saved state; an accepted
// event, an erased one or an empty hash forgets it.
TEST_F(PublishStateTest, RefusalsAreKeptUntilForgotten) {
    auto state = Fresh();
    QString problem;
    ASSERT_TRUE(state->StartJournal(problem)) << problem.toStdString();
    for (const char* uid : {"a", "b", "c", "d"}) {
        state->Refuse(QString::fromLatin1(uid), "h");
    }
    state->Put(QStringLiteral("b"), {"\"2\"", "h2"});
    state->Erase(QStringLiteral("c"));
    state->Refuse(QStringLiteral("d"), {});
    const std::map<QString, QByteArray> kept{{QStringLiteral("a"), "h"}};
    EXPECT_EQ(state->Refused(), kept);
    {
        auto journalled = Fresh();
        ASSERT_TRUE(journalled->Load(problem)) << problem.toStdString();
        EXPECT_EQ(journalled->Refused(), kept);
    }
    ASSERT_TRUE(state->Save(problem)) << problem.toStdString();
    auto saved = Fresh();
    ASSERT_TRUE(saved->Load(problem)) << problem.toStdString();
    EXPECT_EQ(saved->Refused(), kept);
    EXPECT_EQ(saved->Events().size(), 1u);
}

TEST_F(PublishStateTest, EveryChangeIsKeptBeforeTheStateIsSaved) {
    auto state = Fresh();
    QString problem;
    ASSERT_TRUE(state->StartJournal(problem));
    state->Put(QStringLiteral("a"), {"\"1\"", "h1"});
    state->Put(QStringLiteral("b"), {"\"2\"", "h2"});
    state->Put(QStringLiteral("a"), {"\"3\"", "h3"});
    state->Erase(QStringLiteral("b"));
    // A run stopped here never saved; the journal has it all.
    EXPECT_FALSE(QFile::exists(state->FileName()));
    const auto events = Reloaded();
    ASSERT_EQ(events.size(), 1u);
    EXPECT_TRUE(events.at(QStringLiteral("a")) == (PublishedEvent{"\"3\"", "h3"}));
}

TEST_F(PublishStateTest, ALineCutShortByAStopIsPassedOverAndEndsTheOldJournal) {
    auto first = Fresh();
    QString problem;
    ASSERT_TRUE(first->StartJournal(problem));
    first->Put(QStringLiteral("a"), {"\"1\"", "h1"});
    const QString journal = first->JournalName();
    first.reset();
    QFile file(journal);
    ASSERT_TRUE(file.open(QIODevice::Append));
    file.write(R"({"uid":"b","etag":"\"2)");
    file.close();
    EXPECT_EQ(Reloaded().size(), 1u);

    auto next = Fresh();
    ASSERT_TRUE(next->Load(problem));
    ASSERT_TRUE(next->StartJournal(problem)) << problem.toStdString();
    next->Put(QStringLiteral("c"), {"\"3\"", "h3"});
    const auto events = Reloaded();
    EXPECT_EQ(events.size(), 2u);
    EXPECT_EQ(events.count(QStringLiteral("c")), 1u);
}

// A change that the system takes only part of, as when the disk fills in the
// middle of its line, is a journal problem at once, not only at the next
// change, which may never come.
TEST_F(PublishStateTest, AChangeWrittenOnlyInPartIsAJournalProblem) {
    auto state = Fresh();
    QString problem;
    ASSERT_TRUE(state->StartJournal(problem)) << problem.toStdString();
    const qint64 written = QFileInfo(state->JournalName()).size();
    rlimit kept{};
    ASSERT_EQ(getrlimit(RLIMIT_FSIZE, &kept), 0);
    const auto keptSignal = std::signal(SIGXFSZ, SIG_IGN);
    rlimit small = kept;
    small.rlim_cur = static_cast<rlim_t>(written + 10);
    ASSERT_EQ(setrlimit(RLIMIT_FSIZE, &small), 0);
    state->Put(QStringLiteral("a"), {"\"a long enough tag\"", "h1"});
    const QString afterPut = state->JournalProblem();
    setrlimit(RLIMIT_FSIZE, &kept);
    std::signal(SIGXFSZ, keptSignal);
    EXPECT_TRUE(afterPut.startsWith(state->JournalName() + QStringLiteral(": cannot be written: ")))
        << afterPut.toStdString();
    EXPECT_EQ(QFileInfo(state->JournalName()).size(), written + 10);
}

TEST_F(PublishStateTest, AJournalStoppedInItsFirstLineHoldsNothing) {
    auto state = Fresh();
    ASSERT_TRUE(testing::WriteBytes(state->JournalName(), R"({"url":"https://clo)"));
    EXPECT_TRUE(Reloaded().empty());
}

TEST_F(PublishStateTest, AJournalOfAnotherCollectionIsRefused) {
    auto other = std::make_unique<PublishState>(folder.path(), kUrl, QStringLiteral("work"));
    const QString journal = Fresh()->JournalName();
    QString problem;
    ASSERT_TRUE(other->StartJournal(problem));
    other->Put(QStringLiteral("a"), {"\"1\"", "h1"});
    other.reset();
    ASSERT_TRUE(QFile::rename(Fresh(QStringLiteral("work"))->JournalName(), journal));
    auto state = Fresh();
    EXPECT_FALSE(state->Load(problem));
    EXPECT_EQ(problem, journal + QStringLiteral(": is damaged or belongs to another collection; "
                                                "move it away and publish again"));
}

TEST_F(PublishStateTest, ADamagedSavedStateIsRefused) {
    auto state = Fresh();
    ASSERT_TRUE(testing::WriteBytes(state->FileName(), "{\"url\":"));
    QString problem;
    EXPECT_FALSE(state->Load(problem));
    EXPECT_TRUE(problem.startsWith(state->FileName() + QStringLiteral(": is damaged")));
}

TEST_F(PublishStateTest, OnlyOneRunHoldsTheStateAtATime) {
    auto first = Fresh();
    auto second = Fresh();
    QString problem;
    ASSERT_TRUE(first->Lock(problem)) << problem.toStdString();
    EXPECT_FALSE(second->Lock(problem));
    EXPECT_EQ(problem, QStringLiteral("another publish to this collection is running (process "
                                      "%1); try again when it has ended")
                           .arg(QCoreApplication::applicationPid()));
    first.reset();
    EXPECT_TRUE(second->Lock(problem)) << problem.toStdString();
}

TEST_F(PublishStateTest, OtherSeedsHaveStatesOfTheirOwnButShareTheCollectionsLock) {
    auto plan = Fresh();
    auto work = Fresh(QStringLiteral("work"));
    PublishState elsewhere(folder.path(), QStringLiteral("https://other.example.org/"),
                           QStringLiteral("plan.cal"));
    EXPECT_NE(plan->FileName(), work->FileName());
    EXPECT_NE(plan->FileName(), elsewhere.FileName());
    QString problem;
    EXPECT_TRUE(plan->Lock(problem));
    EXPECT_FALSE(work->Lock(problem));
    EXPECT_TRUE(elsewhere.Lock(problem));
}

// Older versions named a collection's state after its URL as it was given.
TEST_F(PublishStateTest, AStateKeptUnderTheFormerUrlIsReadAndSavedUnderTheNewOne) {
    const QString former = QStringLiteral("https://Cloud.example.org:443/dav/alice/plan");
    auto old = std::make_unique<PublishState>(folder.path(), former, QStringLiteral("plan.cal"));
    QString problem;
    ASSERT_TRUE(old->StartJournal(problem));
    old->Put(QStringLiteral("a"), {"\"1\"", "h1"});
    ASSERT_TRUE(old->Save(problem));
    ASSERT_TRUE(old->StartJournal(problem));
    old->Put(QStringLiteral("b"), {"\"2\"", "h2"});
    const QString oldFile = old->FileName();
    const QString oldJournal = old->JournalName();
    old.reset();

    PublishState state(folder.path(), kUrl, QStringLiteral("plan.cal"), former);
    ASSERT_TRUE(state.Load(problem)) << problem.toStdString();
    EXPECT_EQ(state.Events().size(), 2u);
    EXPECT_TRUE(QFile::exists(oldFile));  // a dry run changes nothing
    ASSERT_TRUE(state.StartJournal(problem)) << problem.toStdString();
    EXPECT_FALSE(QFile::exists(oldFile));
    EXPECT_FALSE(QFile::exists(oldJournal));
    EXPECT_EQ(Reloaded().size(), 2u);
}

TEST_F(PublishStateTest, TheFormerUrlIsNotReadOnceTheNewOneHasAState) {
    const QString former = QStringLiteral("https://Cloud.example.org:443/dav/alice/plan");
    PublishState old(folder.path(), former, QStringLiteral("plan.cal"));
    QString problem;
    ASSERT_TRUE(old.StartJournal(problem));
    old.Put(QStringLiteral("a"), {"\"1\"", "h1"});
    ASSERT_TRUE(old.Save(problem));
    auto current = Fresh();
    ASSERT_TRUE(current->Save(problem));
    PublishState state(folder.path(), kUrl, QStringLiteral("plan.cal"), former);
    ASSERT_TRUE(state.Load(problem)) << problem.toStdString();
    EXPECT_TRUE(state.Events().empty());
}

TEST_F(PublishStateTest, TheFolderAndItsFilesAreForTheOwnerAlone) {
    const QString stateFolder = folder.filePath(QStringLiteral("state"));
    PublishState state(stateFolder, kUrl, QStringLiteral("plan.cal"));
    QString problem;
    ASSERT_TRUE(state.Lock(problem)) << problem.toStdString();
    ASSERT_TRUE(state.StartJournal(problem)) << problem.toStdString();
    state.Put(QStringLiteral("a"), {"\"1\"", "h1"});
    const QFileDevice::Permissions others = QFileDevice::ReadGroup | QFileDevice::WriteGroup |
                                            QFileDevice::ExeGroup | QFileDevice::ReadOther |
                                            QFileDevice::WriteOther | QFileDevice::ExeOther;
    EXPECT_FALSE(QFileInfo(stateFolder).permissions() & others);
    const QStringList whileRunning = QDir(stateFolder).entryList(QDir::Files);
    EXPECT_EQ(whileRunning.size(), 2);  // the lock and the journal
    ASSERT_TRUE(state.Save(problem));
    for (const QFileInfo& file : QDir(stateFolder).entryInfoList(QDir::Files)) {
        EXPECT_FALSE(file.permissions() & others) << file.fileName().toStdString();
    }
    for (const QString& name : whileRunning) {
        if (QFile::exists(QDir(stateFolder).filePath(name))) {
            EXPECT_FALSE(QFileInfo(QDir(stateFolder).filePath(name)).permissions() & others)
                << name.toStdString();
        }
    }
}

TEST_F(PublishStateTest, AnUnreadableLineEndsTheJournal) {
    auto state = Fresh();
    QString problem;
    ASSERT_TRUE(state->StartJournal(problem));
    state->Put(QStringLiteral("a"), {"\"1\"", "h1"});
    const QString journal = state->JournalName();
    state.reset();
    QFile file(journal);
    ASSERT_TRUE(file.open(QIODevice::Append));
    file.write("{\"uid\":\n{\"uid\":\"b\",\"etag\":\"\\\"2\\\"\",\"hash\":\"h2\"}\n");
    file.close();
    const auto events = Reloaded();
    ASSERT_EQ(events.size(), 1u);
    EXPECT_EQ(events.count(QStringLiteral("a")), 1u);
}

}  // namespace
}  // namespace kelvane::cal
