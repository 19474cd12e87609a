// Feeds arbitrary bytes to the calendar file reader. Whatever it reads must
// never crash, hang or read past the end; a file it accepts must write back
// into a file that it accepts again with the same dates.
#include <QBuffer>

#include <cstddef>
#include <cstdint>
#include <cstdlib>

#include "calfile/CalendarFile.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const QByteArray bytes(reinterpret_cast<const char*>(data), static_cast<qsizetype>(size));
    kelvane::CalendarFileContent content;
    if (kelvane::ReadCalendarFile(bytes, content).Status != kelvane::CalendarFileStatus::Ok) {
        return 0;
    }
    QBuffer buffer;
    buffer.open(QIODevice::WriteOnly);
    kelvane::LineWriter out(buffer);
    kelvane::WriteCalendarFile(out, content);
    out.Flush();

    kelvane::CalendarFileContent again;
    if (kelvane::ReadCalendarFile(buffer.data(), again).Status != kelvane::CalendarFileStatus::Ok ||
        again.Dates.size() != content.Dates.size()) {
        std::abort();
    }
    return 0;
}
