#pragma once

#include <QString>

namespace kelvane {

enum class FileDialogKind { Open, Save };

// One common file dialog as the user sees it. The filter lists pairs of a
// description and a pattern separated by "|": "Calender Files (*.cal)|*.cal".
struct FileDialogRequest {
    FileDialogKind Kind = FileDialogKind::Open;
    QString Title;
    QString FileName;
    QString Filter;

    friend bool operator==(const FileDialogRequest&, const FileDialogRequest&) = default;
};

// The common file dialog for opening and saving. It never asks about
// replacing a file: the program asks that itself.
class FileDialogs {
  public:
    virtual ~FileDialogs() = default;

    // Shows the dialog and waits; the chosen file's full name, or an empty text
    // when the user cancels.
    virtual QString Show(const FileDialogRequest& request) = 0;
};

}  // namespace kelvane
