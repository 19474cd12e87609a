#pragma once

#include <QByteArray>
#include <QString>

#include <map>

namespace kelvane::cal {

// What one event was when it was last published.
struct PublishedEvent {
    QByteArray ETag;  // the server's, with its quotes
    QByteArray Hash;  // of the event's text without its stamp
};

// What a calendar file published to one collection: kept in a file of its own
// for each collection URL and UID seed, replaced whole on every save.
class PublishState {
  public:
    // The state of `url` and `seed` in `folder`; empty when none was saved.
    PublishState(const QString& folder, const QString& url, const QString& seed);

    // Reads the saved state; false with the problem when the file is damaged
    // (a missing file is an empty state).
    bool Load(QString& problem);
    // Writes the state; false with the problem when it cannot be written.
    bool Save(QString& problem) const;
    QString FileName() const { return fileName_; }

    std::map<QString, PublishedEvent> Events;  // by UID

  private:
    QString folder_;
    QString fileName_;
    QString url_;
    QString seed_;
};

}  // namespace kelvane::cal
