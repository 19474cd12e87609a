#include "report/usrDocViewer.h"

#include <QFileInfo>
#include <QPlainTextEdit>
#include <QStringList>
#include <QVBoxLayout>

#include <cmath>

#include "calfile/Conversions.h"
#include "store/Utf16Records.h"

namespace kelvane {

namespace {

const QString kOverflowPrefix = QStringLiteral("~tmpTXT");
constexpr int kNameLetters = 10;
constexpr int kNameTriesPerRound = 10;

}  // namespace

usrDocViewer::usrDocViewer(Module1& module1, QWidget* parent)
    : QWidget(parent),
      module1_(module1),
      txtDocument_(new QPlainTextEdit(this)),
      memoryLimit_(MemoryLines) {
    txtDocument_->setObjectName(QStringLiteral("txtDocument"));
    txtDocument_->setReadOnly(true);
    SetSpokenName(QStringLiteral("Report"));
    // The box covers the whole control at every size.
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    layout->addWidget(txtDocument_);
}

usrDocViewer::~usrDocViewer() {
    Terminate();
}

QWidget* usrDocViewer::TextBox() const {
    return txtDocument_;
}

// A screen reader meets the report by this name, on the viewer and its box.
void usrDocViewer::SetSpokenName(const QString& name) {
    setAccessibleName(name);
    txtDocument_->setAccessibleName(name);
}

bool usrDocViewer::Initialize() {
    return true;
}

void usrDocViewer::Terminate() {
    if (overflowFileNumber_ == 0) {
        return;
    }
    CloseNumbered(overflowFile_, overflowFileNumber_, module1_.Files);
    overflowFile_.CloseAndRemove();
    overflowFileNumber_ = 0;
}

bool usrDocViewer::AddLine(const QString& strA) {
    if (lineCount_ >= MostLines) {
        return false;
    }
    const bool stored = StoreLine(static_cast<qint16>(lineCount_ + 1), strA);
    ++lineCount_;
    return stored;
}

QString usrDocViewer::GetLine(qint16 intLineNum) const {
    if (intLineNum < 1 || intLineNum > lineCount_) {
        return QString();
    }
    if (intLineNum <= memoryLimit_) {
        return lines_[intLineNum].Value();
    }
    QByteArray record;
    if (overflowFileNumber_ == 0 || !overflowFile_.Read(intLineNum - memoryLimit_, 1, record)) {
        return QString();
    }
    return DecodeRecordText(record);
}

void usrDocViewer::ClearLines() {
    lineCount_ = 0;
}

void usrDocViewer::RefreshDisplay() {
    // The temporary file is complete on disk whenever the box shows it.
    overflowFile_.Flush();
    // Built whole and set once: setting the box line by line is slow.
    QStringList shown;
    shown.reserve(lineCount_);
    // An int counter, so that a count of MostLines cannot wrap it.
    for (int i = 1; i <= lineCount_; ++i) {
        shown.append(Trim(GetLine(static_cast<qint16>(i))));
    }
    txtDocument_->setPlainText(shown.join(QLatin1Char('\n')));
}

bool usrDocViewer::StoreLine(qint16 lineNumber, const QString& text) {
    lineBuffer_ = text;
    if (lineNumber <= memoryLimit_) {
        lines_[lineNumber] = lineBuffer_;
        return true;
    }
    if (overflowFileNumber_ == 0 && !OpenOverflowFile()) {
        return false;
    }
    return overflowFile_.Write(lineNumber - memoryLimit_, EncodeRecordText(lineBuffer_.Value()));
}

bool usrDocViewer::OpenOverflowFile() {
    // A name once chosen is kept, so a later overflow reuses it.
    if (overflowFilePath_.isEmpty()) {
        overflowFilePath_ = FreeOverflowPath();
    }
    overflowFileNumber_ = OpenNumbered(overflowFile_, overflowFilePath_, module1_.Files);
    return overflowFileNumber_ != 0;
}

QString usrDocViewer::FreeOverflowPath() const {
    const QString base = module1_.AppDirectory() + kOverflowPrefix;
    int tries = 0;
    for (;;) {
        const QString candidate = base + RandomLetters(kNameLetters);
        if (!QFileInfo::exists(candidate)) {
            return candidate;
        }
        // Ten taken names end a round, not the search: another round starts,
        // since a name is needed and almost every name is free.
        if (++tries == kNameTriesPerRound) {
            tries = 0;
        }
    }
}

QString usrDocViewer::RandomLetters(int count) const {
    QString letters;
    letters.reserve(count);
    for (int i = 0; i < count; ++i) {
        // 0 <= r < 1 gives the codes 65..89 ('A'..'Y'), halves rounded to even.
        const double r = module1_.Services().Random.Next();
        letters.append(QChar(static_cast<char16_t>(std::nearbyint(24.0 * r + 65.0))));
    }
    return letters;
}

}  // namespace kelvane
