#pragma once

#include <QByteArray>
#include <QByteArrayView>
#include <QString>

#include <optional>

#include "calfile/Appointment.h"
#include "calfile/Records.h"
#include "gui/MessageBoxes.h"
#include "store/Module1.h"
#include "store/RecordFile.h"

namespace kelvane {

// An appointment on disk: the 50 characters of the description in 100 bytes
// (UTF-16 little-endian, blank padded), then start hour, start minute, end
// hour, end minute as 16-bit little-endian signed integers: 108 bytes.
inline constexpr int AppointmentRecordLength = 108;
QByteArray EncodeAppointment(const Appointment& appointment);
Appointment DecodeAppointment(QByteArrayView record);

// A date's schedule, entries 1..40.
using AppointmentSlots = OneBased<Appointment, MaxAppointmentsPerDate>;

// Where a day slot's schedule lives in the temporary file.
struct DayIndexEntry {
    FixedText<5> Key;  // the slot's date key, e.g. "0307 "
    qint32 Block = 0;  // 1-based block of 40 records, 0 while the date has none
};

// The date key of a month and day: two digits each, month first ("0307").
QString MakeDateKey(qint16 month, qint16 day);

// A time as text: style 0 is the 12-hour clock with " am"/" pm" ("12:05 am"),
// any other style the 24-hour clock ("13:30").
QString FormatClockTime(const ClockTime& time, qint16 style);

// Keeps the schedules of every date of the open document in a temporary file
// of 108-byte records beside the program, and the schedule of one date at a time
// in the working list AppointmentList. A date gets a block of 40 records the
// first time it is saved with entries and keeps it for the life of the file.
// A block the file cannot take (a full disk, a file that did not open) is kept
// in memory, and the person is told once each time writes start failing.
class AppointmentMOD {
  public:
    AppointmentMOD(Module1& module1, MessageBoxes& messages);
    AppointmentMOD(const AppointmentMOD&) = delete;
    AppointmentMOD& operator=(const AppointmentMOD&) = delete;

    // The working list: the schedule of the date last loaded.
    AppointmentSlots AppointmentList;
    OneBased<DayIndexEntry, DaySlotCount> DayIndex;
    qint32 AppointmentBlockCount = 0;
    QString AppointmentFileName;
    qint16 AppointmentFileNumber = 0;  // 0 while the file is not open

    // Numbers the day slots and opens the temporary file.
    void InitAppointmentStore();
    // Closes the temporary file and deletes it, or with
    // TemporaryFile::Keep leaves it where it is.
    void CloseAppointmentStore(TemporaryFile file = TemporaryFile::Delete);

    // The day slot (1..366) of a date key; empty for a month above 12.
    std::optional<qint16> SlotOfKey(const QString& key) const;

    // Empties every entry of the working list.
    void ClearAppointmentList();
    // Fills the working list with a date's schedule (empty when it has none).
    void LoadAppointments(const QString& key);
    // Stores the working list as the date's schedule.
    void SaveAppointments(const QString& key);
    // Empties the working list and the date's stored schedule.
    void DeleteAppointments(const QString& key);
    // The entries before the first empty one.
    qint16 CountAppointments() const;
    // The same count for a date's stored schedule; the working list is left alone.
    qint16 CountStoredAppointments(const QString& key);
    // See RecordFile::ReadAhead.
    void ReadAhead() { file_.ReadAhead(); }
    void StopReadingAhead() { file_.StopReadingAhead(); }

  private:
    void WriteBlock(qint32 block);
    void ShowFileMessage();
    void ShowWriteFailure();

    Module1& module1_;
    MessageBoxes& messages_;
    RecordFile file_{AppointmentRecordLength};
    bool writeFailureShown_ = false;
};

}  // namespace kelvane
