#include "TunedeckCore/Update/Appcast.h"

#include "TunedeckCore/Support/Json/Record.h"

namespace tunedeck {

template<>
struct json::Members<Release> {
    static constexpr auto list =
        std::tuple{member("version", &Release::version), member("minMacos", &Release::minMacos),
                   member("url", &Release::url),         member("sha256", &Release::sha256),
                   member("size", &Release::size),       member("publishedAt", &Release::publishedAt),
                   member("notes", &Release::notes),     member("dmgUrl", &Release::dmgUrl)};
};

template<>
struct json::Members<Appcast> {
    static constexpr auto list = std::tuple{member("latest", &Appcast::latest)};
};

std::expected<Appcast, json::Error> Appcast::decode(const QByteArray& bytes) {
    return json::decode<Appcast>(bytes, json::Keys::SnakeToCamel);
}

} // namespace tunedeck
