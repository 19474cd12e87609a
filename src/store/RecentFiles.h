#pragma once

#include <QString>

#include "calfile/OneBased.h"
#include "calfile/Records.h"

namespace kelvane {

// How the file system spells file names: whether two names that differ only
// in letter case name the same file, and which characters separate folders.
struct FileNameRules {
    bool IgnoreCase = false;
    QString Separators;
};

// The rules of the system the program runs on: on Windows names ignore case
// and both "\" and "/" separate folders; elsewhere case counts and "/" does.
FileNameRules NativeFileNameRules();
// Windows' rules, wherever the program runs.
FileNameRules WindowsFileNameRules();

// The part of a file name after its last folder separator.
QString BareFileName(const QString& fileName, const FileNameRules& rules);

// One recent-file item of the File menu.
struct RecentMenuItem {
    QString Caption;
    bool Visible = false;

    friend bool operator==(const RecentMenuItem&, const RecentMenuItem&) = default;
};

// The four recent-file items (mnufileMRU) and the separator under them (mnuFileBar2).
struct RecentMenu {
    OneBased<RecentMenuItem, RecentFileCount> Items;
    bool SeparatorVisible = false;

    friend bool operator==(const RecentMenu&, const RecentMenu&) = default;
};

// The four most recently saved or loaded calendar files, the newest first.
class RecentFileList {
  public:
    explicit RecentFileList(FileNameRules rules = NativeFileNameRules())
        : rules_(std::move(rules)) {}

    // Entries 1..4; an empty entry is a free place.
    OneBased<QString, RecentFileCount> RecentFiles;

    // Puts a name at the top. A name already listed moves up, a new one pushes
    // the oldest out. Where names ignore case they are kept in upper case;
    // elsewhere upper case would name another file, so they keep their case.
    void Add(const QString& fileName);
    // The menu items for the entries: "1)MYCAL.CAL", the bare name shortened to
    // "..." and its last 16 characters when longer than 20.
    RecentMenu Menu() const;
    void Clear();

    const FileNameRules& Rules() const { return rules_; }

  private:
    FileNameRules rules_;
};

}  // namespace kelvane
