#pragma once

#include <QByteArray>
#include <QJsonObject>
#include <QString>

#include "kelvane_cal/publish/PublishState.h"

namespace kelvane::cal {

// An event's fields as the state and its journal keep them.
QJsonObject EventFields(const PublishedEvent& event);

// The journal's line for an event put on the server: the compact JSON of its
// fields and UID, byte for byte as QJsonDocument writes it, without the line
// break.
QByteArray PutLine(const QString& uid, const PublishedEvent& event);

}  // namespace kelvane::cal
