#pragma once

#include <QString>

#include <optional>

#include "calfile/LineReader.h"
#include "calfile/LineWriter.h"
#include "calfile/NoteText.h"
#include "calfile/Records.h"
#include "gui/MessageBoxes.h"
#include "store/Module1.h"
#include "store/RecordFile.h"
#include "store/Utf16Records.h"

namespace kelvane {

// The day slot of a date key: the day plus the slots of the months before it
// (0101 is 1, 0229 is 60, 1231 is 366). Month and day are the numeric values
// of the first and last two characters; nothing else is checked, so 0231 gives
// 62. Empty for a month above 12, which has no place in the year.
std::optional<qint16> DayOfYearSlot(const QString& key, const MonthLengths& daysInMonth);

// Keeps the notes of every date of the open document in a temporary file of
// 1600-byte records beside the program (the 800 characters of a note in UTF-16
// little-endian), and the note of one date at a time in NoteBuffer. A date gets
// a record the first time a non-blank note is saved for it and keeps it for the
// life of the file. A note the file cannot take is kept in memory, and the
// person is told once each time writes start failing.
class DiaryMOD {
  public:
    DiaryMOD(Module1& module1, MessageBoxes& messages);
    DiaryMOD(const DiaryMOD&) = delete;
    DiaryMOD& operator=(const DiaryMOD&) = delete;

    // The note of the date last loaded; lines separated by CR LF.
    FixedText<NoteLength> NoteBuffer;
    // Record number of each day slot's note, 0 for none.
    OneBased<qint16, DaySlotCount> NoteIndex;
    qint16 NoteRecordCount = 0;
    qint16 CurrentNoteSlot = 0;
    QString DiaryFileName;
    qint16 DiaryFileNumber = 0;  // 0 while the file is not open

    void InitDiaryStore();
    // Closes the temporary file and deletes it, or with
    // TemporaryFile::Keep leaves it where it is.
    void CloseDiaryStore(TemporaryFile file = TemporaryFile::Delete);

    // A key whose slot lies outside 1..366 leaves everything as it was.
    void LoadNote(const QString& key);
    void SaveNote(const QString& key);
    void ClearNote(const QString& key);
    // Whether a date has a stored note that is not blank; NoteBuffer is left alone.
    bool HasStoredNote(const QString& key);
    // See RecordFile::ReadAhead.
    void ReadAhead() { file_.ReadAhead(); }
    void StopReadingAhead() { file_.StopReadingAhead(); }

    // The note section of NoteBuffer.
    void WriteNoteToFile(LineWriter& out) const;
    // Reads a note section into NoteBuffer; false when it is damaged (NoteBuffer is then
    // untouched).
    bool ReadNoteFromFile(LineReader& in);

  private:
    std::optional<qint16> SlotInYear(const QString& key) const;
    void WriteRecord(qint16 record);

    Module1& module1_;
    MessageBoxes& messages_;
    RecordFile file_{RecordTextBytes(NoteLength)};
    bool writeFailureShown_ = false;
};

}  // namespace kelvane
