#pragma once

#include <QByteArray>
#include <QJsonObject>
#include <QString>

#include <map>

#include "kelvane_cal/publish/PublishState.h"

namespace kelvane::cal {

// An event's fields as the state and its journal keep them.
QJsonObject EventFields(const PublishedEvent& event);

// The journal's line for an event put on the server: the compact JSON of its
// fields and UID, byte for byte as QJsonDocument writes it, without the line
// break.
QByteArray PutLine(const QString& uid, const PublishedEvent& event);

// The saved state: the compact JSON of the collection's URL, the seed, the
// events and the refusals (left out when there are none), byte for byte as
// QJsonDocument writes it.
QByteArray StateText(const QString& url, const QString& seed,
                     const std::map<QString, PublishedEvent>& events,
                     const std::map<QString, QByteArray>& refused);
// The same through QJsonDocument, whatever the text: what StateText gives
// when its text is not plain.
QByteArray QtStateText(const QString& url, const QString& seed,
                       const std::map<QString, PublishedEvent>& events,
                       const std::map<QString, QByteArray>& refused);

}  // namespace kelvane::cal
