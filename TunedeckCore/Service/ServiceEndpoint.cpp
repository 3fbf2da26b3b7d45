#include "TunedeckCore/Service/ServiceEndpoint.h"

#include "TunedeckCore/Locations/UserPaths.h"
#include "TunedeckCore/Support/Files/Document.h"
#include "TunedeckCore/Support/Json/Parse.h"

#include <optional>

namespace tunedeck::ServiceEndpoint {

using namespace Qt::StringLiterals;

namespace {

/// The port in a runtime file, 1 to 65535. Unlike in other documents, 8000.0 is not an integer.
std::optional<int> portIn(const QByteArray& document) {
    const auto object = json::parseObject(document);
    if (!object) {
        return std::nullopt;
    }
    const auto* member = object->find(QLatin1StringView("port"));
    const auto* number = member == nullptr ? nullptr : member->as<json::Number>();
    const int port = number == nullptr ? 0 : number->text.toInt();
    return port >= 1 && port <= 65535 ? std::optional(port) : std::nullopt;
}

} // namespace

const QString& runtimeFile() {
    static const QString path = UserPaths::current().runtimeFile();
    return path;
}

const QUrl& defaultBase() {
    static const QUrl url(u"http://127.0.0.1:8000"_s);
    return url;
}

QUrl base(const QString& file) {
    const auto bytes = readDocument(file);
    const auto port = bytes ? portIn(*bytes) : std::nullopt;
    if (!port) {
        return defaultBase();
    }
    auto url = defaultBase();
    url.setPort(*port);
    return url;
}

} // namespace tunedeck::ServiceEndpoint
