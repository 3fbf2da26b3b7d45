#include "TunedeckCore/SettingsFile.h"

#include "TunedeckCore/Locations/UserPaths.h"
#include "TunedeckCore/Support/Files/AtomicFile.h"
#include "TunedeckCore/Support/Files/Document.h"
#include "TunedeckCore/Support/Json/Parse.h"

#include <QFileInfo>

namespace tunedeck {

using namespace Qt::StringLiterals;

namespace {

constexpr auto downloadDirKey = "download_dir"_L1;
constexpr auto onboardedKey = "onboarded"_L1;

/// Empty if the file can't be read as an object.
json::Object objectIn(const QString& path) {
    const auto bytes = readDocument(path);
    return bytes ? json::parseObject(*bytes).value_or(json::Object()) : json::Object();
}

} // namespace

SettingsFile SettingsFile::standard() {
    return {UserPaths::current().settings()};
}

std::expected<void, QString> SettingsFile::set(QLatin1StringView key, const std::optional<json::Value>& value) const {
    json::Object object;
    if (const auto bytes = readDocument(url)) {
        auto parsed = json::parseObject(*bytes);
        // Replace a file that isn't a JSON object, but keep one that only exceeds our limits: it may be valid.
        if (!parsed && parsed.error().beyondLimits) {
            return std::unexpected(u"%1 was left as it is: %2."_s.arg(url, parsed.error().reason));
        }
        object = parsed ? std::move(*parsed) : json::Object();
    }
    if (value) {
        object.set(key, *value);
    } else {
        object.remove(key);
    }
    const auto folder = createFolder(QFileInfo(url).path());
    return folder ? writeFileAtomically(url, json::prettyText(object)) : folder;
}

std::optional<QString> SettingsFile::downloadDir() const {
    return objectIn(url).text(downloadDirKey);
}

std::expected<void, QString> SettingsFile::setDownloadDir(const std::optional<QString>& path) const {
    return set(downloadDirKey, path ? std::optional(json::Value(*path)) : std::nullopt);
}

bool SettingsFile::onboarded() const {
    const auto object = objectIn(url);
    const auto* value = object.find(onboardedKey);
    return value != nullptr && *value == json::Value(true);
}

std::expected<void, QString> SettingsFile::setOnboarded(bool value) const {
    return set(onboardedKey, value);
}

} // namespace tunedeck
