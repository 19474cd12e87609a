#pragma once

namespace kelvane {

// The title every message box without a title of its own carries, and the
// application name of the per-user settings store.
inline constexpr char ApplicationTitle[] = "Kelvane";

}  // namespace kelvane
