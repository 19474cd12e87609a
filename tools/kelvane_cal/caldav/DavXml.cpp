#include "kelvane_cal/caldav/DavXml.h"

#include <QXmlStreamReader>
#include <QXmlStreamWriter>

namespace kelvane::cal {

namespace {

const QString kDav = QStringLiteral("DAV:");
const QString kCalDav = QStringLiteral("urn:ietf:params:xml:ns:caldav");

QByteArray Written(const std::function<void(QXmlStreamWriter&)>& body) {
    QByteArray xml;
    QXmlStreamWriter writer(&xml);
    writer.writeStartDocument();
    writer.writeNamespace(kDav, QStringLiteral("d"));
    writer.writeNamespace(kCalDav, QStringLiteral("c"));
    body(writer);
    writer.writeEndDocument();
    return xml;
}

bool IsOk(const QString& statusLine) {
    return statusLine.section(QLatin1Char(' '), 1, 1) == QLatin1String("200");
}

// Reads one <propstat>: its properties, kept only when its status is 200.
void ReadPropstat(QXmlStreamReader& reader, DavResource& resource) {
    DavResource found;
    bool ok = false;
    while (reader.readNextStartElement()) {
        if (reader.name() == QLatin1String("prop") && reader.namespaceUri() == kDav) {
            while (reader.readNextStartElement()) {
                if (reader.name() == QLatin1String("getetag")) {
                    found.ETag = reader.readElementText().trimmed().toUtf8();
                } else if (reader.name() == QLatin1String("calendar-data")) {
                    found.CalendarData = reader.readElementText().toUtf8();
                } else {
                    reader.skipCurrentElement();
                }
            }
        } else if (reader.name() == QLatin1String("status")) {
            ok = IsOk(reader.readElementText().trimmed());
        } else {
            reader.skipCurrentElement();
        }
    }
    if (ok) {
        if (!found.ETag.isEmpty()) {
            resource.ETag = found.ETag;
        }
        if (!found.CalendarData.isEmpty()) {
            resource.CalendarData = found.CalendarData;
        }
    }
}

DavResource ReadResponse(QXmlStreamReader& reader) {
    DavResource resource;
    while (reader.readNextStartElement()) {
        if (reader.name() == QLatin1String("href")) {
            resource.Href = reader.readElementText().trimmed();
        } else if (reader.name() == QLatin1String("propstat")) {
            ReadPropstat(reader, resource);
        } else {
            reader.skipCurrentElement();
        }
    }
    return resource;
}

}  // namespace

QByteArray ETagsRequestBody() {
    return Written([](QXmlStreamWriter& writer) {
        writer.writeStartElement(kDav, QStringLiteral("propfind"));
        writer.writeStartElement(kDav, QStringLiteral("prop"));
        writer.writeEmptyElement(kDav, QStringLiteral("getetag"));
        writer.writeEndElement();
        writer.writeEndElement();
    });
}

QByteArray EventsInRangeRequestBody(const QString& start, const QString& end) {
    return Written([&start, &end](QXmlStreamWriter& writer) {
        writer.writeStartElement(kCalDav, QStringLiteral("calendar-query"));
        writer.writeStartElement(kDav, QStringLiteral("prop"));
        writer.writeEmptyElement(kDav, QStringLiteral("getetag"));
        writer.writeEmptyElement(kCalDav, QStringLiteral("calendar-data"));
        writer.writeEndElement();
        writer.writeStartElement(kCalDav, QStringLiteral("filter"));
        writer.writeStartElement(kCalDav, QStringLiteral("comp-filter"));
        writer.writeAttribute(QStringLiteral("name"), QStringLiteral("VCALENDAR"));
        writer.writeStartElement(kCalDav, QStringLiteral("comp-filter"));
        writer.writeAttribute(QStringLiteral("name"), QStringLiteral("VEVENT"));
        writer.writeStartElement(kCalDav, QStringLiteral("time-range"));
        writer.writeAttribute(QStringLiteral("start"), start);
        writer.writeAttribute(QStringLiteral("end"), end);
        writer.writeEndElement();
        writer.writeEndElement();
        writer.writeEndElement();
        writer.writeEndElement();
        writer.writeEndElement();
    });
}

bool ParseMultistatus(const QByteArray& xml, std::vector<DavResource>& resources,
                      QString& problem) {
    QXmlStreamReader reader(xml);
    if (!reader.readNextStartElement() || reader.name() != QLatin1String("multistatus") ||
        reader.namespaceUri() != kDav) {
        problem = QStringLiteral("the server's answer is no WebDAV multistatus");
        return false;
    }
    while (reader.readNextStartElement()) {
        if (reader.name() == QLatin1String("response") && reader.namespaceUri() == kDav) {
            resources.push_back(ReadResponse(reader));
        } else {
            reader.skipCurrentElement();
        }
    }
    if (reader.hasError()) {
        problem =
            QStringLiteral("the server's answer is damaged XML: %1").arg(reader.errorString());
        return false;
    }
    return true;
}

bool NamesABrokenCondition(const QByteArray& body) {
    QXmlStreamReader reader(body);
    if (!reader.readNextStartElement() || reader.name() != QLatin1String("error") ||
        reader.namespaceUri() != kDav) {
        return false;
    }
    bool named = false;
    while (reader.readNextStartElement()) {
        const bool standard = reader.namespaceUri() == kDav || reader.namespaceUri() == kCalDav;
        const QString name = reader.name().toString();
        if (standard && name == QLatin1String("need-privileges")) {
            return false;
        }
        named = named || (standard && name != QLatin1String("responsedescription"));
        reader.skipCurrentElement();
    }
    return named && !reader.hasError();
}

QString DavErrorText(const QByteArray& body) {
    QXmlStreamReader reader(body);
    if (!reader.readNextStartElement() || reader.name() != QLatin1String("error") ||
        reader.namespaceUri() != kDav) {
        return {};
    }
    QStringList said;
    QString description;
    while (reader.readNextStartElement()) {
        const QString name = reader.name().toString();
        const bool standard = reader.namespaceUri() == kDav || reader.namespaceUri() == kCalDav;
        const QString text =
            reader.readElementText(QXmlStreamReader::IncludeChildElements).simplified();
        if (name == QLatin1String("responsedescription")) {
            description = text;
        } else if (standard) {
            // A condition, named by its element, with what it holds (such
            // as the href of a clashing event).
            said.append(text.isEmpty() ? name : name + QLatin1Char(' ') + text);
        } else if (name != QLatin1String("exception") && !text.isEmpty()) {
            // A server's own element, such as a message, says something in
            // its text; an exception names a class of the server's code.
            said.append(text);
        }
    }
    if (!description.isEmpty()) {
        said.append(description);
    }
    return reader.hasError() ? QString() : said.join(QStringLiteral(": "));
}

}  // namespace kelvane::cal
