#pragma once

#include "TunedeckCore/Support/Json/Error.h"
#include "TunedeckCore/Support/Json/Parse.h"
#include "TunedeckCore/Support/Json/Value.h"

#include <QByteArray>
#include <QLatin1StringView>
#include <QString>

#include <concepts>
#include <cstddef>
#include <cstdint>
#include <expected>
#include <optional>
#include <tuple>
#include <utility>
#include <vector>

namespace tunedeck::json {

/// Declares how a record is stored as an object:
///
///     template<> struct tunedeck::json::Members<Cloud> {
///         static constexpr auto list = std::tuple{member("enabled", &Cloud::enabled), …};
///     };
///
/// A member of type std::optional may be absent or null, and encode() leaves it out when it is empty; any other is
/// required. A second tuple `internal` declares members that encode() writes for Audience::Internal only.
///
/// Each type accepts exactly one JSON type: QString, bool, double, integers, std::vector, other records, and whatever
/// has overloads of read() and write() in this namespace. Members of an object that the record doesn't declare are
/// ignored.
template<class Record>
struct Members;

template<class Record, class Type>
struct Member {
    QLatin1StringView name;
    Type Record::* pointer;
};

template<class Record, class Type>
constexpr Member<Record, Type> member(const char* name, Type Record::* pointer) {
    return {QLatin1StringView(name), pointer};
}

template<class Type>
concept IsRecord = requires { Members<Type>::list; };

enum class Audience { Public, Internal };

std::optional<Error> read(const Value& from, QString& to);
std::optional<Error> read(const Value& from, bool& to);
std::optional<Error> read(const Value& from, double& to);
/// Accepts 5, and also 5.0 and 5e3 up to 2^53 in magnitude, beyond which such a form is inexact.
std::optional<Error> read(const Value& from, std::int64_t& to);

/// "expected text, found null"
Error wrongType(QLatin1StringView expected, const Value& found);

template<std::integral Type>
std::optional<Error> read(const Value& from, Type& to) {
    std::int64_t integer = 0;
    auto error = read(from, integer);
    if (!error && !std::in_range<Type>(integer)) {
        error = Error{.reason = QStringLiteral("is out of range")};
    }
    to = static_cast<Type>(integer);
    return error;
}

template<class Type>
std::optional<Error> read(const Value& from, std::vector<Type>& to) {
    const auto* array = from.as<Array>();
    if (array == nullptr) {
        return wrongType(QLatin1StringView("a list"), from);
    }
    to.reserve(array->size());
    for (const Value& element : *array) {
        if (auto error = read(element, to.emplace_back())) {
            return within(QStringLiteral("[%1]").arg(to.size() - 1), std::move(error));
        }
    }
    return {};
}

template<IsRecord Type>
std::optional<Error> read(const Value& from, Type& to);

template<class Type>
std::optional<Error> read(const Value& from, std::optional<Type>& to) {
    return from.as<std::nullptr_t>() != nullptr ? std::nullopt : read(from, to.emplace(Type{}));
}

/// The members in `list` and `internal`.
template<IsRecord Type>
constexpr auto allMembers() {
    if constexpr (requires { Members<Type>::internal; }) {
        return std::tuple_cat(Members<Type>::list, Members<Type>::internal);
    } else {
        return Members<Type>::list;
    }
}

template<IsRecord Type>
std::optional<Error> read(const Value& from, Type& to) {
    const auto* object = from.as<Object>();
    if (object == nullptr) {
        return wrongType(QLatin1StringView("an object"), from);
    }
    std::optional<Error> error;
    const auto succeeds = [&](const auto& member) {
        auto& target = to.*member.pointer;
        const Value* value = object->find(member.name);
        if (value != nullptr) {
            error = within(member.name, read(*value, target));
        } else if constexpr (!requires { target.has_value(); }) {
            error = Error{member.name, QStringLiteral("is missing")};
        }
        return !error;
    };
    std::apply([&](const auto&... members) { static_cast<void>((succeeds(members) && ...)); }, allMembers<Type>());
    return error;
}

template<class Type>
    requires std::constructible_from<Value, const Type&>
void write(Value& to, const Type& from, Audience /*audience*/) {
    to = Value(from);
}

template<class Type>
void write(Value& to, const std::vector<Type>& from, Audience audience) {
    Array array;
    for (const Type& element : from) {
        write(array.emplace_back(nullptr), element, audience);
    }
    to = std::move(array);
}

template<class Type>
void write(Value& to, const std::optional<Type>& from, Audience audience) {
    if (from) {
        write(to, *from, audience);
    }
}

template<IsRecord Type>
void write(Value& to, const Type& from, Audience audience) {
    std::vector<Object::Member> members;
    const auto writeMember = [&](const auto& member) {
        Value value = nullptr;
        write(value, from.*member.pointer, audience);
        if (value.template as<std::nullptr_t>() == nullptr) {
            members.emplace_back(member.name, std::move(value));
        }
    };
    const auto writeAll = [&](const auto&... declared) { (writeMember(declared), ...); };
    audience == Audience::Internal ? std::apply(writeAll, allMembers<Type>())
                                   : std::apply(writeAll, Members<Type>::list);
    to = Object(std::move(members));
}

/// Decodes a record or any other type that read() accepts.
template<class Type>
std::expected<Type, Error> decode(const Value& value) {
    Type result{};
    if (auto error = read(value, result)) {
        return std::unexpected(std::move(*error));
    }
    return result;
}

template<class Type>
std::expected<Type, Error> decode(const QByteArray& document, Keys keys, Limits limits = {}) {
    const auto value = parse(document, limits, keys);
    return value ? decode<Type>(*value) : std::unexpected(value.error());
}

template<class Type>
Value encode(const Type& from, Audience audience = Audience::Public) {
    Value value = nullptr;
    write(value, from, audience);
    return value;
}

} // namespace tunedeck::json
