#pragma once

#include <QByteArray>
#include <QString>

#include <cstdint>
#include <expected>
#include <optional>
#include <tuple>
#include <vector>

/// The one JSON decoder. A record's members are declared once, by name; their C++ types say the rest: a member of type
/// std::optional may be absent or null, any other is required. QString, bool, std::int64_t, double, other records and
/// std::vector of these are the known types, and each accepts only its exact JSON type.
///
///     template <> struct tunedeck::json::Members<Cloud> {
///         static constexpr auto list = std::tuple{member("enabled", &Cloud::enabled), …};
///     };
namespace tunedeck::json {

/// How the keys of a document are compared with the names of the members.
enum class Keys {
    AsWritten,   ///< to the letter
    SnakeToCamel ///< "download_dir" and "downloadDir" both name "downloadDir"
};

/// Why a document was refused.
struct Error {
    QString path;   ///< of the member, as in "recentJobs[2].jobId"; empty for the document itself
    QString reason; ///< what is wrong there

    /// One sentence for a person.
    [[nodiscard]] QString description() const;
};

/// Bounds on a document.
struct Limits {
    std::int64_t bytes = 32 * 1024 * 1024;
    int depth = 128;
};

/// A record's declaration: specialised for each with a static tuple `list` of member().
template<class Record>
struct Members;

template<class Record, class Type>
struct Member {
    const char* name;
    Type Record::* pointer;
};

/// Declares one member: its name in camel case (or as written) and where it goes.
template<class Record, class Type>
constexpr Member<Record, Type> member(const char* name, Type Record::* pointer) {
    return {name, pointer};
}

/// Decodes a whole document into a record.
template<class Record>
std::expected<Record, Error> decode(const QByteArray& bytes, Keys keys, Limits limits = {});

} // namespace tunedeck::json
