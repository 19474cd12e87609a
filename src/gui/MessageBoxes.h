#pragma once

#include <QString>

#include "gui/ApplicationTitle.h"

namespace kelvane {

enum class MessageButtons { Ok, YesNo };
enum class MessageIcon { None, Critical, Exclamation, Question };
enum class MessageAnswer { Ok, Yes, No };

// One modal message box as the user sees it.
struct MessageBoxRequest {
    QString Text;
    QString Title;
    MessageButtons Buttons = MessageButtons::Ok;
    MessageIcon Icon = MessageIcon::None;
    // Read by screen readers only, with the box: what the text leaves to the
    // eye, such as the date a question is about. Empty for none.
    QString Description = QString();

    friend bool operator==(const MessageBoxRequest&, const MessageBoxRequest&) = default;
};

// Modal message boxes. Texts may hold a carriage return (character 13) where a
// new line starts; the implementation shows it as a line break.
class MessageBoxes {
  public:
    virtual ~MessageBoxes() = default;

    // Shows one box and waits for the answer. A box without a title of its own
    // carries the application title.
    MessageAnswer Show(const QString& text, MessageButtons buttons = MessageButtons::Ok,
                       MessageIcon icon = MessageIcon::None, const QString& title = QString(),
                       const QString& description = QString()) {
        return Present({text, title.isEmpty() ? QString(ApplicationTitle) : title, buttons, icon,
                        description});
    }

  protected:
    virtual MessageAnswer Present(const MessageBoxRequest& request) = 0;
};

}  // namespace kelvane
