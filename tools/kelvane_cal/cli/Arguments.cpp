#include "kelvane_cal/cli/Arguments.h"

namespace kelvane::cal {

namespace {

const OptionSpec kHelpOption{QStringLiteral("--help"), QStringLiteral("-h"), false};

const OptionSpec* FindOption(const QString& name, const std::vector<OptionSpec>& options) {
    if (name == kHelpOption.Long || name == kHelpOption.Short) {
        return &kHelpOption;
    }
    for (const OptionSpec& option : options) {
        if (name == option.Long || (!option.Short.isEmpty() && name == option.Short)) {
            return &option;
        }
    }
    return nullptr;
}

bool IsOptionWord(const QString& word) {
    return word.size() > 1 && word.startsWith(QLatin1Char('-'));
}

}  // namespace

bool ParseArguments(const QStringList& words, const std::vector<OptionSpec>& options,
                    Arguments& parsed, QString& error) {
    bool optionsEnded = false;
    for (qsizetype i = 0; i < words.size(); ++i) {
        const QString& word = words[i];
        if (optionsEnded || !IsOptionWord(word)) {
            parsed.Positional << word;
            continue;
        }
        if (word == QStringLiteral("--")) {
            optionsEnded = true;
            continue;
        }
        const qsizetype equals = word.startsWith(QStringLiteral("--")) ? word.indexOf('=') : -1;
        const QString name = equals < 0 ? word : word.left(equals);
        const OptionSpec* option = FindOption(name, options);
        if (option == nullptr) {
            error = QStringLiteral("unknown option '%1'").arg(name);
            return false;
        }
        if (parsed.Switches.contains(option->Long) || parsed.Values.contains(option->Long)) {
            error = QStringLiteral("%1 is given more than once").arg(option->Long);
            return false;
        }
        if (!option->TakesValue) {
            if (equals >= 0) {
                error = QStringLiteral("%1 takes no value").arg(option->Long);
                return false;
            }
            parsed.Switches.insert(option->Long);
            continue;
        }
        if (equals >= 0) {
            parsed.Values.insert(option->Long, word.mid(equals + 1));
        } else if (i + 1 < words.size()) {
            parsed.Values.insert(option->Long, words[++i]);
        } else {
            error = QStringLiteral("%1 needs a value").arg(option->Long);
            return false;
        }
    }
    return true;
}

bool ParseWholeNumber(const QString& text, int low, int high, int& value) {
    bool ok = false;
    const int number = text.trimmed().toInt(&ok);
    if (!ok || number < low || number > high) {
        return false;
    }
    value = number;
    return true;
}

}  // namespace kelvane::cal
