#include <QTest>

#include <gtest/gtest.h>

#include "calendar/Calender.h"
#include "gui/SurfaceWidget.h"
#include "support/TestWorld.h"

namespace kelvane {
namespace {

// The month view in its window, driven by real mouse events.
class CalenderViewTest : public ::testing::Test {
  protected:
    CalenderViewTest() {
        world.platform.Clock.Set(2000, 3, 15, 9, 0);
        calender = std::make_unique<Calender>(world.module1, world.calender, view.Surface());
        view.SetEvents(calender.get());
        view.resize(700, 520);
        view.show();
    }
    ~CalenderViewTest() override { view.SetEvents(nullptr); }

    double RowHeight() const { return (520.0 - calender->GridTop) / 5; }

    QPoint CellCentre(int row, int column) const {
        return QPoint(column * 100 - 50,
                      static_cast<int>(calender->GridTop + (row - 0.5) * RowHeight()));
    }

    testing::TestWorld world;
    SurfaceWidget view;
    std::unique_ptr<Calender> calender;
};

TEST_F(CalenderViewTest, AResizeRedrawsTheMonth) {
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&view));
    EXPECT_GT(calender->GridTop, 0);
    EXPECT_EQ(calender->CellMap[3][4], 15);
}

TEST_F(CalenderViewTest, AClickOnADaySelectsIt) {
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&view));
    QTest::mouseClick(&view, Qt::LeftButton, {}, CellCentre(2, 5));
    EXPECT_EQ(calender->SelectedDate.Day, 9);
    EXPECT_EQ(calender->SelectedDate.Month, 3);
    EXPECT_EQ(calender->LastMouseButton, 1);
}

TEST_F(CalenderViewTest, AClickOnTheHeaderOrALeadingCellSelectsNothing) {
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&view));
    QTest::mouseClick(&view, Qt::LeftButton, {}, QPoint(350, 5));
    QTest::mouseClick(&view, Qt::LeftButton, {}, CellCentre(1, 1));
    EXPECT_EQ(calender->SelectedDate, CalDate{});
}

TEST_F(CalenderViewTest, TheWindowShowsTheSelection) {
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&view));
    QTest::mouseClick(&view, Qt::LeftButton, {}, CellCentre(2, 5));
    const QImage shown = view.grab().toImage();
    const QColor base = view.palette().color(QPalette::Window);
    const QPoint corner(5 * 100 - 5, static_cast<int>(calender->GridTop + 2 * RowHeight()) - 5);
    EXPECT_EQ(shown.pixelColor(corner).green(), std::min(255, base.green() + 100));
}

}  // namespace
}  // namespace kelvane
