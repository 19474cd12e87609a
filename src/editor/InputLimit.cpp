#include "editor/InputLimit.h"

#include <QScopedValueRollback>
#include <QTextCursor>
#include <QTextDocument>
#include <QValidator>

#include <algorithm>

#include "calfile/Graphemes.h"

namespace kelvane {

namespace {

qsizetype CodeUnits(QStringView text) {
    return text.size();
}

// Takes a line box's change whole when it fits, and otherwise keeps what fits
// of the text that went in. A change of which nothing fits is refused, so the
// box's undo history stays as it was.
class LengthValidator final : public QValidator {
  public:
    LengthValidator(qsizetype limit, QObject* parent) : QValidator(parent), limit_(limit) {}

    // The box's text now, however it came there: the next change is compared
    // with it.
    void Remember(const QString& text) { accepted_ = text; }

    State validate(QString& input, int& pos) const override {
        if (input.size() <= limit_) {
            accepted_ = input;
            return Acceptable;
        }
        const Insertion insertion = FindInsertion(accepted_, input);
        const qsizetype kept = FittingLength(input, insertion, limit_, CodeUnits);
        if (kept == 0) {
            return Invalid;
        }
        input.remove(insertion.Start + kept, insertion.Length - kept);
        pos = static_cast<int>(insertion.Start + kept);
        accepted_ = input;
        return Acceptable;
    }

  private:
    qsizetype limit_;
    // The text last taken: what the next change is compared with.
    mutable QString accepted_;
};

// Watches a text box's document and takes back what went in past the limit,
// in the same undo step as the input itself, so that undo never brings it back.
class TextBoxLimit final : public QObject {
  public:
    TextBoxLimit(QPlainTextEdit* box, qsizetype limit, StoredLength length)
        : QObject(box), box_(box), limit_(limit), length_(std::move(length)) {
        accepted_ = box_->toPlainText();
        connect(box_->document(), &QTextDocument::contentsChanged, this, [this] { TextChanged(); });
    }

  private:
    void TextChanged() {
        if (takingBack_) {
            return;
        }
        const QString after = box_->toPlainText();
        if (length_(after) > limit_) {
            const Insertion insertion = FindInsertion(accepted_, after);
            TakeBack(insertion.Start + FittingLength(after, insertion, limit_, length_),
                     insertion.Start + insertion.Length);
        }
        accepted_ = box_->toPlainText();
    }

    void TakeBack(qsizetype from, qsizetype to) {
        if (from >= to) {
            return;
        }
        const QScopedValueRollback busy(takingBack_, true);
        QTextCursor cursor(box_->document());
        cursor.joinPreviousEditBlock();
        cursor.setPosition(static_cast<int>(from));
        cursor.setPosition(static_cast<int>(to), QTextCursor::KeepAnchor);
        cursor.removeSelectedText();
        cursor.endEditBlock();
    }

    QPlainTextEdit* box_;
    qsizetype limit_;
    StoredLength length_;
    QString accepted_;
    bool takingBack_ = false;
};

}  // namespace

Insertion FindInsertion(QStringView before, QStringView after) {
    const qsizetype shorter = std::min(before.size(), after.size());
    qsizetype start = 0;
    while (start < shorter && before[start] == after[start]) {
        ++start;
    }
    if (start > 0 && after[start - 1].isHighSurrogate()) {
        --start;
    }
    qsizetype tail = 0;
    while (tail < shorter - start &&
           before[before.size() - 1 - tail] == after[after.size() - 1 - tail]) {
        ++tail;
    }
    if (tail > 0 && after[after.size() - tail].isLowSurrogate()) {
        --tail;
    }
    return {start, after.size() - start - tail};
}

qsizetype FittingLength(QStringView after, const Insertion& insertion, qsizetype limit,
                        const StoredLength& length) {
    const QStringView inserted = after.mid(insertion.Start, insertion.Length);
    qsizetype used = length(after) - length(inserted);
    qsizetype kept = 0;
    for (const qsizetype end : GraphemeEnds(inserted)) {
        used += length(inserted.mid(kept, end - kept));
        if (used > limit) {
            break;
        }
        kept = end;
    }
    return kept;
}

// The validator sees only what is typed or pasted; a text the dialog puts in
// the box (a loaded title, a chosen entry) is told to it too.
void LimitInput(QLineEdit* box, qsizetype limit) {
    auto* validator = new LengthValidator(limit, box);
    validator->Remember(box->text());
    QObject::connect(box, &QLineEdit::textChanged, validator,
                     [validator](const QString& text) { validator->Remember(text); });
    box->setValidator(validator);
}

void LimitInput(QPlainTextEdit* box, qsizetype limit, StoredLength length) {
    new TextBoxLimit(box, limit, std::move(length));
}

}  // namespace kelvane
