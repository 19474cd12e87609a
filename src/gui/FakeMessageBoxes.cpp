#include "gui/FakeMessageBoxes.h"

namespace kelvane {

MessageAnswer FakeMessageBoxes::Present(const MessageBoxRequest& request) {
    Shown.append(request);
    if (WhileShown) {
        WhileShown(request);
    }
    if (!Script.isEmpty()) {
        return Script.takeFirst();
    }
    if (request.Buttons == MessageButtons::Ok) {
        return MessageAnswer::Ok;
    }
    ++UnscriptedQuestions;
    return MessageAnswer::No;
}

}  // namespace kelvane
