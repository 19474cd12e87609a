#include "store/DocumentCommands.h"

#include <QBuffer>
#include <QDir>
#include <QFile>
#include <QFileInfo>

#include "calfile/CalendarFileOnDisk.h"
#include "calfile/LineReader.h"
#include "calfile/LineWriter.h"
#include "calfile/ReadBack.h"
#include "calfile/ReplacingFile.h"
#include "store/DocumentFile.h"
#include "store/OutputFile.h"
#include "store/StoreReadAhead.h"
#include "store/WorkingCopiesKept.h"

namespace kelvane {

namespace {

const QString kFileFilter = QStringLiteral("Calender Files (*.cal)|*.cal|All Files (*.*)|*.*");
const QString kCannotCreate = QStringLiteral("Could not create file - try different filename");
const QString kCannotKeepUnsaved = QStringLiteral(
    "The unsaved changes could not be kept in a file of their own,\r"
    "so the file was not opened: use Save As first.");

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
        Load(fileName, true);
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

// A save that fails says why, under the usual first line.
bool DocumentCommands::SaveDocumentAs(const QString& fileName) {
    QString error;
    if (!WriteDocumentFile(fileName, error)) {
        window_.ShowStatus(kCannotCreate);
        ShowCritical(error.isEmpty() ? kCannotCreate : kCannotCreate + QLatin1Char('\r') + error);
        return false;
    }
    return true;
}

// The whole document, or nothing: a failed write leaves any old file whole.
bool DocumentCommands::WriteDocumentFile(const QString& fileName, QString& error) {
    OutputFile file(store_.module1.Files, store_.module1.Services().Directory.UserDataPath());
    if (file.OpenForOutput(fileName) <= 0) {
        error = file.ErrorString();
        return false;
    }
    WriteDocumentContent(
        file.Device(), [this](const QString& text) { window_.ShowStatus(text); }, nullptr);
    if (!file.Close()) {
        error = file.ErrorString();
        return false;
    }
    return true;
}

QString DocumentCommands::SaveUnsavedCopy(const CalendarFileDate* openEdit) {
    const QByteArray content = DocumentContent([](const QString&) {}, openEdit);
    if (IsLastCopy(content)) {
        AddRecentFile(lastCopy_->FileName);
        return lastCopy_->FileName;
    }
    const ProgramDirectory& directory = store_.module1.Services().Directory;
    const QStringList folders =
        QStringList{directory.UserDataPath(), directory.Path()} + directory.SpareFolders();
    for (const QString& folder : folders) {
        QDir().mkpath(folder);  // the user's data folder is made by its first copy
        const QString fileName = UnsavedCopyName(folder);
        QString error;
        if (ReplaceFileContent(fileName, content, error)) {
            lastCopy_ = UnsavedCopy{fileName, content};
            AddRecentFile(fileName);
            return fileName;
        }
    }
    return QString();
}

// The whole document as a calendar file's bytes.
QByteArray DocumentCommands::DocumentContent(const StatusSink& status,
                                             const CalendarFileDate* openEdit) {
    QByteArray content;
    QBuffer buffer(&content);
    buffer.open(QIODevice::WriteOnly);
    WriteDocumentContent(buffer, status, openEdit);
    return content;
}

// Writes the whole document to `device`. The walk over every date moves
// neither the person's selection nor the working copies, which a session's end
// may find held by a command; the lines reach the device before both are put
// back.
void DocumentCommands::WriteDocumentContent(QIODevice& device, const StatusSink& status,
                                            const CalendarFileDate* openEdit) {
    const WorkingCopiesKept working(store_);
    const SelectionKept selection(monthView_);
    const StoreReadAhead readAhead(store_);
    LineWriter out(device);
    const ViewFlags flags{window_.ToolsShown(), window_.CalenderShown()};
    WriteDocument(store_, monthView_, flags, out, status, openEdit);
}

// True when the last copy holds exactly this content and is still there.
bool DocumentCommands::IsLastCopy(const QByteArray& content) const {
    if (!lastCopy_ || lastCopy_->Content != content) {
        return false;
    }
    return FileHolds(lastCopy_->FileName, content);
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

bool DocumentCommands::LoadFile(QString fileName) {
    return Load(fileName, false);
}

// `keepUnsaved`: unsaved changes go to a copy of their own before the file is
// put into the document; without a copy the file is not loaded.
bool DocumentCommands::Load(const QString& fileName, bool keepUnsaved) {
    CalendarFileContent content;
    if (!ReadWholeFile(fileName, content)) {
        return false;
    }
    QString keptIn;
    if (keepUnsaved && store_.module1.CalendarDirty) {
        keptIn = SaveUnsavedCopy();
        if (keptIn.isEmpty()) {
            ShowCritical(kCannotKeepUnsaved);
            return false;
        }
    }
    PutIntoDocument(content);
    FinishLoad(fileName, content.Settings);
    if (!keptIn.isEmpty()) {
        AddRecentFile(keptIn);
        window_.ShowStatus(QStringLiteral("Successful Load - unsaved changes kept in ") +
                           BareFileName(keptIn, recent_.Rules()) + QStringLiteral(" (File > 1)"));
    }
    return true;
}

// Reads the file into `content`, or says why it cannot be loaded.
bool DocumentCommands::ReadWholeFile(const QString& fileName, CalendarFileContent& content) {
    if (!FileExists(fileName)) {
        ShowCritical(QStringLiteral("File dosen't exist"));
        return false;
    }
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
    return true;
}

void DocumentCommands::PutIntoDocument(const CalendarFileContent& content) {
    // The dates are stored one by one; the month is drawn once, at the end.
    const RedrawsHeld held(monthView_);
    {
        // The walk selects every date it fills; the person's selection comes back.
        const SelectionKept kept(monthView_);
        ApplyDocument(store_, monthView_, content,
                      [this](const QString& text) { window_.ShowStatus(text); });
    }
    window_.ShowStatus(QStringLiteral("Successful Load"));
    monthView_.Display();
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

// The program's folder may let the list be rewritten but no new file be made.
void DocumentCommands::SaveRecentList() {
    OutputFile file(store_.module1.Files, store_.module1.Services().Directory.UserDataPath());
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
