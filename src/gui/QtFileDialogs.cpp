#include "gui/QtFileDialogs.h"

#include <QFileDialog>

namespace kelvane {

QStringList QtNameFilters(const QString& filter) {
    const QStringList parts = filter.split(QLatin1Char('|'));
    QStringList filters;
    for (qsizetype i = 0; i + 1 < parts.size(); i += 2) {
        const QString& description = parts[i];
        QString pattern = parts[i + 1];
        pattern.replace(QLatin1String("*.*"), QLatin1String("*"));
        if (description.contains(QLatin1Char('('))) {
            // "All Files (*.*)" keeps its words; only the pattern Qt reads changes.
            filters << description.left(description.indexOf(QLatin1Char('('))) + QLatin1Char('(') +
                           pattern + QLatin1Char(')');
        } else {
            filters << description + QLatin1String(" (") + pattern + QLatin1Char(')');
        }
    }
    return filters;
}

QString QtFileDialogs::Show(const FileDialogRequest& request) {
    QFileDialog dialog(owner_.data(), request.Title);
    const bool saving = request.Kind == FileDialogKind::Save;
    dialog.setAcceptMode(saving ? QFileDialog::AcceptSave : QFileDialog::AcceptOpen);
    dialog.setFileMode(saving ? QFileDialog::AnyFile : QFileDialog::ExistingFile);
    dialog.setOption(QFileDialog::DontConfirmOverwrite);
    const QStringList filters = QtNameFilters(request.Filter);
    dialog.setNameFilters(filters);
    if (saving) {
        // A name typed without an extension gets the first filter's, as in "*.cal".
        const QString pattern = request.Filter.section(QLatin1Char('|'), 1, 1);
        if (pattern.startsWith(QLatin1String("*.")) && pattern.indexOf(QLatin1Char('*'), 1) < 0 &&
            !pattern.contains(QLatin1Char(';'))) {
            dialog.setDefaultSuffix(pattern.mid(2));
        }
    }
    if (!request.FileName.isEmpty()) {
        dialog.selectFile(request.FileName);
    }
    if (dialog.exec() != QDialog::Accepted || dialog.selectedFiles().isEmpty()) {
        return QString();
    }
    return dialog.selectedFiles().constFirst();
}

}  // namespace kelvane
