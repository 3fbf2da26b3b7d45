#pragma once

#include <QByteArray>
#include <QJsonDocument>
#include <QJsonObject>

namespace tunedeck::test {

/// A minimal status document of the service. `changes` are members as JSON text (`"version":"6.0","recent_jobs":[]`)
/// that are added or replace those of the same name.
inline QByteArray statusDocument(const QByteArray& changes = {}) {
    auto document = QJsonDocument::fromJson(R"({"version":"5.0","download_dir":"/music","download_dir_source":"default",
        "download_dir_writable":true,"import_xml":"/music/import.xml","recent_jobs":[],
        "cloud":{"enabled":true,"base_url":"https://x.example","connected":true}})")
                        .object();
    const auto members = QJsonDocument::fromJson('{' + changes + '}').object();
    for (auto member = members.begin(); member != members.end(); ++member) {
        document[member.key()] = member.value();
    }
    return QJsonDocument(document).toJson(QJsonDocument::Compact);
}

} // namespace tunedeck::test
