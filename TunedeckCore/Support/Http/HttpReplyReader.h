#pragma once

#include "TunedeckCore/Support/Http/HttpFailure.h"
#include "TunedeckCore/Support/Http/HttpLimits.h"
#include "TunedeckCore/Support/Http/HttpReply.h"

#include <QByteArray>
#include <QByteArrayView>

#include <cstddef>
#include <memory>
#include <optional>

namespace tunedeck {

/// Parses one HTTP/1 reply incrementally. Skips interim replies (1xx) and ignores bytes after the end of the reply.
class HttpReplyReader {
public:
    explicit HttpReplyReader(HttpLimits limits);
    ~HttpReplyReader();
    HttpReplyReader(const HttpReplyReader&) = delete;
    HttpReplyReader& operator=(const HttpReplyReader&) = delete;

    /// Parses the next bytes. Must not be called after a failure.
    std::optional<HttpFailure> feed(QByteArrayView bytes);
    /// The peer has closed the connection, which ends a body without a length and breaks off other replies.
    std::optional<HttpFailure> finish();

    [[nodiscard]] bool isComplete() const;
    /// The reply, once it is complete.
    HttpReply takeReply();

private:
    struct Parser;

    [[nodiscard]] bool exceedsBodyLimit() const;
    [[nodiscard]] std::optional<HttpFailure> checkedStatus() const;
    void restart();

    HttpLimits m_limits;
    std::unique_ptr<Parser> m_parser;
    QByteArray m_unparsed;
    std::size_t m_interimBytes = 0;
};

} // namespace tunedeck
