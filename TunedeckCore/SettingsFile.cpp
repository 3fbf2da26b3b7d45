#include "TunedeckCore/SettingsFile.h"

#include "TunedeckCore/Locations/UserPaths.h"
#include "TunedeckCore/Support/Files/AtomicFile.h"
#include "TunedeckCore/Support/Json/Parse.h"

#include <QFileInfo>

namespace tunedeck {

using namespace Qt::StringLiterals;

namespace {

constexpr auto downloadDirKey = "download_dir"_L1;
constexpr auto onboardedKey = "onboarded"_L1;

} // namespace

SettingsFile SettingsFile::standard() {
    return {UserPaths::current().settings()};
}

std::optional<json::Value> SettingsFile::get(QLatin1StringView key) const {
    const auto bytes = readFile(url, json::Limits{}.bytes);
    const auto object = bytes ? json::parseObject(*bytes) : std::unexpected(json::Error{});
    if (!object) {
        return {};
    }
    const auto found = object->find(QString(key));
    return found == object->end() ? std::nullopt : std::optional(found->second);
}

std::expected<void, QString> SettingsFile::set(QLatin1StringView key, const std::optional<json::Value>& value) const {
    json::Object object;
    if (const auto bytes = readFile(url, json::Limits{}.bytes)) {
        auto parsed = json::parseObject(*bytes);
        // What is no object is replaced, but what only we can't take in may be somebody's settings.
        if (!parsed && parsed.error().beyondLimits) {
            return std::unexpected(u"%1 was left as it is: %2."_s.arg(url, parsed.error().reason));
        }
        object = parsed ? std::move(*parsed) : json::Object();
    } else if (QFileInfo(url).size() > json::Limits{}.bytes) {
        return std::unexpected(u"%1 was left as it is: it is too large for a settings file."_s.arg(url));
    }
    if (value) {
        object.insert_or_assign(QString(key), *value);
    } else {
        object.erase(QString(key));
    }
    const auto folder = createFolder(QFileInfo(url).path());
    return folder ? writeFileAtomically(url, json::prettyText(object)) : folder;
}

std::optional<QString> SettingsFile::downloadDir() const {
    const auto value = get(downloadDirKey);
    const auto* text = value ? value->as<QString>() : nullptr;
    return text == nullptr ? std::nullopt : std::optional(*text);
}

std::expected<void, QString> SettingsFile::setDownloadDir(const std::optional<QString>& path) const {
    return set(downloadDirKey, path ? std::optional(json::Value(*path)) : std::nullopt);
}

bool SettingsFile::onboarded() const {
    const auto value = get(onboardedKey);
    const auto* boolean = value ? value->as<bool>() : nullptr;
    return boolean != nullptr && *boolean;
}

std::expected<void, QString> SettingsFile::setOnboarded(bool value) const {
    return set(onboardedKey, value);
}

} // namespace tunedeck
