// Feeds arbitrary bytes to kelvane-cal's iCalendar import. Whatever libical
// makes of them, the import must never crash or hang, and a calendar it makes
// must be one the calendar file reader accepts.
#include <QBuffer>

#include <cstddef>
#include <cstdint>
#include <cstdlib>

#include "kelvane_cal/ical/ICalImport.h"
#include "kelvane_cal/ical/ZoneBook.h"

#include "calfile/CalendarFile.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    QByteArray bytes(reinterpret_cast<const char*>(data), static_cast<qsizetype>(size));
    QBuffer file(&bytes);
    file.open(QIODevice::ReadOnly);
    kelvane::cal::ImportedDates dates;
    kelvane::cal::ImportReport report;
    const kelvane::cal::ImportRequest request{2026, kelvane::cal::ZoneNamed(QStringLiteral("UTC"))};
    if (!kelvane::cal::ImportICalendar(file, request, dates, report)) {
        return 0;
    }
    QStringList warnings;
    QBuffer calendar;
    calendar.open(QIODevice::WriteOnly);
    kelvane::LineWriter out(calendar);
    kelvane::WriteCalendarFile(out, dates.NewCalendar(2026, warnings));
    out.Flush();
    kelvane::CalendarFileContent content;
    if (kelvane::ReadCalendarFile(calendar.data(), content).Status !=
        kelvane::CalendarFileStatus::Ok) {
        std::abort();
    }
    return 0;
}
