#include <QTest>

#include <gtest/gtest.h>

#include <vector>

#include "gui/SurfaceWidget.h"

namespace kelvane {
namespace {

// Writes down what the widget passes on and paints a red box on each resize.
class RecordingEvents final : public CalenderEvents {
  public:
    explicit RecordingEvents(ImageSurface& surface) : surface_(surface) {}

    void Calender_Resize() override {
        ++resizes;
        surface_.Clear();
        surface_.FillBox(0, 0, 9, 9, 255);
    }
    void Calender_MouseDown(MouseButton button, double x, double y) override {
        presses.push_back({button, x, y});
    }
    void Calender_Click() override { ++clicks; }

    struct Press {
        MouseButton button;
        double x;
        double y;
    };
    int resizes = 0;
    int clicks = 0;
    std::vector<Press> presses;

  private:
    ImageSurface& surface_;
};

// A shown widget of 300 x 200 that reports to RecordingEvents.
class SurfaceWidgetTest : public ::testing::Test {
  protected:
    void SetUp() override {
        widget.SetEvents(&events);
        widget.resize(300, 200);
        widget.show();
        ASSERT_TRUE(QTest::qWaitForWindowExposed(&widget));
    }

    SurfaceWidget widget;
    RecordingEvents events{widget.Surface()};
};

TEST_F(SurfaceWidgetTest, ResizesThePictureAndTellsTheControl) {
    EXPECT_GE(events.resizes, 1);
    EXPECT_EQ(widget.Surface().ScaleWidth(), 300);
    EXPECT_EQ(widget.Surface().ScaleHeight(), 200);
    widget.resize(120, 80);
    EXPECT_EQ(widget.Surface().ScaleWidth(), 120);
}

TEST_F(SurfaceWidgetTest, PaintsFromThePicture) {
    const QImage shown = widget.grab().toImage();
    EXPECT_EQ(shown.pixelColor(5, 5), QColor(255, 0, 0));
    EXPECT_EQ(shown.pixelColor(50, 50), widget.palette().color(QPalette::Window));
}

TEST_F(SurfaceWidgetTest, PassesPressesAndLeftClicksOn) {
    QTest::mouseClick(&widget, Qt::LeftButton, {}, QPoint(40, 60));
    QTest::mouseClick(&widget, Qt::RightButton, {}, QPoint(10, 20));
    ASSERT_EQ(events.presses.size(), 2u);
    EXPECT_EQ(events.presses[0].button, CalenderEvents::MouseButton::Left);
    EXPECT_EQ(events.presses[0].x, 40);
    EXPECT_EQ(events.presses[0].y, 60);
    EXPECT_EQ(events.presses[1].button, CalenderEvents::MouseButton::Right);
    EXPECT_EQ(events.clicks, 1);
}

TEST_F(SurfaceWidgetTest, AReleaseOutsideIsNoClick) {
    QTest::mousePress(&widget, Qt::LeftButton, {}, QPoint(40, 60));
    QTest::mouseRelease(&widget, Qt::LeftButton, {}, QPoint(400, 60));
    EXPECT_EQ(events.presses.size(), 1u);
    EXPECT_EQ(events.clicks, 0);
}

TEST(SurfaceWidget, WorksWithoutAControlAndAtNoSize) {
    QWidget window;
    auto* widget = new SurfaceWidget(&window);
    window.resize(100, 100);
    widget->resize(50, 50);
    window.show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&window));
    QTest::mouseClick(widget, Qt::LeftButton, {}, QPoint(10, 10));
    widget->resize(0, 0);
    EXPECT_TRUE(widget->Surface().Image().isNull());
    widget->repaint();
}

}  // namespace
}  // namespace kelvane
