#pragma once

#include <QList>

#include <functional>

#include "gui/MessageBoxes.h"

namespace kelvane {

// Records every box shown and answers from a script, for tests.
class FakeMessageBoxes final : public MessageBoxes {
  public:
    // Queues the answer for the next box.
    void Answer(MessageAnswer answer) { Script.append(answer); }

    // Boxes shown so far, oldest first.
    QList<MessageBoxRequest> Shown;
    // Answers still to give, first one next.
    QList<MessageAnswer> Script;
    // Yes/No boxes that found the script empty; they were answered No.
    int UnscriptedQuestions = 0;
    // Runs while a box is up, before it is answered, as events do while a real
    // box waits.
    std::function<void(const MessageBoxRequest&)> WhileShown;

  protected:
    MessageAnswer Present(const MessageBoxRequest& request) override;
};

}  // namespace kelvane
