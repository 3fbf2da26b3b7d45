#include "TunedeckCore/Update/Appcast.h"

#include "TunedeckCore/Support/Json/Record.h"

namespace tunedeck {

std::expected<Appcast, json::Error> Appcast::decode(const QByteArray& bytes) {
    return json::decode<Appcast>(bytes, json::Keys::SnakeToCamel);
}

} // namespace tunedeck
