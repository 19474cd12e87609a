#include "ProbeOptions.h"

#include <cstdio>
#include <cstdlib>

namespace first_paint {

namespace {

bool ParsePositive(const char* text, double& value) {
    char* end = nullptr;
    const double parsed = std::strtod(text, &end);
    if (end == text || *end != '\0' || !(parsed > 0.0)) {
        return false;
    }
    value = parsed;
    return true;
}

}  // namespace

void Usage() {
    std::fprintf(stderr,
                 "usage: first_paint_probe --title TITLE [--timeout SECONDS] "
                 "[--grace SECONDS] [--verbose] -- COMMAND [ARGUMENT...]\n");
}

std::optional<Options> ParseOptions(int argc, char* argv[]) {
    Options options;
    int index = 1;
    for (; index < argc; ++index) {
        const std::string argument = argv[index];
        const bool hasValue = index + 1 < argc;
        if (argument == "--") {
            ++index;
            break;
        } else if (argument == "--title" && hasValue) {
            options.title = argv[++index];
        } else if (argument == "--timeout" && hasValue) {
            if (!ParsePositive(argv[++index], options.timeoutSeconds)) {
                return std::nullopt;
            }
        } else if (argument == "--grace" && hasValue) {
            if (!ParsePositive(argv[++index], options.graceSeconds)) {
                return std::nullopt;
            }
        } else if (argument == "--verbose") {
            options.verbose = true;
        } else if (argument.rfind("--", 0) == 0) {
            return std::nullopt;
        } else {
            break;  // the command starts here
        }
    }
    for (; index < argc; ++index) {
        options.command.push_back(argv[index]);
    }
    if (options.command.empty() || options.title.empty()) {
        return std::nullopt;
    }
    options.command.push_back(nullptr);
    return options;
}

}  // namespace first_paint
