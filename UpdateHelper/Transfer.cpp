#include "UpdateHelper/Transfer.h"

#include <curl/curl.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <chrono>
#include <cstdio>
#include <cstring>
#include <memory>
#include <string_view>

namespace tunedeck::fetch {

namespace {

constexpr long maxRedirects = 10;
constexpr long connectSeconds = 30;
constexpr long stallSeconds = 30; // without a byte, after which the transfer is given up
constexpr auto progressInterval = std::chrono::milliseconds(100);

using Handle = std::unique_ptr<CURL, decltype(&curl_easy_cleanup)>;
using File = std::unique_ptr<std::FILE, decltype(&std::fclose)>;
using Headers = std::unique_ptr<curl_slist, decltype(&curl_slist_free_all)>;

/// State of one download across its redirects.
struct Download {
    CURL* handle;
    std::FILE* file;
    std::int64_t limit;
    std::int64_t received = 0;
    bool secure = false;    ///< the current request uses https
    std::string error = {}; ///< replaces libcurl's message
    std::chrono::steady_clock::time_point lastReport = {};
};

long statusOf(CURL* handle) {
    long status = 0;
    curl_easy_getinfo(handle, CURLINFO_RESPONSE_CODE, &status);
    return status;
}

/// Runs before each request, also for a redirect. libcurl can't forbid only the step from https to http.
int onRequest(void* context, char*, char*, int, int) {
    auto& download = *static_cast<Download*>(context);
    char* url = nullptr;
    curl_easy_getinfo(download.handle, CURLINFO_EFFECTIVE_URL, &url);
    const bool secure = url && std::string_view(url).starts_with("https://");
    if (download.secure && !secure) {
        download.error = "The server redirected to an insecure address.";
        return CURL_PREREQFUNC_ABORT;
    }
    download.secure = secure;
    return CURL_PREREQFUNC_OK;
}

std::size_t onBody(char* bytes, std::size_t size, std::size_t count, void* context) {
    auto& download = *static_cast<Download*>(context);
    const std::size_t length = size * count;
    if (statusOf(download.handle) != 200) {
        return length;
    }
    download.received += static_cast<std::int64_t>(length);
    if (download.received > download.limit) { // libcurl's own limit only applies to a known length
        download.error = "The download exceeds its size limit.";
        return 0;
    }
    if (std::fwrite(bytes, 1, length, download.file) != length) {
        download.error = std::strerror(errno);
        return 0;
    }
    return length;
}

int onProgress(void* context, curl_off_t total, curl_off_t, curl_off_t, curl_off_t) {
    auto& download = *static_cast<Download*>(context);
    const auto now = std::chrono::steady_clock::now();
    if (download.received > 0 && now - download.lastReport >= progressInterval) {
        download.lastReport = now;
        std::printf("progress %lld %lld\n", static_cast<long long>(download.received),
                    total > 0 ? static_cast<long long>(total) : -1LL);
        std::fflush(stdout);
    }
    return 0;
}

/// `message`: buffer for libcurl's error message.
void configure(CURL* handle, const Options& options, Download& download, curl_slist* headers, char* message) {
    curl_easy_setopt(handle, CURLOPT_URL, options.url.c_str());
    curl_easy_setopt(handle, CURLOPT_NOSIGNAL, 1L);
    curl_easy_setopt(handle, CURLOPT_PROTOCOLS_STR, "http,https"); // also for redirects
    curl_easy_setopt(handle, CURLOPT_FOLLOWLOCATION, 1L);
    curl_easy_setopt(handle, CURLOPT_MAXREDIRS, maxRedirects);
    curl_easy_setopt(handle, CURLOPT_FORBID_REUSE, 1L); // libcurl counts a retry on a stale connection as a redirect
    curl_easy_setopt(handle, CURLOPT_HTTPHEADER, headers);
    curl_easy_setopt(handle, CURLOPT_USERAGENT, "Tunedeck");
    curl_easy_setopt(handle, CURLOPT_ERRORBUFFER, message);
    curl_easy_setopt(handle, CURLOPT_MAXFILESIZE_LARGE, static_cast<curl_off_t>(options.limit));
    curl_easy_setopt(handle, CURLOPT_TIMEOUT, options.timeout);
    curl_easy_setopt(handle, CURLOPT_CONNECTTIMEOUT, connectSeconds);
    curl_easy_setopt(handle, CURLOPT_LOW_SPEED_LIMIT, 1L);
    curl_easy_setopt(handle, CURLOPT_LOW_SPEED_TIME, stallSeconds);
    curl_easy_setopt(handle, CURLOPT_PREREQFUNCTION, &onRequest);
    curl_easy_setopt(handle, CURLOPT_PREREQDATA, &download);
    curl_easy_setopt(handle, CURLOPT_WRITEFUNCTION, &onBody);
    curl_easy_setopt(handle, CURLOPT_WRITEDATA, &download);
    curl_easy_setopt(handle, CURLOPT_XFERINFOFUNCTION, &onProgress);
    curl_easy_setopt(handle, CURLOPT_XFERINFODATA, &download);
    curl_easy_setopt(handle, CURLOPT_NOPROGRESS, 0L);
}

} // namespace

std::expected<long, std::string> transfer(const Options& options) {
    const Handle handle(curl_easy_init(), &curl_easy_cleanup);
    File file(std::fopen(options.file.c_str(), "wbe"), &std::fclose);
    if (!file) {
        return std::unexpected(options.file + ": " + std::strerror(errno));
    }
    if (!handle) {
        return std::unexpected("Out of memory.");
    }
    const Headers headers(curl_slist_append(curl_slist_append(nullptr, "Cache-Control: no-cache"), "Pragma: no-cache"),
                          &curl_slist_free_all);
    std::array<char, CURL_ERROR_SIZE> message{};
    Download download{.handle = handle.get(), .file = file.get(), .limit = options.limit};
    configure(handle.get(), options, download, headers.get(), message.data());
    if (const CURLcode code = curl_easy_perform(handle.get()); code != CURLE_OK) {
        if (!download.error.empty()) {
            return std::unexpected(download.error);
        }
        return std::unexpected(message[0] ? message.data() : curl_easy_strerror(code));
    }
    if (std::fflush(file.get()) != 0 || fsync(fileno(file.get())) != 0 || std::fclose(file.release()) != 0) {
        return std::unexpected(std::strerror(errno));
    }
    return statusOf(handle.get());
}

} // namespace tunedeck::fetch
