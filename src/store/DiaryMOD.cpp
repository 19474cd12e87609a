#include "store/DiaryMOD.h"

#include <QStringList>

#include "calfile/Conversions.h"

namespace kelvane {

namespace {

bool IsAsciiDigit(QChar c) {
    return c >= u'0' && c <= u'9';
}

// The numeric value of a key's two characters. Two digits, as every key the
// program makes has, are read at once; anything else goes through Val.
qint16 KeyPartValue(QStringView part) {
    if (part.size() == 2 && IsAsciiDigit(part[0]) && IsAsciiDigit(part[1])) {
        return static_cast<qint16>((part[0].unicode() - u'0') * 10 + (part[1].unicode() - u'0'));
    }
    return Val16(part.toString());
}

}  // namespace

std::optional<qint16> DayOfYearSlot(const QString& key, const MonthLengths& daysInMonth) {
    const qint16 month = KeyPartValue(QStringView(key).left(2));
    const qint16 day = KeyPartValue(QStringView(key).right(2));
    if (month > 12) {
        return std::nullopt;
    }
    int slot = day;
    for (int earlier = 1; earlier < month; ++earlier) {
        slot += daysInMonth[earlier];
    }
    return static_cast<qint16>(slot);
}

DiaryMOD::DiaryMOD(Module1& module1, MessageBoxes& messages)
    : module1_(module1), messages_(messages) {}

void DiaryMOD::InitDiaryStore() {
    CloseNumbered(file_, DiaryFileNumber, module1_.Files);
    NoteRecordCount = 0;
    DiaryFileName = module1_.AppDirectory() + QStringLiteral("~tmpDiaryCal");
    NoteBuffer = QString();
    NoteIndex.Fill(0);
    writeFailureShown_ = false;

    DiaryFileNumber = OpenNumbered(file_, DiaryFileName, module1_.Files);
    if (DiaryFileNumber == 0) {
        messages_.Show(QStringLiteral("Could not open diary temporary file"));
    }
}

void DiaryMOD::CloseDiaryStore(TemporaryFile file) {
    if (DiaryFileNumber != 0) {
        CloseNumbered(file_, DiaryFileNumber, module1_.Files);
        if (file == TemporaryFile::Delete) {
            file_.CloseAndRemove();
        }
        DiaryFileNumber = 0;
    }
}

std::optional<qint16> DiaryMOD::SlotInYear(const QString& key) const {
    const std::optional<qint16> slot = DayOfYearSlot(key, module1_.DaysInMonth);
    if (!slot || !NoteIndex.Contains(*slot)) {
        return std::nullopt;
    }
    return slot;
}

void DiaryMOD::LoadNote(const QString& key) {
    const std::optional<qint16> slot = SlotInYear(key);
    if (!slot) {
        return;
    }
    CurrentNoteSlot = *slot;
    QByteArray record;
    if (NoteIndex[*slot] != 0 && file_.Read(NoteIndex[*slot], 1, record)) {
        NoteBuffer = DecodeRecordText(record);
    } else {
        NoteBuffer = QString();
    }
}

bool DiaryMOD::HasStoredNote(const QString& key) {
    const std::optional<qint16> slot = SlotInYear(key);
    QByteArray record;
    if (!slot || NoteIndex[*slot] == 0 || !file_.Read(NoteIndex[*slot], 1, record)) {
        return false;
    }
    return !DecodeRecordText(record).trimmed().isEmpty();
}

void DiaryMOD::SaveNote(const QString& key) {
    const std::optional<qint16> slot = SlotInYear(key);
    if (!slot) {
        return;
    }
    CurrentNoteSlot = *slot;
    if (NoteIndex[*slot] == 0) {
        if (NoteBuffer.IsBlank()) {
            return;
        }
        NoteIndex[*slot] = ++NoteRecordCount;
    }
    WriteRecord(NoteIndex[*slot]);
}

void DiaryMOD::ClearNote(const QString& key) {
    const std::optional<qint16> slot = SlotInYear(key);
    if (!slot) {
        return;
    }
    CurrentNoteSlot = *slot;
    NoteBuffer = QString();
    if (NoteIndex[*slot] != 0) {
        WriteRecord(NoteIndex[*slot]);
    }
}

void DiaryMOD::WriteNoteToFile(LineWriter& out) const {
    WriteNoteSection(out, NoteBuffer.Value());
}

bool DiaryMOD::ReadNoteFromFile(LineReader& in) {
    QString note;
    if (!ReadNoteSection(in, note)) {
        return false;
    }
    NoteBuffer = note;
    return true;
}

// A store that never opened (reported already) keeps its notes in memory.
void DiaryMOD::WriteRecord(qint16 record) {
    if (file_.Write(record, EncodeRecordText(NoteBuffer.Value()))) {
        writeFailureShown_ = false;
    } else if (DiaryFileNumber != 0 && !writeFailureShown_) {
        writeFailureShown_ = true;
        messages_.Show(
            QStringLiteral("Could not write diary temporary file\r"
                           "Nothing is lost: the note is kept in memory until it can be written."));
    }
}

}  // namespace kelvane
