#include <QFile>

#include <gtest/gtest.h>

#include "report/TextBoxFound.h"
#include "report/frmCommingUp.h"
#include "support/DatesWorld.h"

namespace kelvane {
namespace {

using testing::DatesWorld;

// Every date of 2000 gets what data/make_whole_year_report.py expects: a title
// on all but every tenth date, a morning walk and an afternoon call.
void FillTheYear(DatesWorld& dates) {
    int n = 1;
    for (qint16 month = 1; month <= 12; ++month) {
        for (qint16 day = 1; day <= dates.world.module1.YearMonthLengths[month]; ++day, ++n) {
            if (n % 10 != 0) {
                dates.PutTitle(month, day, QStringLiteral("Day %1 of the year").arg(n));
            }
            const auto hour = static_cast<qint16>(7 + n % 4);
            dates.PutActivity(month, day, 1, QStringLiteral("Morning walk"), {hour, 15},
                              {static_cast<qint16>(hour + 1), 0});
            dates.PutActivity(month, day, 2, QStringLiteral("Call %1").arg(n),
                              {13, static_cast<qint16>(n % 60)});
        }
    }
}

TEST(WholeYearReport, ListsEveryDateOfTheYearWithItsScheduleAsExpected) {
    DatesWorld dates(2000, 1, 1);
    dates.world.module1.FillYearMonthLengths();
    FillTheYear(dates);
    frmCommingUp dialog(dates.world.store, *dates.view.calender);
    DatesWorld::Click(dialog.optTimeDuration[2]);
    dialog.txtTimeUnits->setText(QStringLiteral("12"));
    DatesWorld::Click(dialog.chkDisplay);

    EXPECT_EQ(dialog.usrDocViewer1->GetLineCount(), 4 + 366 * 7);
    // Past the thousandth line the viewer keeps its lines in a file.
    EXPECT_FALSE(dialog.usrDocViewer1->OverflowFilePath().isEmpty());
    QFile expected(QStringLiteral(KELVANE_REPORT_DATA "/whole_year_report.txt"));
    ASSERT_TRUE(expected.open(QIODevice::ReadOnly));
    const QString shown = TextBoxFound(*dialog.usrDocViewer1)->toPlainText();
    EXPECT_EQ(shown, QString::fromLatin1(expected.readAll()));
}

}  // namespace
}  // namespace kelvane
