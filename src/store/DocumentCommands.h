#pragma once

#include <QByteArray>
#include <QIODevice>
#include <QString>

#include <optional>

#include "calfile/CalendarFile.h"
#include "store/DocumentFile.h"
#include "store/DocumentWindow.h"
#include "store/MonthViewControl.h"
#include "store/RecentFiles.h"
#include "store/Store.h"

namespace kelvane {

// The File menu's work on the open document: New, Open, Save As, the recent
// files with their list file, and loading a calendar file. The main window
// calls it from its menu handlers and gives it its month view.
// True when no file of that name exists, or when the user answers Yes to
// "File exists - do you wish to replace" (titled "Watch out ***").
bool ConfirmReplace(MessageBoxes& messages, const QString& fileName);

class DocumentCommands {
  public:
    DocumentCommands(Store& store, MonthViewControl& monthView, DocumentWindow& window,
                     FileNameRules rules = NativeFileNameRules());
    DocumentCommands(const DocumentCommands&) = delete;
    DocumentCommands& operator=(const DocumentCommands&) = delete;

    // File, New: a fresh document after asking about unsaved changes.
    void FileNew();
    // File, Open: a file chosen in the Open dialog is loaded; no question about
    // unsaved changes on this path. The load goes into the open document, so
    // unsaved changes are first kept in a copy of their own (SaveUnsavedCopy),
    // which is then the newest recent file; when no copy can be made the file
    // is not loaded.
    void FileOpen();
    // File, Save As: the whole document into a file chosen in the Save dialog.
    void FileSaveAs();
    // A recent-file item (1..4) of the File menu.
    void FileRecent(int index);

    // Writes the open document, without a question, a message or a word in the
    // status bar, to a new file "unsaved-YYYY-MM-DD-hhmmss.cal" (the system's
    // date and time) in the user's data folder, or in the first that can take
    // it of the program directory and the spare folders (the home folder), and
    // makes it the newest recent file. A copy
    // counts once it has been read back whole; the same document is copied
    // once. `openEdit`, when given, is a date being edited, as OK would keep it.
    // Returns the file's name, or "" when no folder could take a whole copy.
    QString SaveUnsavedCopy(const CalendarFileDate* openEdit = nullptr);

    // Reads a whole calendar file into the open document. A missing,
    // unrecognised or damaged file changes nothing and says so. True when
    // loaded. The name is taken by value: it may be one of the recent files,
    // which the load itself reorders.
    bool LoadFile(QString fileName);

    void AddRecentFile(const QString& fileName);
    // Hands the four recent-file items to the window.
    void RefreshRecentMenu();
    // Reads the recent files from "~tmpFileList" beside the program; a missing
    // or unreadable list gives an empty one.
    void LoadRecentList();
    // Writes the four recent files, one per line, into "~tmpFileList".
    void SaveRecentList();
    QString RecentListFileName() const;

    // True when the file can be opened for reading.
    static bool FileExists(const QString& fileName);

    const RecentFileList& RecentFiles() const { return recent_; }

  private:
    // The last copy of unsaved changes and what it holds.
    struct UnsavedCopy {
        QString FileName;
        QByteArray Content;
    };

    bool Ask(const QString& text, const QString& title);
    void ShowCritical(const QString& text);
    bool Load(const QString& fileName, bool keepUnsaved);
    bool SaveDocumentAs(const QString& fileName);
    bool WriteDocumentFile(const QString& fileName, QString& error);
    QByteArray DocumentContent(const StatusSink& status, const CalendarFileDate* openEdit);
    void WriteDocumentContent(QIODevice& device, const StatusSink& status,
                              const CalendarFileDate* openEdit);
    bool IsLastCopy(const QByteArray& content) const;
    QString UnsavedCopyName(const QString& folder) const;
    void FinishSave(const QString& fileName);
    bool ReadWholeFile(const QString& fileName, CalendarFileContent& content);
    void PutIntoDocument(const CalendarFileContent& content);
    void FinishLoad(const QString& fileName, const CalendarFileSettings& settings);
    void ShowDocumentName(const QString& fileName);

    Store& store_;
    MonthViewControl& monthView_;
    DocumentWindow& window_;
    RecentFileList recent_;
    std::optional<UnsavedCopy> lastCopy_;
};

}  // namespace kelvane
