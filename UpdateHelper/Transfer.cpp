#include "UpdateHelper/Transfer.h"

#include <curl/curl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <chrono>
#include <cstdio>
#include <cstring>
#include <memory>

namespace tunedeck::fetch {

namespace {

constexpr int mostRedirects = 10;
constexpr auto progressPause = std::chrono::milliseconds(100);

using Handle = std::unique_ptr<CURL, decltype(&curl_easy_cleanup)>;
using File = std::unique_ptr<std::FILE, decltype(&std::fclose)>;
using Headers = std::unique_ptr<curl_slist, decltype(&curl_slist_free_all)>;

/// One download on its way through its redirects.
struct Download {
    CURL* handle;
    std::FILE* file;
    std::int64_t limit;
    std::int64_t received = 0;
    std::string trouble = {}; ///< ours, in place of the transport's words
    std::chrono::steady_clock::time_point told = {};
};

long statusOf(CURL* handle) {
    long status = 0;
    curl_easy_getinfo(handle, CURLINFO_RESPONSE_CODE, &status);
    return status;
}

std::size_t keep(char* bytes, std::size_t size, std::size_t count, void* context) {
    auto& download = *static_cast<Download*>(context);
    const std::size_t length = size * count;
    if (statusOf(download.handle) != 200) {
        return length;
    }
    download.received += static_cast<std::int64_t>(length);
    if (download.received > download.limit) {
        download.trouble = "The download is larger than it may be.";
        return 0;
    }
    if (std::fwrite(bytes, 1, length, download.file) != length) {
        download.trouble = std::strerror(errno);
        return 0;
    }
    return length;
}

int tell(void* context, curl_off_t total, curl_off_t, curl_off_t, curl_off_t) {
    auto& download = *static_cast<Download*>(context);
    const auto now = std::chrono::steady_clock::now();
    if (download.received > 0 && now - download.told >= progressPause) {
        download.told = now;
        std::printf("progress %lld %lld\n", static_cast<long long>(download.received),
                    total > 0 ? static_cast<long long>(total) : -1LL);
        std::fflush(stdout);
    }
    return 0;
}

void prepare(CURL* handle, const Options& options, Download& download, curl_slist* headers, char* words) {
    curl_easy_setopt(handle, CURLOPT_NOSIGNAL, 1L);
    curl_easy_setopt(handle, CURLOPT_PROTOCOLS_STR, "http,https");
    curl_easy_setopt(handle, CURLOPT_FOLLOWLOCATION, 0L);
    curl_easy_setopt(handle, CURLOPT_HTTPHEADER, headers);
    curl_easy_setopt(handle, CURLOPT_USERAGENT, "Tunedeck");
    curl_easy_setopt(handle, CURLOPT_ERRORBUFFER, words);
    curl_easy_setopt(handle, CURLOPT_MAXFILESIZE_LARGE, static_cast<curl_off_t>(options.limit));
    curl_easy_setopt(handle, CURLOPT_LOW_SPEED_LIMIT, 1L);
    curl_easy_setopt(handle, CURLOPT_LOW_SPEED_TIME, options.stall);
    curl_easy_setopt(handle, CURLOPT_CONNECTTIMEOUT, 30L);
    curl_easy_setopt(handle, CURLOPT_WRITEFUNCTION, &keep);
    curl_easy_setopt(handle, CURLOPT_WRITEDATA, &download);
    curl_easy_setopt(handle, CURLOPT_XFERINFOFUNCTION, &tell);
    curl_easy_setopt(handle, CURLOPT_XFERINFODATA, &download);
    curl_easy_setopt(handle, CURLOPT_NOPROGRESS, 0L);
}

bool startsWith(const char* text, const char* prefix) {
    return std::strncmp(text, prefix, std::strlen(prefix)) == 0;
}

/// Where an answer leads on to; empty when it leads nowhere.
std::expected<std::string, std::string> redirection(CURL* handle) {
    char* target = nullptr;
    curl_easy_getinfo(handle, CURLINFO_REDIRECT_URL, &target);
    if (!target) {
        return std::string();
    }
    char* from = nullptr;
    curl_easy_getinfo(handle, CURLINFO_EFFECTIVE_URL, &from);
    const bool secure = startsWith(target, "https://");
    if (!secure && (!startsWith(target, "http://") || !from || startsWith(from, "https://"))) {
        return std::unexpected("The server leads on to an address that isn't safe.");
    }
    return std::string(target);
}

/// One request and, when it was answered, where it leads.
std::expected<std::string, std::string> step(Download& download, const std::string& url, long timeout,
                                             const char* words) {
    curl_easy_setopt(download.handle, CURLOPT_URL, url.c_str());
    curl_easy_setopt(download.handle, CURLOPT_TIMEOUT, timeout);
    const CURLcode code = curl_easy_perform(download.handle);
    if (code != CURLE_OK) {
        if (!download.trouble.empty()) {
            return std::unexpected(download.trouble);
        }
        return std::unexpected(*words ? words : curl_easy_strerror(code));
    }
    return redirection(download.handle);
}

std::expected<long, std::string> follow(Download& download, const Options& options, const char* words) {
    const auto started = std::chrono::steady_clock::now();
    std::string url = options.url;
    for (int hop = 0; hop <= mostRedirects; ++hop) {
        const auto spent = std::chrono::duration_cast<std::chrono::seconds>(std::chrono::steady_clock::now() - started);
        if (options.timeout > 0 && spent.count() >= options.timeout) {
            return std::unexpected("The request timed out.");
        }
        auto next = step(download, url, options.timeout > 0 ? options.timeout - spent.count() : 0, words);
        if (!next) {
            return std::unexpected(next.error());
        }
        if (next->empty()) {
            return statusOf(download.handle);
        }
        url = *next;
    }
    return std::unexpected("The server leads on too many times.");
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
    std::array<char, CURL_ERROR_SIZE> words{};
    Download download{.handle = handle.get(), .file = file.get(), .limit = options.limit};
    prepare(handle.get(), options, download, headers.get(), words.data());
    auto status = follow(download, options, words.data());
    if (status && (std::fflush(file.get()) != 0 || fsync(fileno(file.get())) != 0)) {
        return std::unexpected(std::strerror(errno));
    }
    if (std::fclose(file.release()) != 0 && status) {
        return std::unexpected(std::strerror(errno));
    }
    return status;
}

} // namespace tunedeck::fetch
