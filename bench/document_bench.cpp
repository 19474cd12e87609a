// Saving and loading a whole document through the File menu's commands: the
// month view on a real image, the temporary stores on disk and the calendar
// file written and read in full.
#include <QFileInfo>
#include <QTemporaryDir>

#include <benchmark/benchmark.h>

#include <memory>

#include "calendar/Calender.h"
#include "gui/FakePlatform.h"
#include "gui/ImageSurface.h"
#include "store/DocumentCommands.h"
#include "store/Store.h"

namespace kelvane {
namespace {

class NoWindow final : public DocumentWindow {
  public:
    void StartFileCommand() override {}
    void EndFileCommand() override {}
    void SetCaption(const QString&) override {}
    void ShowStatus(const QString&) override {}
    void ShowRecentMenu(const RecentMenu&) override {}
    bool ToolsShown() const override { return true; }
    void ToggleTools() override {}
    bool CalenderShown() const override { return true; }
    void ToggleCalender() override {}
    void DocumentReplaced() override {}
};

QString Text(int length, int seed) {
    QString text;
    while (text.size() < length) {
        text += QStringLiteral("word%1 ").arg(seed++ % 97);
    }
    return text.left(length);
}

// A note of 800 characters in lines of 78 and the breaks between them.
QString FullNote(int seed) {
    QString note;
    while (note.size() < NoteLength) {
        note += Text(78, seed++) + QStringLiteral("\r\n");
    }
    return note.left(NoteLength);
}

// Every date of the year with a title, 39 activities of 50-character
// descriptions and an 800-character note.
struct FullDocument {
    FullDocument()
        : platform(directory.path()), store(platform.Services), surface(Qt::lightGray, Qt::black) {
        platform.Clock.Set(2000, 3, 15, 9, 0);
        surface.Resize(960, 600);
        calender = std::make_unique<Calender>(store.module1, store.calender, surface);
        store.module1.AttachMonthView(calender.get());
        commands = std::make_unique<DocumentCommands>(store, *calender, window);
        store.appointments.InitAppointmentStore();
        store.diary.InitDiaryStore();
        for (qint16 month = 1; month <= 12; ++month) {
            for (qint16 day = 1; day <= store.module1.DaysInMonth[month]; ++day) {
                FillDate(month, day);
            }
        }
    }
    ~FullDocument() {
        store.appointments.CloseAppointmentStore();
        store.diary.CloseDiaryStore();
        store.module1.AttachMonthView(nullptr);
    }

    void FillDate(qint16 month, qint16 day) {
        calender->SetDate(2000, month, day);
        store.calender.CurrentEntry.Title = Text(60, day);
        const QString key = MakeDateKey(month, day);
        for (int i = 1; i <= 39; ++i) {
            Appointment& entry = store.appointments.AppointmentList[i];
            entry.Description = Text(50, i);
            entry.StartTime = ClockTime{static_cast<qint16>(i % 24), 15};
            entry.EndTime = ClockTime{static_cast<qint16>(i % 24), 45};
        }
        store.diary.NoteBuffer = FullNote(day);
        store.diary.SaveNote(key);
        store.appointments.SaveAppointments(key);
        calender->UpdateSelectedDate(false);
    }

    void SaveAs(const QString& fileName) {
        platform.FileDialog.Choose(fileName);
        platform.Messages.Answer(MessageAnswer::Yes);  // replace the file of the last round
        commands->FileSaveAs();
    }

    QTemporaryDir directory;
    FakePlatform platform;
    Store store;
    ImageSurface surface;
    NoWindow window;
    std::unique_ptr<Calender> calender;
    std::unique_ptr<DocumentCommands> commands;
};

void SaveFullDocument(benchmark::State& state) {
    FullDocument document;
    const QString fileName = document.directory.filePath(QStringLiteral("full.cal"));
    for (auto _ : state) {
        document.SaveAs(fileName);
    }
    state.counters["bytes"] = static_cast<double>(QFileInfo(fileName).size());
}
BENCHMARK(SaveFullDocument)->Unit(benchmark::kMillisecond);

void LoadFullDocument(benchmark::State& state) {
    FullDocument document;
    const QString fileName = document.directory.filePath(QStringLiteral("full.cal"));
    document.SaveAs(fileName);
    for (auto _ : state) {
        if (!document.commands->LoadFile(fileName)) {
            state.SkipWithError("the file did not load");
            break;
        }
    }
}
BENCHMARK(LoadFullDocument)->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace kelvane
