#include "store/AppointmentMOD.h"

#include <QtEndian>

#include <algorithm>
#include <array>
#include <charconv>
#include <string_view>

#include "store/DiaryMOD.h"
#include "store/Utf16Records.h"

namespace kelvane {

namespace {

// Offsets of the fields in a record; the times follow the description.
constexpr int kDescriptionBytes = RecordTextBytes(decltype(Appointment::Description)::Length);
constexpr int kStartHour = kDescriptionBytes;
constexpr int kStartMinute = kStartHour + 2;
constexpr int kEndHour = kStartMinute + 2;
constexpr int kEndMinute = kEndHour + 2;
static_assert(kEndMinute + 2 == AppointmentRecordLength);

void PutInteger16(char* record, int offset, qint16 value) {
    qToLittleEndian<qint16>(value, record + offset);
}

// Fills the AppointmentRecordLength bytes at `record`.
void PutAppointment(const Appointment& appointment, char* record) {
    EncodeRecordTextTo(appointment.Description.Value(), record);
    PutInteger16(record, kStartHour, appointment.StartTime.Hour);
    PutInteger16(record, kStartMinute, appointment.StartTime.Minute);
    PutInteger16(record, kEndHour, appointment.EndTime.Hour);
    PutInteger16(record, kEndMinute, appointment.EndTime.Minute);
}

qint16 GetInteger16(QByteArrayView record, int offset) {
    return qFromLittleEndian<qint16>(record.data() + offset);
}

ClockTime StartOf(QByteArrayView record) {
    return {GetInteger16(record, kStartHour), GetInteger16(record, kStartMinute)};
}

ClockTime EndOf(QByteArrayView record) {
    return {GetInteger16(record, kEndHour), GetInteger16(record, kEndMinute)};
}

// A whole record into `appointment`, its description written over the one it
// held: no new text is made where no copy shares the old one.
void DecodeAppointmentInto(QByteArrayView record, Appointment& appointment) {
    appointment.Description.Overwrite(
        [record](char16_t* text) { DecodeRecordTextTo(record.first(kDescriptionBytes), text); });
    appointment.StartTime = StartOf(record);
    appointment.EndTime = EndOf(record);
}

qint64 FirstRecordOfBlock(qint32 block) {
    return static_cast<qint64>(block - 1) * MaxAppointmentsPerDate + 1;
}

}  // namespace

QByteArray EncodeAppointment(const Appointment& appointment) {
    QByteArray record(AppointmentRecordLength, Qt::Uninitialized);
    PutAppointment(appointment, record.data());
    return record;
}

Appointment DecodeAppointment(QByteArrayView record) {
    if (record.size() < AppointmentRecordLength) {
        return Appointment{};
    }
    // Made from its fields, the description is not first made blank.
    return Appointment{DecodeRecordText(record.first(kDescriptionBytes)), StartOf(record),
                       EndOf(record)};
}

// Months and days below 100, as every real date has, are written digit by
// digit; other numbers as arg() pads them.
QString MakeDateKey(qint16 month, qint16 day) {
    if (month >= 0 && month < 100 && day >= 0 && day < 100) {
        const char16_t key[] = {
            static_cast<char16_t>(u'0' + month / 10), static_cast<char16_t>(u'0' + month % 10),
            static_cast<char16_t>(u'0' + day / 10), static_cast<char16_t>(u'0' + day % 10)};
        return QString(reinterpret_cast<const QChar*>(key), 4);
    }
    const QLatin1Char zero('0');
    return QStringLiteral("%1%2").arg(month, 2, 10, zero).arg(day, 2, 10, zero);
}

QString FormatClockTime(const ClockTime& time, qint16 style) {
    int hour = time.Hour;
    std::string_view suffix;
    if (style == 0) {
        suffix = hour < 12 ? " am" : " pm";
        if (hour == 0) {
            hour = 12;
        } else if (hour >= 13 && hour <= 23) {
            hour -= 12;
        }
    }
    // The minute is the last two characters of "0" and its number: "05",
    // "30", and for odd values "-1" or "23" (of 123).
    std::array<char, 8> minute{'0'};
    const char* minuteEnd = std::to_chars(minute.data() + 1, minute.data() + minute.size(),
                                          static_cast<int>(time.Minute))
                                .ptr;
    std::array<char, 24> text{};
    char* out = std::to_chars(text.data(), text.data() + 8, hour).ptr;
    *out++ = ':';
    out = std::copy(minuteEnd - 2, minuteEnd, out);
    out = std::copy(suffix.begin(), suffix.end(), out);
    return QString::fromLatin1(text.data(), out - text.data());
}

AppointmentMOD::AppointmentMOD(Module1& module1, MessageBoxes& messages)
    : module1_(module1), messages_(messages) {}

void AppointmentMOD::InitAppointmentStore() {
    CloseNumbered(file_, AppointmentFileNumber, module1_.Files);
    AppointmentFileName = module1_.AppDirectory() + QStringLiteral("~tempAppoint.tmp");
    AppointmentFileNumber = 0;
    int slot = 0;
    for (qint16 month = 1; month <= 12; ++month) {
        for (qint16 day = 1; day <= module1_.DaysInMonth[month]; ++day) {
            if (DayIndex.Contains(++slot)) {
                DayIndex[slot] = {MakeDateKey(month, day), 0};
            }
        }
    }
    AppointmentBlockCount = 0;
    writeFailureShown_ = false;

    AppointmentFileNumber = OpenNumbered(file_, AppointmentFileName, module1_.Files);
    if (AppointmentFileNumber == 0) {
        ShowFileMessage();
    }
}

void AppointmentMOD::CloseAppointmentStore(TemporaryFile file) {
    if (AppointmentFileNumber > 0) {
        CloseNumbered(file_, AppointmentFileNumber, module1_.Files);
        if (file == TemporaryFile::Delete) {
            file_.CloseAndRemove();
        }
    }
}

std::optional<qint16> AppointmentMOD::SlotOfKey(const QString& key) const {
    return DayOfYearSlot(key, module1_.DaysInMonth);
}

void AppointmentMOD::ClearAppointmentList() {
    AppointmentList.Fill(Appointment{});
}

void AppointmentMOD::LoadAppointments(const QString& key) {
    const std::optional<qint16> slot = SlotOfKey(key);
    if (!slot) {
        return;
    }
    if (!DayIndex.Contains(*slot)) {
        ClearAppointmentList();
        messages_.Show(QStringLiteral("Did Not Find"));
        return;
    }
    const qint32 block = DayIndex[*slot].Block;
    QByteArray records;
    if (block == 0 || !file_.Read(FirstRecordOfBlock(block), MaxAppointmentsPerDate, records)) {
        ClearAppointmentList();
        return;
    }
    // Every entry of the list is read anew: none needs emptying first.
    for (int entry = 1; entry <= MaxAppointmentsPerDate; ++entry) {
        const qsizetype offset = static_cast<qsizetype>(entry - 1) * AppointmentRecordLength;
        DecodeAppointmentInto(QByteArrayView(records).sliced(offset, AppointmentRecordLength),
                              AppointmentList[entry]);
    }
}

void AppointmentMOD::SaveAppointments(const QString& key) {
    const std::optional<qint16> slot = SlotOfKey(key);
    if (!slot) {
        return;
    }
    if (!DayIndex.Contains(*slot)) {
        messages_.Show(QStringLiteral("Could not find date!!"));
        return;
    }
    DayIndexEntry& entry = DayIndex[*slot];
    if (entry.Block == 0) {
        if (CountAppointments() == 0) {
            return;
        }
        entry.Block = ++AppointmentBlockCount;
    }
    WriteBlock(entry.Block);
}

void AppointmentMOD::DeleteAppointments(const QString& key) {
    const std::optional<qint16> slot = SlotOfKey(key);
    if (!slot || !DayIndex.Contains(*slot)) {
        return;
    }
    ClearAppointmentList();
    if (DayIndex[*slot].Block != 0) {
        WriteBlock(DayIndex[*slot].Block);
    }
}

qint16 AppointmentMOD::CountStoredAppointments(const QString& key) {
    const std::optional<qint16> slot = SlotOfKey(key);
    QByteArray records;
    if (!slot || !DayIndex.Contains(*slot) || DayIndex[*slot].Block == 0 ||
        !file_.Read(FirstRecordOfBlock(DayIndex[*slot].Block), MaxAppointmentsPerDate, records)) {
        return 0;
    }
    qint16 count = 0;
    for (int entry = 1; entry <= MaxAppointmentsPerDate; ++entry) {
        const qsizetype offset = static_cast<qsizetype>(entry - 1) * AppointmentRecordLength;
        const Appointment appointment =
            DecodeAppointment(QByteArrayView(records).sliced(offset, AppointmentRecordLength));
        if (appointment.Description.IsBlank()) {
            break;
        }
        ++count;
    }
    return count;
}

qint16 AppointmentMOD::CountAppointments() const {
    qint16 count = 0;
    for (const Appointment& appointment : AppointmentList) {
        if (appointment.Description.IsBlank()) {
            break;
        }
        ++count;
    }
    return count;
}

void AppointmentMOD::WriteBlock(qint32 block) {
    if (AppointmentFileNumber > 0 && !file_.IsOpen()) {
        return;  // closed at shutdown
    }
    QByteArray records(MaxAppointmentsPerDate * AppointmentRecordLength, Qt::Uninitialized);
    char* record = records.data();
    for (const Appointment& appointment : AppointmentList) {
        PutAppointment(appointment, record);
        record += AppointmentRecordLength;
    }
    if (file_.Write(FirstRecordOfBlock(block), records)) {
        writeFailureShown_ = false;
    } else if (AppointmentFileNumber > 0 && !writeFailureShown_) {
        writeFailureShown_ = true;
        ShowWriteFailure();
    }
}

void AppointmentMOD::ShowWriteFailure() {
    messages_.Show(
        QStringLiteral("Could not write a 'temporary' file.\r"
                       "Make sure there is enough space on 'drive'\r"
                       "Nothing is lost: the schedule is kept in memory until it can be written."));
}

void AppointmentMOD::ShowFileMessage() {
    messages_.Show(
        QStringLiteral("Could not open a 'temporary' file.\r"
                       "Make sure there is enough space on 'drive'"));
}

}  // namespace kelvane
