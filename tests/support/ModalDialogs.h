#pragma once

#include <QWidget>

#include <functional>

namespace kelvane::testing {

// Runs `act` on the next modal dialog once it is up, from inside its event
// loop, so that a test can drive a dialog that a command opens with exec().
// Gives up after five seconds.
void WhenModalOpens(std::function<void(QWidget*)> act);

}  // namespace kelvane::testing
