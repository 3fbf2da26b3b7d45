#include "TunedeckCore/Support/Http/HttpReplyReader.h"

#include <boost/asio/buffer.hpp>
#include <boost/beast/http/error.hpp>
#include <boost/beast/http/message.hpp>
#include <boost/beast/http/parser.hpp>

#include <algorithm>
#include <cstdint>
#include <utility>

namespace tunedeck {

namespace {

namespace http = boost::beast::http;
using boost::asio::const_buffer;
using boost::beast::error_code;

/// Makes the parser write the body into a QByteArray.
struct BytesBody {
    using value_type = QByteArray; // NOLINT(readability-identifier-naming): names required by the parser

    class reader { // NOLINT(readability-identifier-naming)
    public:
        template<bool isRequest, class Fields>
        reader(http::header<isRequest, Fields>& /*header*/, QByteArray& bytes) : m_bytes(bytes) {}

        void init(const boost::optional<std::uint64_t>& length, error_code& error) {
            error = {};
            // The peer may announce more than it sends.
            constexpr std::uint64_t maximum = 1024 * 1024;
            m_bytes.reserve(static_cast<qsizetype>(std::min(length.value_or(0), maximum)));
        }

        template<class Buffers>
        std::size_t put(const Buffers& buffers, error_code& error) {
            error = {};
            std::size_t size = 0;
            for (auto it = boost::asio::buffer_sequence_begin(buffers); it != boost::asio::buffer_sequence_end(buffers);
                 ++it) {
                const const_buffer buffer = *it;
                m_bytes.append(static_cast<const char*>(buffer.data()), static_cast<qsizetype>(buffer.size()));
                size += buffer.size();
            }
            return size;
        }

        static void finish(error_code& error) { error = {}; }

    private:
        QByteArray& m_bytes;
    };
};

HttpFailure failureOf(const error_code& error) {
    if (error == http::error::header_limit || error == http::error::body_limit) {
        return HttpFailure::TooLarge;
    }
    if (error == http::error::end_of_stream || error == http::error::partial_message) {
        return HttpFailure::BrokenOff;
    }
    return HttpFailure::Malformed;
}

} // namespace

struct HttpReplyReader::Parser : http::response_parser<BytesBody> {};

HttpReplyReader::HttpReplyReader(HttpLimits limits) : m_limits(limits) {
    restart();
}

HttpReplyReader::~HttpReplyReader() = default;

std::optional<HttpFailure> HttpReplyReader::feed(QByteArrayView bytes) {
    // The parser wants the beginning of an incomplete header, chunk size or trailer again, with more bytes after it.
    const QByteArray joined = m_unparsed.isEmpty() ? QByteArray() : m_unparsed + bytes.toByteArray();
    m_unparsed.clear();
    bytes = joined.isEmpty() ? bytes : joined;
    while (!bytes.isEmpty() && !m_parser->is_done()) {
        error_code error;
        const auto parsed = m_parser->put(const_buffer(bytes.data(), static_cast<std::size_t>(bytes.size())), error);
        bytes = bytes.sliced(static_cast<qsizetype>(parsed));
        if (error == http::error::need_more) {
            m_unparsed = bytes.toByteArray();
            return bytes.size() > static_cast<qsizetype>(m_limits.header) ? std::optional(HttpFailure::TooLarge)
                                                                          : std::nullopt;
        }
        if (error) {
            return failureOf(error);
        }
        if (exceedsBodyLimit()) {
            return HttpFailure::TooLarge;
        }
        if (m_parser->is_done() && m_parser->get().result_int() / 100 == 1) {
            m_interimBytes += parsed;
            if (m_interimBytes > m_limits.header) {
                return HttpFailure::TooLarge;
            }
            restart();
        }
    }
    return checkedStatus();
}

std::optional<HttpFailure> HttpReplyReader::finish() {
    if (!m_parser->got_some()) {
        return HttpFailure::BrokenOff;
    }
    error_code error;
    m_parser->put_eof(error);
    return error ? std::optional(failureOf(error)) : checkedStatus();
}

bool HttpReplyReader::isComplete() const {
    return m_parser->is_done();
}

HttpReply HttpReplyReader::takeReply() {
    auto& message = m_parser->get();
    return {.status = static_cast<int>(message.result_int()), .body = std::move(message.body())};
}

/// The parser's own body_limit() isn't enough: the error of a length above it is lost when the body begins in the same
/// piece as the header (Boost 1.74).
bool HttpReplyReader::exceedsBodyLimit() const {
    const bool announcesTooMuch = m_parser->is_header_done() && m_parser->content_length().value_or(0) > m_limits.body;
    return announcesTooMuch || static_cast<std::size_t>(m_parser->get().body().size()) > m_limits.body;
}

/// Fails for a complete reply whose status doesn't have three digits.
std::optional<HttpFailure> HttpReplyReader::checkedStatus() const {
    const bool isWrong = m_parser->is_done() && m_parser->get().result_int() < 100;
    return isWrong ? std::optional(HttpFailure::Malformed) : std::nullopt;
}

void HttpReplyReader::restart() {
    m_parser = std::make_unique<Parser>();
    m_parser->eager(true);
    m_parser->header_limit(static_cast<std::uint32_t>(std::min<std::size_t>(m_limits.header, UINT32_MAX)));
    m_parser->body_limit(m_limits.body);
}

} // namespace tunedeck
