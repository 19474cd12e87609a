#include "ProbeLog.h"

#include <cstdarg>
#include <cstdio>

namespace first_paint {

double ProbeLog::MillisecondsSinceStart(Clock::time_point when) const {
    return std::chrono::duration<double, std::milli>(when - start_).count();
}

void ProbeLog::Line(const char* format, ...) const {
    if (!verbose_) {
        return;
    }
    std::fprintf(stderr, "[probe %8.2f ms] ", MillisecondsSinceStart(Clock::now()));
    va_list arguments;
    va_start(arguments, format);
    std::vfprintf(stderr, format, arguments);
    va_end(arguments);
    std::fputc('\n', stderr);
}

}  // namespace first_paint
