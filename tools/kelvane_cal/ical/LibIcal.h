#pragma once

#include <libical/ical.h>

#include <QByteArray>
#include <QString>

#include <memory>

// Owning handles for libical's objects, and text conversions.
namespace kelvane::cal {

struct ComponentFree {
    void operator()(icalcomponent* component) const { icalcomponent_free(component); }
};
using ComponentPtr = std::unique_ptr<icalcomponent, ComponentFree>;

struct ParserFree {
    void operator()(icalparser* parser) const { icalparser_free(parser); }
};
using ParserPtr = std::unique_ptr<icalparser, ParserFree>;

struct RecurIteratorFree {
    void operator()(icalrecur_iterator* iterator) const { icalrecur_iterator_free(iterator); }
};
using RecurIteratorPtr = std::unique_ptr<icalrecur_iterator, RecurIteratorFree>;

inline QString FromIcal(const char* text) {
    return text == nullptr ? QString() : QString::fromUtf8(text);
}

}  // namespace kelvane::cal
