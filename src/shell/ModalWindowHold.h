#pragma once

#include <QObject>
#include <QPointer>
#include <QWidget>

#include <optional>

#include "shell/WatchHold.h"

namespace kelvane {

// A modal window, whoever opened it, owns the screen and may hold the working
// copies until it closes. From the first tick that finds one open until no
// modal window is open any more, the watch is held; the end of that hold lets
// what the ticks put off meanwhile run at once.
class ModalWindowHold final : public QObject {
  public:
    explicit ModalWindowHold(ActivityWatch& watch) : watch_(watch) {}
    ModalWindowHold(const ModalWindowHold&) = delete;
    ModalWindowHold& operator=(const ModalWindowHold&) = delete;

    // Takes the hold while a modal window is open and lets it go once none is.
    void Update();

  protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

  private:
    void Follow(QWidget* window);
    void UpdateLater();

    ActivityWatch& watch_;
    // The modal window whose closing is awaited.
    QPointer<QWidget> window_;
    std::optional<WatchHold> hold_;
};

}  // namespace kelvane
