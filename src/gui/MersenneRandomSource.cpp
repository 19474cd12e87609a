#include "gui/MersenneRandomSource.h"

namespace kelvane {

double MersenneRandomSource::Next() {
    // 27 + 26 random bits over 2^53: exactly representable, so never 1.
    const double high = static_cast<double>(engine_() >> 5);
    const double low = static_cast<double>(engine_() >> 6);
    return (high * 67108864.0 + low) / 9007199254740992.0;
}

}  // namespace kelvane
