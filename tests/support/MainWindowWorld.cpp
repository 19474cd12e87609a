#include "support/MainWindowWorld.h"

#include <QCoreApplication>
#include <QTest>

#include <gtest/gtest.h>

#include "support/ModalDialogs.h"

namespace kelvane::testing {

namespace {

std::unique_ptr<frmMain> LoadedMainWindow(TestWorld& world, int year, int month, int day, int hour,
                                          int minute) {
    world.platform.Clock.Set(year, month, day, hour, minute);
    world.OpenStores();
    auto window = std::make_unique<frmMain>(world.store);
    window->Form_Load();
    return window;
}

}  // namespace

MainWindowWorld::MainWindowWorld(int year, int month, int day, int hour, int minute)
    : window(LoadedMainWindow(world, year, month, day, hour, minute)),
      main(*window),
      watch(window->Watch()) {}

MainWindowWorld::~MainWindowWorld() {
    window->Form_Terminate();
}

void MainWindowWorld::AddActivity(qint16 month, qint16 day, const QString& description,
                                  qint16 startHour, qint16 startMinute, qint16 endHour,
                                  qint16 endMinute) {
    AppointmentMOD& appointments = store.appointments;
    const QString key = MakeDateKey(month, day);
    appointments.LoadAppointments(key);
    const int entry = appointments.CountAppointments() + 1;
    appointments.AppointmentList[entry].Description = description;
    appointments.AppointmentList[entry].StartTime = ClockTime{startHour, startMinute};
    appointments.AppointmentList[entry].EndTime = ClockTime{endHour, endMinute};
    appointments.SaveAppointments(key);
}

void MainWindowWorld::TickAt(int hour, int minute, int second) {
    platform.Clock.Now.setTime(QTime(hour, minute, second));
    main.Timer1_Timer();
}

void MainWindowWorld::MoveClockTo(int year, int month, int day, int hour, int minute, int second) {
    platform.Clock.Set(year, month, day, hour, minute, second);
    main.Timer1_Timer();
}

void MainWindowWorld::WalkTo(int hour, int minute) {
    const QTime now = platform.Clock.Now.time();
    for (int step = now.hour() * 60 + now.minute() + 1; step <= hour * 60 + minute; ++step) {
        TickAt(step / 60, step % 60, 5);
    }
}

// Work posted while posted work runs waits for the next pass.
void MainWindowWorld::RunPostedWork() {
    for (int pass = 0; pass < 3; ++pass) {
        QCoreApplication::sendPostedEvents();
    }
}

QStringList MainWindowWorld::ScheduleLines() const {
    QStringList lines;
    const usrDocViewer& viewer = window->usrTodaysSchedule();
    for (qint16 line = 1; line <= viewer.GetLineCount(); ++line) {
        lines << Trim(viewer.GetLine(line));
    }
    return lines;
}

QStringList MainWindowWorld::ShownTexts() const {
    QStringList texts;
    for (const MessageBoxRequest& box : platform.Messages.Shown) {
        texts << box.Text;
    }
    return texts;
}

void MainWindowWorld::ShowWindow() {
    main.show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&main));
}

// The selected cell is the grid's colour with more green; today's has more
// red. A pixel near a cell's lower right corner is clear of its texts.
qint16 HighlightedDayOf(frmMain& main) {
    const Calender& calender = main.Calender1();
    const QImage& image = main.CalenderView().Surface().Image();
    const double rowHeight = (image.height() - calender.GridTop) / 5.0;
    const double columnWidth = image.width() / 7.0;
    qint16 highlighted = 0;
    for (int row = 1; row <= 5; ++row) {
        for (int column = 1; column <= 7; ++column) {
            const qint16 day = calender.CellMap[row][column];
            const QColor pixel =
                image.pixelColor(static_cast<int>(column * columnWidth) - 5,
                                 static_cast<int>(calender.GridTop + row * rowHeight) - 5);
            if (day > 0 && pixel.green() >= pixel.blue() + 10) {
                EXPECT_EQ(highlighted, 0) << "two cells are highlighted";
                highlighted = day;
            }
        }
    }
    return highlighted;
}

qint16 MainWindowWorld::HighlightedDay() {
    ShowWindow();
    return HighlightedDayOf(main);
}

CalDate MainWindowWorld::SelectedDayAndMonth() const {
    qint16 year = 0, month = 0, day = 0;
    window->Calender1().GetDate(year, month, day);
    return CalDate{0, day, month};
}

void MainWindowWorld::ClickDay(qint16 day) {
    ShowWindow();
    const Calender& calender = main.Calender1();
    SurfaceWidget& view = main.CalenderView();
    const double rowHeight = (view.height() - calender.GridTop) / 5.0;
    const double columnWidth = view.width() / 7.0;
    for (int row = 1; row <= 5; ++row) {
        for (int column = 1; column <= 7; ++column) {
            if (calender.CellMap[row][column] == day) {
                const QPoint middle(static_cast<int>((column - 0.5) * columnWidth),
                                    static_cast<int>(calender.GridTop + (row - 0.5) * rowHeight));
                QTest::mouseClick(&view, Qt::LeftButton, {}, middle);
                return;
            }
        }
    }
    FAIL() << "day " << day << " is not in the grid";
}

void MainWindowWorld::WhenEditorOpens(std::function<void(frmEdit&)> act) {
    WhenModalOpens([act = std::move(act)](QWidget* dialog) {
        auto* editor = dynamic_cast<frmEdit*>(dialog);
        ASSERT_NE(editor, nullptr) << "the modal dialog is no date editor";
        act(*editor);
    });
}

}  // namespace kelvane::testing
