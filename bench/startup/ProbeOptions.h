#pragma once

#include <optional>
#include <string>
#include <vector>

namespace first_paint {

enum ExitCode {
    Measured = 0,
    SetupError = 1,
    TimedOut = 2,
    MappedUnwatched = 3,
    EndedEarly = 4,
};

struct Options {
    std::string title;
    double timeoutSeconds = 30.0;
    double graceSeconds = 5.0;
    bool verbose = false;
    std::vector<char*> command;  // null-terminated for execvp
};

void Usage();
// The options and the command after them; none when they make no sense.
std::optional<Options> ParseOptions(int argc, char* argv[]);

}  // namespace first_paint
