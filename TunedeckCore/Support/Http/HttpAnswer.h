#pragma once

#include "TunedeckCore/Support/Http/LocalHttp.h"

#include <cstddef>
#include <memory>
#include <optional>

namespace tunedeck {

/// Reads one HTTP/1 answer from a connection's bytes as they come. Interim answers (1xx) are skipped, what follows the
/// end of the answer is ignored.
class HttpAnswer {
public:
    explicit HttpAnswer(HttpLimits limits);
    ~HttpAnswer();
    HttpAnswer(const HttpAnswer&) = delete;
    HttpAnswer& operator=(const HttpAnswer&) = delete;

    /// Takes the bytes that came next; what is wrong with them, if anything. Not to be called after a failure.
    std::optional<HttpFailure> feed(const char* bytes, std::size_t size);

    /// Takes note that no more bytes will come, which is the proper end of some answers and breaks off others.
    std::optional<HttpFailure> end();

    [[nodiscard]] bool isWhole() const;

    /// The answer, once it is whole.
    HttpReply take();

private:
    class Reader;
    std::unique_ptr<Reader> m_reader;
};

} // namespace tunedeck
