#pragma once

#include <QString>
#include <QWidget>

namespace kelvane {

// Tells a screen reader of something that happened where the keyboard is not,
// without moving the keyboard and without anything to see: a notification
// (as AT-SPI names them) of no size, shown anew with each news. Orca reads a
// notification out as it shows; the news stays its name until the next.
class Announcer final : public QWidget {
  public:
    explicit Announcer(QWidget* parent);

    void Announce(const QString& news);
};

}  // namespace kelvane
