#include "kelvane_cal/Commands.h"

namespace kelvane::cal {

int RunCommand(const QStringList& arguments, QTextStream& out, QTextStream& err) {
    if (arguments.value(0) == QStringLiteral("--help")) {
        out << "usage: kelvane-cal COMMAND ...\n";
        return 0;
    }
    err << "kelvane-cal: not built yet\n";
    return 2;
}

}  // namespace kelvane::cal
