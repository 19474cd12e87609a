#pragma once

#include <QMap>
#include <QString>
#include <QStringList>

namespace kelvane::cal {

// Warnings of one kind, counted, with the line and the text of the first.
// A warning that names what it saw differs from event to event, so it is
// counted by its kind, which the plain warnings are on their own.
class WarningTally {
  public:
    void Add(const QString& warning, int line) { Add(warning, warning, line); }
    void Add(const QString& kind, const QString& warning, int line) {
        Entry& entry = entries_[kind];
        if (entry.Count++ == 0) {
            entry.Line = line;
            entry.Text = warning;
            order_ << kind;
        }
    }
    void Report(QStringList& warnings) const {
        for (const QString& kind : order_) {
            const Entry& entry = entries_[kind];
            QString text = QStringLiteral("line %1: %2").arg(entry.Line).arg(entry.Text);
            if (entry.Count > 1) {
                text += QStringLiteral(" (and %1 more like it)").arg(entry.Count - 1);
            }
            warnings << text;
        }
    }

  private:
    struct Entry {
        int Count = 0;
        int Line = 0;
        QString Text;
    };
    QMap<QString, Entry> entries_;
    QStringList order_;
};

}  // namespace kelvane::cal
