#pragma once

#include "TunedeckCore/Support/Json/Error.h"
#include "TunedeckCore/Support/Json/Members.h"
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

/// Reads and writes records, which declare their members with json::members. Each type accepts exactly one JSON type:
/// QString, bool, double, integers, std::vector, other records, and whatever has overloads of read() and encode() in
/// this namespace. Members of an object that the record doesn't declare are ignored.
namespace tunedeck::json {

template<class Type>
concept IsRecord = requires { Type::members; };

/// How encode() writes a record.
enum class Form {
    SnakeCase,  ///< "download_dir" for downloadDir
    AsDeclared, ///< "downloadDir"
    Complete    ///< as declared, with the internal members
};

/// "expected text, found null"
Error wrongType(QLatin1StringView expected, const Value& found);

/// Prefixes the path of `error`, if there is one, with the name or index of the containing value.
std::optional<Error> within(const QString& parent, std::optional<Error> error);

/// The key of a member.
QString keyOf(QLatin1StringView name, Form form);

std::optional<Error> read(const Value& from, QString& to);
std::optional<Error> read(const Value& from, bool& to);
std::optional<Error> read(const Value& from, double& to);
/// Accepts 5, and also 5.0 and 5e3 up to 2^53 in magnitude, beyond which such a form is inexact.
std::optional<Error> read(const Value& from, std::int64_t& to);

template<std::integral Type>
std::optional<Error> read(const Value& from, Type& to) {
    using namespace Qt::StringLiterals;
    std::int64_t integer = 0;
    auto error = read(from, integer);
    if (!error && !std::in_range<Type>(integer)) {
        error = Error{.reason = u"is out of range"_s};
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
            return within(u'[' + QString::number(to.size() - 1) + u']', std::move(error));
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

/// The members and the internal members.
template<IsRecord Type>
constexpr auto allMembers() {
    if constexpr (requires { Type::internalMembers; }) {
        return std::tuple_cat(Type::members, Type::internalMembers);
    } else {
        return Type::members;
    }
}

template<IsRecord Type>
std::optional<Error> read(const Value& from, Type& to) {
    using namespace Qt::StringLiterals;
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
            error = Error{member.name, u"is missing"_s};
        }
        return !error;
    };
    std::apply([&](const auto&... members) { static_cast<void>((succeeds(members) && ...)); }, allMembers<Type>());
    return error;
}

template<class Type>
std::expected<Type, Error> decode(const QByteArray& document, Keys keys, Limits limits = {}) {
    const auto value = parse(document, limits, keys);
    if (!value) {
        return std::unexpected(value.error());
    }
    Type result{};
    if (auto error = read(*value, result)) {
        return std::unexpected(std::move(*error));
    }
    return result;
}

template<class Type>
    requires std::constructible_from<Value, const Type&>
Value encode(const Type& from, Form /*form*/) {
    return from;
}

/// Null if there is no value.
template<class Type>
Value encode(const std::optional<Type>& from, Form form) {
    return from ? encode(*from, form) : Value(nullptr);
}

template<class Type>
Value encode(const std::vector<Type>& from, Form form = Form::SnakeCase) {
    Array array;
    for (const Type& element : from) {
        array.push_back(encode(element, form));
    }
    return array;
}

/// Leaves out members that are null.
template<IsRecord Type>
Value encode(const Type& from, Form form = Form::SnakeCase) {
    std::vector<Object::Member> members;
    const auto add = [&](const auto& member) {
        Value value = encode(from.*member.pointer, form);
        if (value.template as<std::nullptr_t>() == nullptr) {
            members.emplace_back(keyOf(member.name, form), std::move(value));
        }
    };
    const auto addAll = [&](const auto&... declared) { (add(declared), ...); };
    form == Form::Complete ? std::apply(addAll, allMembers<Type>()) : std::apply(addAll, Type::members);
    return Object(std::move(members));
}

} // namespace tunedeck::json
