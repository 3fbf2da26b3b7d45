#include "TunedeckCore/Support/Files/PropertyList.h"

#include <plist/plist.h>

#include <cstdlib>
#include <memory>

namespace tunedeck {

namespace {

constexpr int maxDepth = 64;
constexpr qsizetype maxSize = 1024 * 1024;
constexpr qint64 dateEpoch = 978'307'200; // 2001-01-01, in seconds since 1970

struct Free {
    void operator()(void* memory) const { std::free(memory); }
};
struct FreeList {
    void operator()(plist_t list) const { plist_free(list); }
};
using List = std::unique_ptr<void, FreeList>;

std::optional<PropertyValue> fromNode(plist_t node, int depth);

std::optional<PropertyValue> fromArray(plist_t node, int depth) {
    PropertyArray array;
    for (std::uint32_t i = 0; i < plist_array_get_size(node); ++i) {
        auto value = fromNode(plist_array_get_item(node, i), depth + 1);
        if (!value) {
            return std::nullopt;
        }
        array.push_back(std::move(*value));
    }
    return PropertyValue(std::move(array));
}

std::optional<PropertyValue> fromDictionary(plist_t node, int depth) {
    PropertyDictionary dictionary;
    plist_dict_iter position = nullptr;
    plist_dict_new_iter(node, &position);
    const std::unique_ptr<void, Free> owner(position);
    for (;;) {
        char* key = nullptr;
        plist_t item = nullptr;
        plist_dict_next_item(node, position, &key, &item);
        const std::unique_ptr<char, Free> keyOwner(key);
        if (item == nullptr) {
            return PropertyValue(std::move(dictionary));
        }
        auto value = fromNode(item, depth + 1);
        if (!value) {
            return std::nullopt;
        }
        dictionary.insert_or_assign(QString::fromUtf8(key), std::move(*value));
    }
}

std::optional<PropertyValue> fromNode(plist_t node, int depth) {
    if (depth >= maxDepth) {
        return std::nullopt;
    }
    std::uint64_t size = 0;
    switch (plist_get_node_type(node)) {
    case PLIST_STRING: {
        const char* text = plist_get_string_ptr(node, &size);
        return PropertyValue(QString::fromUtf8(text, static_cast<qsizetype>(size)));
    }
    case PLIST_BOOLEAN: {
        std::uint8_t value = 0;
        plist_get_bool_val(node, &value);
        return PropertyValue(value != 0);
    }
    case PLIST_UINT: { // libplist keeps negative numbers in it, too
        std::uint64_t value = 0;
        plist_get_uint_val(node, &value);
        return PropertyValue(static_cast<std::int64_t>(value));
    }
    case PLIST_REAL: {
        double value = 0;
        plist_get_real_val(node, &value);
        return PropertyValue(value);
    }
    case PLIST_DATE: {
        std::int32_t seconds = 0;
        std::int32_t microseconds = 0;
        plist_get_date_val(node, &seconds, &microseconds);
        return PropertyValue(QDateTime::fromSecsSinceEpoch(dateEpoch + seconds, Qt::UTC));
    }
    case PLIST_DATA: {
        const char* bytes = plist_get_data_ptr(node, &size);
        return PropertyValue(QByteArray(bytes, static_cast<qsizetype>(size)));
    }
    case PLIST_ARRAY:
        return fromArray(node, depth);
    case PLIST_DICT:
        return fromDictionary(node, depth);
    default:
        return std::nullopt;
    }
}

struct ToNode {
    plist_t operator()(const QString& text) const { return plist_new_string(text.toUtf8().constData()); }
    plist_t operator()(bool value) const { return plist_new_bool(value ? 1 : 0); }
    plist_t operator()(std::int64_t value) const { return plist_new_uint(static_cast<std::uint64_t>(value)); }
    plist_t operator()(double value) const { return plist_new_real(value); }
    plist_t operator()(const QDateTime& date) const {
        return plist_new_date(static_cast<std::int32_t>(date.toSecsSinceEpoch() - dateEpoch), 0);
    }
    plist_t operator()(const QByteArray& bytes) const {
        return plist_new_data(bytes.constData(), static_cast<std::uint64_t>(bytes.size()));
    }
    plist_t operator()(const PropertyArray& array) const {
        plist_t node = plist_new_array();
        for (const auto& value : array) {
            plist_array_append_item(node, std::visit(*this, value.storage()));
        }
        return node;
    }
    plist_t operator()(const PropertyDictionary& dictionary) const {
        plist_t node = plist_new_dict();
        for (const auto& [key, value] : dictionary) {
            plist_dict_set_item(node, key.toUtf8().constData(), std::visit(*this, value.storage()));
        }
        return node;
    }
};

} // namespace

std::optional<PropertyDictionary> parsePropertyList(const QByteArray& bytes, PropertyListFormat format) {
    if (bytes.size() > maxSize) {
        return std::nullopt;
    }
    plist_t list = nullptr;
    const auto size = static_cast<std::uint32_t>(bytes.size());
    if (format == PropertyListFormat::XmlOrBinary && plist_is_binary(bytes.constData(), size) != 0) {
        plist_from_bin(bytes.constData(), size, &list);
    } else {
        plist_from_xml(bytes.constData(), size, &list);
    }
    const List owner(list);
    const auto root = list == nullptr ? std::nullopt : fromNode(list, 0);
    const auto* dictionary = root ? root->as<PropertyDictionary>() : nullptr;
    return dictionary == nullptr ? std::nullopt : std::optional(*dictionary);
}

QByteArray xmlPropertyList(const PropertyDictionary& dictionary) {
    const List list(ToNode()(dictionary));
    char* xml = nullptr;
    std::uint32_t size = 0;
    plist_to_xml(list.get(), &xml, &size);
    const std::unique_ptr<char, Free> owner(xml);
    return QByteArray(xml, size);
}

std::optional<QString> textValue(const PropertyDictionary& dictionary, const QString& key) {
    const auto found = dictionary.find(key);
    const auto* text = found == dictionary.end() ? nullptr : found->second.as<QString>();
    return text ? std::optional(*text) : std::nullopt;
}

} // namespace tunedeck
