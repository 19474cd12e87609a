#include "report/usrDocViewer.h"

#include <QFileInfo>
#include <QVBoxLayout>
#include <QtEndian>

#include <algorithm>
#include <array>
#include <cmath>

#include "calfile/Conversions.h"
#include "report/LineTextView.h"
#include "store/Utf16Records.h"

namespace kelvane {

namespace {

const QString kOverflowPrefix = QStringLiteral("~tmpTXT");
constexpr int kNameLetters = 10;
constexpr int kNameTriesPerRound = 10;
constexpr int kRecordBytes = RecordTextBytes(usrDocViewer::LineLength);
// Lines past memory are read back this many at a time: few reads, and a
// buffer small enough to stay in the processor's cache.
constexpr int kRecordsPerRead = 1024;

// A shown line: the line without the blanks at its ends, and a line break.
void AppendShownLine(QString& text, QStringView line) {
    text += TrimmedView(line);
    text += u'\n';
}

// The same for a line as the temporary file holds it, decoded on the stack.
void AppendShownRecord(QString& text, QByteArrayView record) {
    std::array<char16_t, usrDocViewer::LineLength> units{};
    DecodeRecordTextTo(record, units.data());
    AppendShownLine(text, QStringView(units.data(), static_cast<qsizetype>(units.size())));
}

}  // namespace

usrDocViewer::usrDocViewer(Module1& module1, QWidget* parent)
    : QWidget(parent),
      module1_(module1),
      txtDocument_(new LineTextView(this)),
      memoryLimit_(MemoryLines) {
    txtDocument_->setObjectName(QStringLiteral("txtDocument"));
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
    txtDocument_->setPlainText(ShownText());
}

// Every line without its end blanks, with a line break between two lines.
QString usrDocViewer::ShownText() const {
    QString text;
    text.reserve(static_cast<qsizetype>(lineCount_) * (LineLength + 1));
    const int inMemory = std::min<int>(lineCount_, memoryLimit_);
    for (int i = 1; i <= inMemory; ++i) {
        AppendShownLine(text, lines_[i].Value());
    }
    if (lineCount_ > inMemory) {
        AppendOverflowLines(text);
    }
    text.chop(1);  // the break after the last line
    return text;
}

// The lines past memory, read from the temporary file a run of records at a
// time. When some record of a run cannot be read, each line of the run is read
// on its own and an unreadable one shows empty.
void usrDocViewer::AppendOverflowLines(QString& text) const {
    QByteArray records;
    // An int counter, so that a count of MostLines cannot wrap it.
    for (int first = memoryLimit_ + 1; first <= lineCount_; first += kRecordsPerRead) {
        const int count = std::min(kRecordsPerRead, lineCount_ - first + 1);
        if (overflowFileNumber_ != 0 && overflowFile_.Read(first - memoryLimit_, count, records)) {
            for (int i = 0; i < count; ++i) {
                AppendShownRecord(text,
                                  QByteArrayView(records).sliced(i * kRecordBytes, kRecordBytes));
            }
            continue;
        }
        for (int line = first; line < first + count; ++line) {
            AppendShownLine(text, GetLine(static_cast<qint16>(line)));
        }
    }
}

bool usrDocViewer::StoreLine(qint16 lineNumber, const QString& text) {
    if (lineNumber <= memoryLimit_) {
        lines_[lineNumber] = text;
        return true;
    }
    if (overflowFileNumber_ == 0 && !OpenOverflowFile()) {
        return false;
    }
    return overflowFile_.Write(lineNumber - memoryLimit_, LineRecord(text));
}

// The record of a line past memory: the line cut and blank padded as a
// FixedText of LineLength keeps it, in UTF-16 little-endian.
const QByteArray& usrDocViewer::LineRecord(const QString& text) {
    const QString cut = CutText(text, LineLength);
    char* out = lineRecord_.data();  // a copy the file kept goes its own way here
    EncodeRecordTextTo(cut, out);
    for (qsizetype i = cut.size(); i < LineLength; ++i) {
        qToLittleEndian<quint16>(u' ', out + 2 * i);
    }
    return lineRecord_;
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
