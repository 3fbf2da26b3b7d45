#include "TunedeckCore/Support/Http/HttpAnswer.h"

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

/// Lets the parser put a body's bytes where they are wanted in the end.
struct BytesBody {
    using value_type = QByteArray; // NOLINT(readability-identifier-naming): the parser asks for these names

    class reader { // NOLINT(readability-identifier-naming)
    public:
        template<bool isRequest, class Fields>
        reader(http::header<isRequest, Fields>& /*header*/, QByteArray& bytes) : m_bytes(bytes) {}

        void init(const boost::optional<std::uint64_t>& length, error_code& error) {
            error = {};
            // The limit on bodies has been applied; what is announced need not come.
            constexpr std::uint64_t most = 1024 * 1024;
            m_bytes.reserve(static_cast<qsizetype>(std::min(length.value_or(0), most)));
        }

        template<class Buffers>
        std::size_t put(const Buffers& buffers, error_code& error) {
            error = {};
            std::size_t taken = 0;
            for (auto it = boost::asio::buffer_sequence_begin(buffers); it != boost::asio::buffer_sequence_end(buffers);
                 ++it) {
                const const_buffer buffer = *it;
                m_bytes.append(static_cast<const char*>(buffer.data()), static_cast<qsizetype>(buffer.size()));
                taken += buffer.size();
            }
            return taken;
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

class HttpAnswer::Reader {
public:
    explicit Reader(HttpLimits limits) : m_limits(limits) { restart(); }

    std::optional<HttpFailure> feed(const char* bytes, std::size_t size) {
        if (!m_rest.isEmpty()) {
            m_rest.append(bytes, static_cast<qsizetype>(size));
            const auto joined = std::exchange(m_rest, {});
            return read(joined.constData(), static_cast<std::size_t>(joined.size()));
        }
        return read(bytes, size);
    }

    std::optional<HttpFailure> end() {
        if (!m_parser->got_some()) {
            return HttpFailure::BrokenOff;
        }
        error_code error;
        m_parser->put_eof(error);
        return error ? std::optional(failureOf(error)) : std::nullopt;
    }

    [[nodiscard]] bool isWhole() const { return m_parser->is_done(); }

    HttpReply take() {
        auto& message = m_parser->get();
        return {.status = static_cast<int>(message.result_int()), .body = std::move(message.body())};
    }

private:
    using Parser = http::response_parser<BytesBody>;

    void restart() {
        m_parser = std::make_unique<Parser>();
        m_parser->eager(true);
        m_parser->header_limit(static_cast<std::uint32_t>(std::min<std::size_t>(m_limits.header, UINT32_MAX)));
        m_parser->body_limit(m_limits.body);
    }

    std::optional<HttpFailure> read(const char* bytes, std::size_t size) {
        while (size > 0 && !m_parser->is_done()) {
            error_code error;
            const auto taken = m_parser->put(const_buffer(bytes, size), error);
            bytes += taken;
            size -= taken;
            if (error == http::error::need_more) {
                return keep(bytes, size);
            }
            if (error) {
                return failureOf(error);
            }
            if (m_parser->is_done() && m_parser->get().result_int() / 100 == 1) {
                m_interim += taken;
                if (m_interim > m_limits.header) {
                    return HttpFailure::TooLarge;
                }
                restart();
            }
        }
        return m_parser->is_done() && m_parser->get().result_int() < 100 ? std::optional(HttpFailure::Malformed)
                                                                         : std::nullopt;
    }

    /// The parser wants the beginning of a header, a chunk's line or a trailer again, with more after it.
    std::optional<HttpFailure> keep(const char* bytes, std::size_t size) {
        if (size > m_limits.header) {
            return HttpFailure::TooLarge;
        }
        m_rest = QByteArray(bytes, static_cast<qsizetype>(size));
        return std::nullopt;
    }

    HttpLimits m_limits;
    std::unique_ptr<Parser> m_parser;
    QByteArray m_rest;
    std::size_t m_interim = 0;
};

HttpAnswer::HttpAnswer(HttpLimits limits) : m_reader(std::make_unique<Reader>(limits)) {}

HttpAnswer::~HttpAnswer() = default;

std::optional<HttpFailure> HttpAnswer::feed(const char* bytes, std::size_t size) {
    return m_reader->feed(bytes, size);
}

std::optional<HttpFailure> HttpAnswer::end() {
    return m_reader->end();
}

bool HttpAnswer::isWhole() const {
    return m_reader->isWhole();
}

HttpReply HttpAnswer::take() {
    return m_reader->take();
}

} // namespace tunedeck
