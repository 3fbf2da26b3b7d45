#include "TunedeckCore/Support/Files/FileDescriptor.h"
#include "UpdateHelper/Subcommands.h"

#include <curl/curl.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <charconv>
#include <chrono>
#include <cstdio>
#include <cstring>
#include <memory>
#include <string_view>

namespace tunedeck::helper {

namespace {

using Clock = std::chrono::steady_clock;

constexpr int maxRedirects = 10;
constexpr long connectSeconds = 30;
constexpr long stallSeconds = 30; // without a byte, after which the transfer is given up
constexpr auto progressInterval = std::chrono::milliseconds(100);

using Handle = std::unique_ptr<CURL, decltype(&curl_easy_cleanup)>;
using Headers = std::unique_ptr<curl_slist, decltype(&curl_slist_free_all)>;
using Url = std::unique_ptr<CURLU, decltype(&curl_url_cleanup)>;

/// State of one download across its redirects.
struct Download {
    CURL* handle;
    std::int64_t limit;
    std::int64_t received = 0;
    bool isRefused = false; ///< the status isn't 200
    std::string error = {}; ///< replaces libcurl's message
    Clock::time_point lastReport = {};
};

Outcome failure(std::string_view text) {
    return std::unexpected(UpdateError::other(QString::fromUtf8(text)));
}

long statusOf(CURL* handle) {
    long status = 0;
    curl_easy_getinfo(handle, CURLINFO_RESPONSE_CODE, &status);
    return status;
}

/// The value of a response's header; nothing if it has none with this name and index.
const curl_header* header(CURL* handle, const char* name, std::size_t index = 0) {
    curl_header* found = nullptr;
    return curl_easy_header(handle, name, index, CURLH_HEADER, -1, &found) == CURLHE_OK ? found : nullptr;
}

/// Why a response can't be accepted because of its lengths; empty if it can.
std::string lengthError(const Download& download) {
    const auto* first = header(download.handle, "Content-Length");
    for (std::size_t i = 0; first && i < first->amount; ++i) {
        const std::string_view text = header(download.handle, "Content-Length", i)->value;
        std::int64_t length = -1;
        const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), length);
        if (error != std::errc() || end != text.data() + text.size() || length < 0 ||
            text != header(download.handle, "Content-Length")->value) {
            return "The server sent an invalid length.";
        }
        if (length > download.limit) {
            return "The download exceeds its size limit.";
        }
    }
    return {};
}

/// Ends the transfer at the end of the header if its body isn't needed.
std::size_t onHeader(char* bytes, std::size_t size, std::size_t count, void* context) {
    auto& download = *static_cast<Download*>(context);
    const std::string_view line(bytes, size * count);
    const long status = statusOf(download.handle);
    if ((line != "\r\n" && line != "\n") || status < 200) { // below 200, another header follows
        return line.size();
    }
    download.isRefused = status != 200;
    download.error = download.isRefused ? std::string() : lengthError(download);
    return download.isRefused || !download.error.empty() ? 0 : line.size();
}

std::size_t onBody(char* bytes, std::size_t size, std::size_t count, void* context) {
    auto& download = *static_cast<Download*>(context);
    const std::size_t length = size * count;
    download.received += static_cast<std::int64_t>(length);
    if (download.received > download.limit) {
        download.error = "The download exceeds its size limit.";
        return 0;
    }
    if (!writeAll(STDOUT_FILENO, bytes, length)) {
        download.error = std::strerror(errno);
        return 0;
    }
    return length;
}

int onProgress(void* context, curl_off_t total, curl_off_t, curl_off_t, curl_off_t) {
    auto& download = *static_cast<Download*>(context);
    const auto now = Clock::now();
    if (download.received > 0 && now - download.lastReport >= progressInterval) {
        download.lastReport = now;
        std::fprintf(stderr, "progress %lld %lld\n", static_cast<long long>(download.received),
                     total > 0 ? static_cast<long long>(total) : -1LL);
    }
    return 0;
}

