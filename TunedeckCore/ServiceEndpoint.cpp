#include "TunedeckCore/ServiceEndpoint.h"

#include "TunedeckCore/Support/AtomicFile.h"

#include <QDir>

#include <rapidjson/document.h>

#include <optional>

namespace tunedeck::ServiceEndpoint {

namespace {

/// The port that a runtime file names: an integer by its form, 1 to 65535. Of several the last counts.
std::optional<int> portIn(const QByteArray& json) {
    // The parser takes a zero byte for the end.
    if (json.contains('\0')) {
        return std::nullopt;
    }
    rapidjson::Document document;
    document.Parse<rapidjson::kParseIterativeFlag | rapidjson::kParseValidateEncodingFlag>(
        json.constData(), static_cast<std::size_t>(json.size()));
    if (document.HasParseError() || !document.IsObject()) {
        return std::nullopt;
    }
    std::optional<int> port;
    for (const auto& member : document.GetObject()) {
        if (member.name == "port") {
            const bool fits = member.value.IsInt() && member.value.GetInt() >= 1 && member.value.GetInt() <= 65535;
            port = fits ? std::optional(member.value.GetInt()) : std::nullopt;
        }
    }
    return port;
}

} // namespace

const QString& runtimeFile() {
    static const QString path = QDir::homePath() + QStringLiteral("/.tunedeck/runtime.json");
    return path;
}

const QUrl& defaultBase() {
    static const QUrl url(QStringLiteral("http://127.0.0.1:8000"));
    return url;
}

QUrl base(const QString& file) {
    constexpr int limit = 64 * 1024;
    const auto bytes = readFile(file, limit);
    const auto port = bytes ? portIn(*bytes) : std::nullopt;
    if (!port) {
        return defaultBase();
    }
    auto url = defaultBase();
    url.setPort(*port);
    return url;
}

} // namespace tunedeck::ServiceEndpoint
