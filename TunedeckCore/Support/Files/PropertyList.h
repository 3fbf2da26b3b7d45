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
using PropertyDictionary = std::map<QString, PropertyValue>;
using PropertyArray = std::vector<PropertyValue>;

/// One value of a property list; values of different types are never equal.
class PropertyValue {
public:
    using Storage =
        std::variant<QString, bool, std::int64_t, double, QDateTime, QByteArray, PropertyArray, PropertyDictionary>;

    explicit(false) PropertyValue(Storage value) : m_value(std::move(value)) {}

    [[nodiscard]] const Storage& storage() const { return m_value; }

    /// The value if it is of that type, else null.
    template<class T>
    [[nodiscard]] const T* as() const {
        return std::get_if<T>(&m_value);
    }

    bool operator==(const PropertyValue&) const = default;

private:
    Storage m_value;
};

/// Binary lists are for trusted files and confined processes only: a few hundred bytes of them can refer to each other
/// so that libplist expands them to gigabytes.
enum class PropertyListFormat { Xml, XmlOrBinary };

/// Parses a property list. Returns nothing for invalid lists, undefined entities, a root that isn't a dictionary,
/// nesting deeper than 64 and more than 1 MiB.
std::optional<PropertyDictionary> parsePropertyList(const QByteArray& bytes,
                                                    PropertyListFormat format = PropertyListFormat::Xml);

/// The XML form with sorted keys.
QByteArray xmlPropertyList(const PropertyDictionary& dictionary);

/// The text under a key, or nothing if it is missing or isn't text.
std::optional<QString> textValue(const PropertyDictionary& dictionary, const QString& key);

} // namespace tunedeck
