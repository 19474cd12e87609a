#pragma once

#include <QMap>
#include <QSet>
#include <QString>
#include <QStringList>

#include <vector>

namespace kelvane::cal {

// An option a command accepts: "--year" with a value, or a switch such as
// "--force". `Short` is an optional one-letter form such as "-o".
struct OptionSpec {
    QString Long;
    QString Short;
    bool TakesValue = false;
};

// One command's words after parsing.
struct Arguments {
    QStringList Positional;
    QMap<QString, QString> Values;  // by long name
    QSet<QString> Switches;         // by long name

    bool Has(const QString& name) const { return Switches.contains(name); }
    bool HasValue(const QString& name) const { return Values.contains(name); }
    QString Value(const QString& name) const { return Values.value(name); }
};

// Splits `words` into options and positional arguments. Options take their
// value as the next word or after "="; "--" ends the options, and "-" alone
// is a positional argument. False with the reason for an unknown option, a
// missing value or an option given twice. "--help" is always known.
bool ParseArguments(const QStringList& words, const std::vector<OptionSpec>& options,
                    Arguments& parsed, QString& error);

// A whole number in `low`..`high`, or false.
bool ParseWholeNumber(const QString& text, int low, int high, int& value);

}  // namespace kelvane::cal