/// `message`: buffer for libcurl's error message.
void configure(CURL* handle, Download& download, curl_slist* headers, char* message) {
    curl_easy_setopt(handle, CURLOPT_NOSIGNAL, 1L);
    curl_easy_setopt(handle, CURLOPT_QUICK_EXIT, 1L); // doesn't wait for the name server after a timeout
    curl_easy_setopt(handle, CURLOPT_PROTOCOLS_STR, "http,https");
    curl_easy_setopt(handle, CURLOPT_SUPPRESS_CONNECT_HEADERS, 1L); // of a proxy
    curl_easy_setopt(handle, CURLOPT_HTTPHEADER, headers);
    curl_easy_setopt(handle, CURLOPT_USERAGENT, "Tunedeck");
    curl_easy_setopt(handle, CURLOPT_ERRORBUFFER, message);
    curl_easy_setopt(handle, CURLOPT_CONNECTTIMEOUT, connectSeconds);
    curl_easy_setopt(handle, CURLOPT_LOW_SPEED_LIMIT, 1L);
    curl_easy_setopt(handle, CURLOPT_LOW_SPEED_TIME, stallSeconds);
    curl_easy_setopt(handle, CURLOPT_HEADERFUNCTION, &onHeader);
    curl_easy_setopt(handle, CURLOPT_HEADERDATA, &download);
    curl_easy_setopt(handle, CURLOPT_WRITEFUNCTION, &onBody);
    curl_easy_setopt(handle, CURLOPT_WRITEDATA, &download);
    curl_easy_setopt(handle, CURLOPT_XFERINFOFUNCTION, &onProgress);
    curl_easy_setopt(handle, CURLOPT_XFERINFODATA, &download);
    curl_easy_setopt(handle, CURLOPT_NOPROGRESS, 0L);
}

/// The absolute form of a redirect's target; empty if it is invalid.
std::string resolved(const std::string& base, const char* target) {
    const Url url(curl_url(), &curl_url_cleanup);
    char* text = nullptr;
    if (curl_url_set(url.get(), CURLUPART_URL, base.c_str(), 0) != CURLUE_OK ||
        curl_url_set(url.get(), CURLUPART_URL, target, CURLU_URLENCODE) != CURLUE_OK ||
        curl_url_get(url.get(), CURLUPART_URL, &text, 0) != CURLUE_OK) {
        return {};
    }
    const std::unique_ptr<char, decltype(&curl_free)> owner(text, &curl_free);
    return text;
}

} // namespace

Outcome fetch(const Options& options) {
    curl_global_init(CURL_GLOBAL_DEFAULT);
    const Handle handle(curl_easy_init(), &curl_easy_cleanup);
    const Headers headers(curl_slist_append(curl_slist_append(nullptr, "Cache-Control: no-cache"), "Pragma: no-cache"),
                          &curl_slist_free_all);
    std::array<char, CURL_ERROR_SIZE> message{};
    Download download{.handle = handle.get(), .limit = options.limit};
    configure(handle.get(), download, headers.get(), message.data());
    const auto end = Clock::now() + std::chrono::seconds(options.timeout);
    std::string url = options.operands[0];
    for (int redirects = 0;; ++redirects) {
        const auto left = std::chrono::ceil<std::chrono::milliseconds>(end - Clock::now()).count();
        download.isRefused = false;
        curl_easy_setopt(handle.get(), CURLOPT_URL, url.c_str());
        curl_easy_setopt(handle.get(), CURLOPT_TIMEOUT_MS, std::max(1L, static_cast<long>(left)));
        const CURLcode code = curl_easy_perform(handle.get());
        if (code == CURLE_OPERATION_TIMEDOUT) {
            return failure("The request timed out.");
        }
        if (!download.error.empty()) {
            return failure(download.error);
        }
        if (code != CURLE_OK && !download.isRefused) {
            return failure(message[0] ? message.data() : curl_easy_strerror(code));
        }
        if (!download.isRefused) {
            return {};
        }
        const int status = static_cast<int>(statusOf(handle.get()));
        const auto* target = status / 100 == 3 ? header(handle.get(), "Location") : nullptr;
        if (!target) {
            return std::unexpected(UpdateError::http(status));
        }
        const std::string next = resolved(url, target->value);
        if (redirects == maxRedirects || next.empty()) {
            return failure("The server redirected too often or to an invalid address.");
        }
        if (url.starts_with("https:") && !next.starts_with("https:")) {
            return failure("The server redirected to an insecure address.");
        }
        url = next;
    }
}

} // namespace tunedeck::helper
