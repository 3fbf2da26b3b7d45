#pragma once

#include <QByteArray>
#include <QDateTime>
#include <QString>

#include <cstdint>
#include <map>
#include <optional>
#include <utility>
#include <variant>
#include <vector>

namespace tunedeck {

class PropertyValue;
/// A property list's dictionary; equality ignores the order in the file.
using PropertyDictionary = std::map<QString, PropertyValue>;
using PropertyArray = std::vector<PropertyValue>;

/// One value of a property list; values of different types are never equal.
class PropertyValue {
public:
    using Storage =
        std::variant<QString, bool, std::int64_t, double, QDateTime, QByteArray, PropertyArray, PropertyDictionary>;

    explicit(false) PropertyValue(Storage value) : m_value(std::move(value)) {}

    /// The value when it is of that type, else null.
    template<class T>
    [[nodiscard]] const T* as() const {
        return std::get_if<T>(&m_value);
    }

    /// Hands the value to a function that takes every type.
    template<class Visitor>
    void visit(Visitor&& visitor) const {
        std::visit(std::forward<Visitor>(visitor), m_value);
    }

    bool operator==(const PropertyValue&) const = default;

private:
    Storage m_value;
};

/// Reads an XML property list whose root is a dictionary; nothing for anything else (binary lists included), for lists
/// with entities of their own, for nesting deeper than 64 and for more than 1 MiB.
std::optional<PropertyDictionary> parsePropertyList(const QByteArray& xml);

/// The XML form, keys sorted, tab-indented.
QByteArray xmlPropertyList(const PropertyDictionary& dictionary);

/// The text under a key, or nothing when it is missing or no text.
std::optional<QString> textValue(const PropertyDictionary& dictionary, const QString& key);

} // namespace tunedeck
