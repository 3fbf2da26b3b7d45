#include "Tests/Fuzz/Targets.h"
#include "TunedeckCore/Support/Http/HttpReplyReader.h"

#include <algorithm>
#include <utility>

namespace tunedeck::fuzz {

namespace {

constexpr HttpLimits limits{.header = 512, .body = 64};

/// The status and body of a reply that arrives in pieces of a size, and then ends; nothing if it is rejected.
std::optional<std::pair<int, QByteArray>> replyIn(const QByteArray& input, qsizetype piece) {
    HttpReplyReader reader(limits);
    for (qsizetype at = 0; at < input.size() && !reader.isComplete(); at += piece) {
        if (reader.feed(QByteArrayView(input).sliced(at, std::min(piece, input.size() - at)))) {
            return {};
        }
    }
    if (!reader.isComplete() && (reader.finish() || !reader.isComplete())) {
        return {};
    }
    const HttpReply reply = reader.takeReply();
    require(reply.status >= 100 && reply.status <= 999, "a status has three digits");
    require(reply.body.size() <= static_cast<qsizetype>(limits.body), "no more than the limit is kept");
    return std::pair(reply.status, reply.body);
}

} // namespace

void httpReply(const QByteArray& input) {
    const auto atOnce = replyIn(input, std::max<qsizetype>(input.size(), 1));
    const auto bytewise = replyIn(input, 1);
    require(!atOnce || !bytewise || atOnce == bytewise, "a reply doesn't depend on how it is split");
}

} // namespace tunedeck::fuzz
