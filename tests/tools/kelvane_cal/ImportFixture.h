#pragma once

#include <gtest/gtest.h>

#include <list>

#include "CalRun.h"

// Imports iCalendar lines into a calendar file of a test's own folder and
// reads back what came of them.
namespace kelvane::cal::testing {

class ImportFixture : public ::testing::Test {
  protected:
    void SetUp() override { ASSERT_TRUE(folder_.isValid()); }
    QString Path(const QString& name) const { return folder_.filePath(name); }

    // Imports these lines for `year` into "out.cal", with times put into `zone`.
    CalRun ImportLines(const QStringList& lines, int year, const QString& zone = "UTC") {
        EXPECT_TRUE(WriteBytes(Path("in.ics"), ICalLines(lines)));
        return RunCal({"import", Path("in.ics"), "--year", QString::number(year), "--timezone",
                       zone, "-o", Path("out.cal"), "--force"});
    }
    CalendarFileContent Imported() const { return ReadCalendarBytes(ReadBytes(Path("out.cal"))); }
    // The dates that have content, as "d/M".
    QStringList ImportedDays() const {
        QStringList days;
        for (const CalendarFileDate& date : Imported().Dates) {
            days << QStringLiteral("%1/%2").arg(date.Day).arg(date.Month);
        }
        return days;
    }
    // The date of the last import, or nullptr; it stays for the whole test.
    const CalendarFileDate* ImportedDate(int month, int day) {
        for (const CalendarFileDate& date : kept_.emplace_back(Imported()).Dates) {
            if (date.Month == month && date.Day == day) {
                return &date;
            }
        }
        return nullptr;
    }

    QTemporaryDir folder_;

  private:
    std::list<CalendarFileContent> kept_;
};

}  // namespace kelvane::cal::testing
