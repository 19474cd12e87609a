#include "kelvane_cal/publish/PublishReplies.h"

#include <algorithm>
#include <iterator>

#include "kelvane_cal/caldav/DavXml.h"

namespace kelvane::cal {

bool Answered(const DavReply& reply) {
    return reply.Status != 0 || reply.RedirectRefused;
}

QString LastingRefusal(const DavReply& reply) {
    return reply.Status == 403 && NamesABrokenCondition(reply.Body) ? DavErrorText(reply.Body)
                                                                    : QString();
}

bool RefusesTheEvent(const DavReply& reply) {
    static constexpr int kAboutTheCollection[] = {401, 403, 404, 405, 407, 412};
    return reply.Status >= 400 && reply.Status < 500 &&
           std::find(std::begin(kAboutTheCollection), std::end(kAboutTheCollection),
                     reply.Status) == std::end(kAboutTheCollection);
}

QString ServerWords(const DavReply& reply) {
    const QString reason = DavErrorText(reply.Body);
    if (!reason.isEmpty() || reply.Body.size() > 300 || reply.Body.contains('<')) {
        return reason;
    }
    return QString::fromUtf8(reply.Body).simplified();
}

}  // namespace kelvane::cal
