#include "store/RecentFiles.h"

#include <algorithm>

#include "calfile/Conversions.h"

namespace kelvane {

namespace {

constexpr int kLongestShownName = 20;
constexpr int kShortenedNameTail = 16;

QString ShownName(const QString& fileName, const FileNameRules& rules) {
    const QString name = BareFileName(fileName, rules);
    if (name.size() > kLongestShownName) {
        return QStringLiteral("...") + name.right(kShortenedNameTail);
    }
    return name;
}

}  // namespace

FileNameRules WindowsFileNameRules() {
    return FileNameRules{true, QStringLiteral("\\/")};
}

FileNameRules NativeFileNameRules() {
#ifdef Q_OS_WIN
    return WindowsFileNameRules();
#else
    return FileNameRules{false, QStringLiteral("/")};
#endif
}

QString BareFileName(const QString& fileName, const FileNameRules& rules) {
    qsizetype last = -1;
    for (const QChar separator : rules.Separators) {
        last = std::max(last, fileName.lastIndexOf(separator));
    }
    return fileName.mid(last + 1);
}

void RecentFileList::Add(const QString& fileName) {
    const QString name = rules_.IgnoreCase ? fileName.toUpper() : fileName;
    int found = RecentFileCount;
    for (int index = 1; index <= RecentFileCount; ++index) {
        if (RecentFiles[index] == name) {
            found = index;
            break;
        }
    }
    for (int index = found; index >= 2; --index) {
        RecentFiles[index] = RecentFiles[index - 1];
    }
    RecentFiles[1] = name;
}

RecentMenu RecentFileList::Menu() const {
    RecentMenu menu;
    for (int index = 1; index <= RecentFileCount; ++index) {
        RecentMenuItem& item = menu.Items[index];
        if (Trim(RecentFiles[index]).isEmpty()) {
            item = RecentMenuItem{};
            continue;
        }
        item.Caption =
            QString::number(index) + QLatin1Char(')') + ShownName(RecentFiles[index], rules_);
        item.Visible = true;
        menu.SeparatorVisible = true;
    }
    return menu;
}

void RecentFileList::Clear() {
    RecentFiles.Fill(QString());
}

}  // namespace kelvane
