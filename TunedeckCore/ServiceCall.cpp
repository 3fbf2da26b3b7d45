#include "TunedeckCore/ServiceCall.h"

#include "TunedeckCore/ServiceEndpoint.h"

#include <rapidjson/stringbuffer.h>
#include <rapidjson/writer.h>

namespace tunedeck::service {

QUrl resource(const std::optional<QUrl>& base, const QByteArray& encodedPath) {
    return appendingPath(base ? *base : ServiceEndpoint::base(ServiceEndpoint::runtimeFile()), encodedPath);
}

QByteArray object(const std::map<QString, QString>& members) {
    rapidjson::StringBuffer text;
    rapidjson::Writer writer(text);
    const auto write = [&writer](const QString& string) {
        const auto bytes = string.toUtf8();
        writer.String(bytes.constData(), static_cast<rapidjson::SizeType>(bytes.size()));
    };
    writer.StartObject();
    for (const auto& [name, value] : members) {
        write(name);
        write(value);
    }
    writer.EndObject();
    return {text.GetString(), static_cast<qsizetype>(text.GetSize())};
}

QString sentence(HttpFailure failure) {
    return failure == HttpFailure::TooLarge ? unexpectedReply() : QStringLiteral("tunedeck isn't running.");
}

QString unexpectedReply() {
    return QStringLiteral("Unexpected reply from tunedeck.");
}

} // namespace tunedeck::service
