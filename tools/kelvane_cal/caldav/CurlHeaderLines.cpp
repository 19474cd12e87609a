#include "kelvane_cal/caldav/CurlHeaderLines.h"

namespace kelvane::cal {

void CurlHeaderLines::Set(const DavRequest& request, const QByteArray& authorization) {
    text_.clear();
    starts_.clear();
    if (!authorization.isEmpty()) {
        Add("Authorization", authorization);
    }
    for (const auto& [name, value] : request.Headers) {
        Add(name, value);
    }
    starts_.push_back(text_.size());
    text_.append("Expect:", sizeof("Expect:"));
    Link();
}

void CurlHeaderLines::Add(const QByteArray& name, const QByteArray& value) {
    starts_.push_back(text_.size());
    text_.append(name).append(": ", 2).append(value).append('\0');
}

// Points the nodes at the lines, once the text no longer moves.
void CurlHeaderLines::Link() {
    nodes_.resize(starts_.size());
    char* text = text_.data();
    for (std::size_t index = 0; index < nodes_.size(); ++index) {
        nodes_[index].data = text + starts_[index];
        nodes_[index].next = index + 1 < nodes_.size() ? &nodes_[index + 1] : nullptr;
    }
}

}  // namespace kelvane::cal
