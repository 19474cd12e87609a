#include <gtest/gtest.h>

#include <QTemporaryDir>

#include "fixtures/CalRun.h"
#include "support/PermissionsApply.h"

// A folder that lets its files be rewritten but takes no new one: an output
// file there is rewritten in place.
namespace kelvane::cal::testing {
namespace {

using kelvane::testing::Chmod;
using kelvane::testing::PermissionsApply;

TEST(OutputInPlace, AnExportIntoAFolderThatTakesNoNewFileRewritesTheOldOne) {
    QTemporaryDir folder;
    const QString out = folder.filePath(QStringLiteral("out.ics"));
    ASSERT_TRUE(WriteBytes(out, "an old export"));
    ASSERT_EQ(Chmod(out, 0666), 0);
    ASSERT_EQ(Chmod(folder.path(), 0555), 0);
    CalRun run;
    {
        PermissionsApply permissions;
        ASSERT_TRUE(permissions.Active());
        run = RunCal({QStringLiteral("export"), StoreData(QStringLiteral("known_document.cal")),
                      QStringLiteral("--year"), QStringLiteral("2027"), QStringLiteral("-o"), out,
                      QStringLiteral("--force")});
    }
    Chmod(folder.path(), 0755);
    EXPECT_EQ(run.Status, 0) << run.Err.toStdString();
    EXPECT_TRUE(ReadBytes(out).startsWith("BEGIN:VCALENDAR"));
}

}  // namespace
}  // namespace kelvane::cal::testing
