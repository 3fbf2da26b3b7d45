#pragma once

#include <QByteArray>
#include <QString>

#include <array>
#include <cstddef>
#include <cstdint>
#include <expected>
#include <optional>
#include <span>
#include <string>
#include <tuple>
#include <type_traits>
#include <utility>
#include <vector>

/// The one JSON decoder. A record's members are declared once, by name; their C++ types say the rest: a member of type
/// std::optional may be absent or null, any other is required. QString, bool, std::int64_t, double, other records and
/// std::vector of these are the known types, and each accepts only its exact JSON type.
///
///     template<> struct tunedeck::json::Members<Cloud> {
///         static constexpr auto list = std::tuple{member("enabled", &Cloud::enabled), …};
///     };
///
/// A number is an integer when its value is one and fits: 5, and 5.0 and 5e3 up to 2^53 in magnitude (beyond, such
/// a form no longer says exactly which integer is meant). Members that no record declares are ignored, whatever they
/// hold. Of several members with one name the last counts.
namespace tunedeck::json {

/// How the keys of a document are compared with the names of the members.
enum class Keys {
    AsWritten,   ///< to the letter
    SnakeToCamel ///< "download_dir" and "downloadDir" both name "downloadDir"
};

/// Why a document was refused.
struct Error {
    QString path;              ///< of the member, as in "recentJobs[2].jobId"; empty for the document itself
    QString reason;            ///< what is wrong there
    bool beyondLimits = false; ///< the document may be sound, but passes a bound on size, depth or a number

    /// One sentence for a person.
    [[nodiscard]] QString description() const;
};

/// Bounds on a document.
struct Limits {
    std::int64_t bytes = 8 * 1024 * 1024;
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

/// A key as a document writes it in the form of a member's name: "download_dir", "DOWNLOAD_DIR" and
/// "downloadDir" give "downloadDir"; leading and trailing underscores stay, a key without any in between is as it was.
QByteArray snakeToCamel(const QByteArray& key);

namespace detail {

struct MemberShape;

/// What the decoder has to know of a C++ type, without the type.
struct TypeShape {
    enum class Kind { Text, Boolean, Integer, Number, Record, List };
    Kind kind;
    std::span<const MemberShape> members = {}; ///< of a record
    const TypeShape* element = nullptr;        ///< of a list
    void* (*append)(void* list) = nullptr;     ///< adds an element to a list and gives its place
};

/// One member of a record.
struct MemberShape {
    const char* name;
    std::size_t length;
    const TypeShape* type;
    bool required;
    void* (*place)(void* record); ///< where its value goes; makes an optional hold one
};

template<class Type>
struct Unwrapped {
    using Value = Type;
    static constexpr bool optional = false;
};
template<class Type>
struct Unwrapped<std::optional<Type>> {
    using Value = Type;
    static constexpr bool optional = true;
};

template<class Type>
inline constexpr bool isList = false;
template<class Type>
inline constexpr bool isList<std::vector<Type>> = true;

template<class Record, std::size_t Index>
void* place(void* record) {
    auto& value = static_cast<Record*>(record)->*std::get<Index>(Members<Record>::list).pointer;
    if constexpr (Unwrapped<std::remove_reference_t<decltype(value)>>::optional) {
        // clang takes a record nested in another for one without a default constructor when an optional of it is a
        // member.
        return &value.emplace(typename Unwrapped<std::remove_reference_t<decltype(value)>>::Value{});
    } else {
        return &value;
    }
}

template<class List>
void* append(void* list) {
    return &static_cast<List*>(list)->emplace_back();
}

template<class Type>
constexpr const TypeShape& shapeOf();

template<class Record, std::size_t Index>
constexpr MemberShape memberShape() {
    constexpr auto declared = std::get<Index>(Members<Record>::list);
    using Kind = Unwrapped<std::remove_reference_t<decltype(std::declval<Record&>().*declared.pointer)>>;
    return {declared.name, std::char_traits<char>::length(declared.name), &shapeOf<typename Kind::Value>(),
            !Kind::optional, &place<Record, Index>};
}

template<class Record>
struct RecordShape {
    static constexpr auto members = []<std::size_t... Index>(std::index_sequence<Index...>) {
        return std::array{memberShape<Record, Index>()...};
    }(std::make_index_sequence<std::tuple_size_v<decltype(Members<Record>::list)>>{});
};

template<class Type>
inline constexpr TypeShape shape = [] {
    if constexpr (std::is_same_v<Type, QString>) {
        return TypeShape{TypeShape::Kind::Text};
    } else if constexpr (std::is_same_v<Type, bool>) {
        return TypeShape{TypeShape::Kind::Boolean};
    } else if constexpr (std::is_same_v<Type, std::int64_t>) {
        return TypeShape{TypeShape::Kind::Integer};
    } else if constexpr (std::is_same_v<Type, double>) {
        return TypeShape{TypeShape::Kind::Number};
    } else if constexpr (isList<Type>) {
        return TypeShape{TypeShape::Kind::List, {}, &shapeOf<typename Type::value_type>(), &append<Type>};
    } else {
        return TypeShape{TypeShape::Kind::Record, RecordShape<Type>::members};
    }
}();

template<class Type>
constexpr const TypeShape& shapeOf() {
    return shape<Type>;
}

/// Fills `value`, which has the given shape, from a document; the error when that fails.
std::optional<Error> decode(const QByteArray& bytes, const TypeShape& shape, void* value, Keys keys, Limits limits);

} // namespace detail

/// Decodes a whole document into a record.
template<class Record>
std::expected<Record, Error> decode(const QByteArray& bytes, Keys keys, Limits limits = {}) {
    std::expected<Record, Error> result;
    if (auto error = detail::decode(bytes, detail::shapeOf<Record>(), &*result, keys, limits)) {
        result = std::unexpected(std::move(*error));
    }
    return result;
}

} // namespace tunedeck::json
