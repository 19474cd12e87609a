#include "store/DocumentCommands.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include "store/CalendarFileOnDisk.h"
#include "store/DocumentFile.h"
#include "store/LineReader.h"
#include "store/LineWriter.h"
#include "store/OutputFile.h"
#include "store/WorkingCopiesKept.h"

namespace kelvane {

namespace {

const QString kFileFilter = QStringLiteral("Calender Files (*.cal)|*.cal|All Files (*.*)|*.*");
const QString kCannotCreate = QStringLiteral("Could not create file - try different filename");

// Calls the window's end-of-command hook however the command ends.
class FileCommandScope {
  public:
    explicit FileCommandScope(DocumentWindow& window) : window_(window) {
        window_.StartFileCommand();
    }
    ~FileCommandScope() { window_.EndFileCommand(); }
    FileCommandScope(const FileCommandScope&) = delete;
    FileCommandScope& operator=(const FileCommandScope&) = delete;

  private:
    DocumentWindow& window_;
};

// Four file names of any length the system allows.
constexpr qint64 kLargestRecentList = 64 * 1024;

bool ReadRecentListBytes(const QString& fileName, QByteArray& bytes) {
    QFile file(fileName);
    if (!file.open(QIODevice::ReadOnly) || file.size() > kLargestRecentList) {
        return false;
    }
    bytes = file.readAll();
    return file.error() == QFileDevice::NoError;
}

}  // namespace

bool ConfirmReplace(MessageBoxes& messages, const QString& fileName) {
    return !DocumentCommands::FileExists(fileName) ||
           messages.Show(QStringLiteral("File exists - do you wish to replace"),
                         MessageButtons::YesNo, MessageIcon::Exclamation,
                         QStringLiteral("Watch out ***")) == MessageAnswer::Yes;
}

DocumentCommands::DocumentCommands(Store& store, MonthViewControl& monthView,
                                   DocumentWindow& window, FileNameRules rules)
    : store_(store), monthView_(monthView), window_(window), recent_(std::move(rules)) {}

bool DocumentCommands::Ask(const QString& text, const QString& title) {
    return store_.module1.Services().Messages.Show(
               text, MessageButtons::YesNo, MessageIcon::Exclamation, title) == MessageAnswer::Yes;
}

void DocumentCommands::ShowCritical(const QString& text) {
    store_.module1.Services().Messages.Show(text, MessageButtons::Ok, MessageIcon::Critical);
}

void DocumentCommands::FileNew() {
    FileCommandScope scope(window_);
    if (store_.module1.CalendarDirty &&
        !Ask(QStringLiteral("Are you sure - changes have been made"),
             QStringLiteral("NEW DOCUMENT"))) {
        return;
    }
    store_.diary.CloseDiaryStore();
    store_.diary.InitDiaryStore();
    BuildColourList(store_.calender.ColourList);

    monthView_.SetFont(QStringLiteral("Arial"), 9);
    qint16 yy = 0;
    qint16 dd = 0;
    monthView_.InitializeVariables(yy, dd, true);
    monthView_.Display();

    store_.appointments.CloseAppointmentStore();
    store_.appointments.InitAppointmentStore();

    window_.SetCaption(QStringLiteral("Kelvane"));
    window_.DocumentReplaced();
    store_.module1.CalendarDirty = false;
}

void DocumentCommands::FileOpen() {
    FileCommandScope scope(window_);
    const QString fileName = store_.module1.Services().FileDialog.Show(
        {FileDialogKind::Open, QStringLiteral("Open"), QString(), kFileFilter});
    if (!fileName.isEmpty()) {
        LoadFile(fileName);
    }
}

void DocumentCommands::FileSaveAs() {
    FileCommandScope scope(window_);
    const QString fileName = store_.module1.Services().FileDialog.Show(
        {FileDialogKind::Save, QStringLiteral("Save Calender"), QString(), kFileFilter});
    if (fileName.isEmpty()) {
        return;
    }
    if (!ConfirmReplace(store_.module1.Services().Messages, fileName)) {
        return;
    }
    if (SaveDocumentAs(fileName)) {
        FinishSave(fileName);
    }
}

bool DocumentCommands::SaveDocumentAs(const QString& fileName) {
    if (!WriteDocumentFile(fileName)) {
        ShowCritical(kCannotCreate);
        return false;
    }
    return true;
}

// The whole document, or nothing: a failed write leaves any old file whole.
bool DocumentCommands::WriteDocumentFile(const QString& fileName) {
    OutputFile file(store_.module1.Files);
    if (file.OpenForOutput(fileName) <= 0) {
        return false;
    }
    LineWriter out(file.Device());
    const ViewFlags flags{window_.ToolsShown(), window_.CalenderShown()};
    {
        // The walk over every date must not move the person's selection.
        const SelectionKept kept(monthView_);
        WriteDocument(store_, monthView_, flags, out,
                      [this](const QString& text) { window_.ShowStatus(text); });
    }
    return out.Ok() && file.Close();
}

QString DocumentCommands::SaveUnsavedCopy() {
    // A session may end while a command holds the working copies.
    const WorkingCopiesKept kept(store_);
    const Platform& services = store_.module1.Services();
    for (const QString& folder : {services.Directory.UserDataPath(), services.Directory.Path()}) {
        const QString fileName = UnsavedCopyName(folder);
        if (WriteDocumentFile(fileName)) {
            AddRecentFile(fileName);
            return fileName;
        }
    }
    return QString();
}

// "unsaved-2026-11-23-174500.cal" from the clock's "11-23-2026" and
// "17:45:00"; "-2", "-3" and so on follow when copies were made that second.
QString DocumentCommands::UnsavedCopyName(const QString& folder) const {
    const SystemClock& clock = store_.module1.Services().Clock;
    QString date = clock.DateText();
    QString time = clock.TimeText();
    if (clock.DateText() != date) {  // midnight came between the two
        date = clock.DateText();
        time = clock.TimeText();
    }
    const QString stamp = date.right(4) + QLatin1Char('-') + date.left(5) + QLatin1Char('-') +
                          time.left(2) + time.mid(3, 2) + time.mid(6, 2);
    const QDir directory(folder);
    QString name = directory.filePath(QStringLiteral("unsaved-%1.cal").arg(stamp));
    for (int copy = 2; QFileInfo::exists(name); ++copy) {
        name = directory.filePath(QStringLiteral("unsaved-%1-%2.cal").arg(stamp).arg(copy));
    }
    return QDir::toNativeSeparators(name);
}

void DocumentCommands::FinishSave(const QString& fileName) {
    AddRecentFile(fileName);
    store_.module1.CalendarDirty = false;
    ShowDocumentName(fileName);
    window_.ShowStatus(QStringLiteral("Successful Save"));
}

void DocumentCommands::FileRecent(int index) {
    if (!OneBased<QString, RecentFileCount>::Contains(index)) {
        return;
    }
    FileCommandScope scope(window_);
    if (store_.module1.CalendarDirty &&
        !Ask(QStringLiteral("Changes have been made to document - proceed"),
             QStringLiteral("oops!"))) {
        return;
    }
    LoadFile(recent_.RecentFiles[index]);
}

bool DocumentCommands::LoadFile(const QString& fileName) {
    if (!FileExists(fileName)) {
        ShowCritical(QStringLiteral("File dosen't exist"));
        return false;
    }
    CalendarFileContent content;
    const CalendarFileReport report = ReadCalendarFileNamed(fileName, content);
    if (report.Status == CalendarFileStatus::Unrecognized) {
        ShowCritical(QStringLiteral("Don't recognize file"));
        return false;
    }
    if (report.Status == CalendarFileStatus::Damaged) {
        ShowCritical(QStringLiteral("File is damaged - line ") +
                     QString::number(report.DamagedLine));
        return false;
    }

    // The dates are stored one by one; the month is drawn once, at the end.
    monthView_.HoldRedraws(true);
    {
        // The walk selects every date it fills; the person's selection comes back.
        const SelectionKept kept(monthView_);
        ApplyDocument(store_, monthView_, content,
                      [this](const QString& text) { window_.ShowStatus(text); });
    }
    window_.ShowStatus(QStringLiteral("Successful Load"));
    monthView_.Display();
    monthView_.HoldRedraws(false);
    FinishLoad(fileName, content.Settings);
    return true;
}

void DocumentCommands::FinishLoad(const QString& fileName, const CalendarFileSettings& settings) {
    AddRecentFile(fileName);
    store_.module1.CalendarDirty = false;
    ShowDocumentName(fileName);
    if (settings.ToolsShown != window_.ToolsShown()) {
        window_.ToggleTools();
    }
    if (settings.CalenderShown != window_.CalenderShown()) {
        window_.ToggleCalender();
    }
    window_.DocumentReplaced();
}

void DocumentCommands::ShowDocumentName(const QString& fileName) {
    window_.SetCaption(QStringLiteral("Kelvane - ") + BareFileName(fileName, recent_.Rules()));
}

void DocumentCommands::AddRecentFile(const QString& fileName) {
    recent_.Add(fileName);
    RefreshRecentMenu();
}

void DocumentCommands::RefreshRecentMenu() {
    window_.ShowRecentMenu(recent_.Menu());
}

QString DocumentCommands::RecentListFileName() const {
    return store_.module1.AppDirectory() + QStringLiteral("~tmpFileList");
}

void DocumentCommands::LoadRecentList() {
    recent_.Clear();
    QByteArray bytes;
    if (FileExists(RecentListFileName()) && ReadRecentListBytes(RecentListFileName(), bytes)) {
        LineReader in(bytes);
        for (int index = 1; index <= RecentFileCount; ++index) {
            QString name;
            if (!in.ReadLine(name)) {
                break;
            }
            recent_.RecentFiles[index] = name;
        }
    }
    RefreshRecentMenu();
}

void DocumentCommands::SaveRecentList() {
    OutputFile file(store_.module1.Files);
    if (file.OpenForOutput(RecentListFileName()) <= 0) {
        return;
    }
    LineWriter out(file.Device());
    for (const QString& name : recent_.RecentFiles) {
        out.WriteText(name);
    }
    if (out.Ok()) {
        file.Close();
    }
}

// Regular files only: a folder holds no calendar, and opening a pipe or a
// device could wait for ever.
bool DocumentCommands::FileExists(const QString& fileName) {
    if (fileName.isEmpty() || !QFileInfo(fileName).isFile()) {
        return false;
    }
    QFile file(fileName);
    return file.open(QIODevice::ReadOnly);
}

}  // namespace kelvane
