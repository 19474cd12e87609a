#pragma once

class QAccessibleEvent;

namespace kelvane {

// Where the program's accessibility events go: the desktop's screen reader
// bridge, while a screen reader listens.
class AccessibilityBridge {
  public:
    // Told when a screen reader may have started or stopped listening.
    class Observer {
      public:
        virtual void ListeningChanged() = 0;

      protected:
        ~Observer() = default;
    };

    virtual ~AccessibilityBridge() = default;

    // True while a screen reader listens.
    virtual bool Listening() const = 0;
    virtual void Send(QAccessibleEvent& event) = 0;
    virtual void AddObserver(Observer& observer) = 0;
    virtual void RemoveObserver(Observer& observer) = 0;
};

}  // namespace kelvane
