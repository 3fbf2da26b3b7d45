#pragma once

#include "DemoService/World/Clock.h"

#include <rapidjson/document.h>

#include <concepts>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace tunedeck::demo {

// A record lists its members once, in `static void members(self, archive)`: `archive(name, member)` for what everybody
// may see and `archive.own(name, member)` for what only the service itself remembers. The same list writes the
// documents of the HTTP interface, writes the state file and reads it back.

/// Who a document is for: a client sees no `own` members.
enum class Audience { client, stateFile };

/// Writes records as JSON values.
class RecordWriter {
public:
    using Allocator = rapidjson::Document::AllocatorType;

    RecordWriter(rapidjson::Value& object, Allocator& allocator, Audience audience)
        : m_object(object), m_allocator(allocator), m_audience(audience) {}

    template<class T>
    void operator()(const char* name, const T& value) {
        m_object.AddMember(rapidjson::Value(name, m_allocator), json(value), m_allocator);
    }
    template<class T>
    void operator()(const char* name, const std::optional<T>& value) {
        if (value) {
            (*this)(name, *value);
        }
    }
    template<class T>
    void own(const char* name, const T& value) {
        if (m_audience == Audience::stateFile) {
            (*this)(name, value);
        }
    }

private:
    rapidjson::Value json(bool value) { return rapidjson::Value(value); }
    rapidjson::Value json(double value) { return rapidjson::Value(value); }
    rapidjson::Value json(Moment value) { return json(isoText(value)); }
    rapidjson::Value json(const std::string& value) {
        return {value.data(), static_cast<rapidjson::SizeType>(value.size()), m_allocator};
    }
    rapidjson::Value json(std::integral auto value) {
        if constexpr (std::unsigned_integral<decltype(value)>) {
            return rapidjson::Value(static_cast<std::uint64_t>(value));
        } else {
            return rapidjson::Value(static_cast<std::int64_t>(value));
        }
    }
    template<class T>
    rapidjson::Value json(const std::vector<T>& values) {
        rapidjson::Value array(rapidjson::kArrayType);
        for (const T& value : values) {
            array.PushBack(json(value), m_allocator);
        }
        return array;
    }
    template<class T>
        requires requires(const T& record, RecordWriter& writer) { T::members(record, writer); }
    rapidjson::Value json(const T& record) {
        rapidjson::Value object(rapidjson::kObjectType);
        RecordWriter writer(object, m_allocator, m_audience);
        T::members(record, writer);
        return object;
    }

    rapidjson::Value& m_object;
    Allocator& m_allocator;
    Audience m_audience;
};

/// Reads records back; a member that is missing or of another type keeps its default.
class RecordReader {
public:
    explicit RecordReader(const rapidjson::Value& object) : m_object(object) {}

    template<class T>
    void operator()(const char* name, T& value) {
        if (const auto member = m_object.FindMember(name); member != m_object.MemberEnd()) {
            read(member->value, value);
        }
    }
    template<class T>
    void own(const char* name, T& value) {
        (*this)(name, value);
    }

private:
    static void read(const rapidjson::Value& json, bool& value) {
        if (json.IsBool()) {
            value = json.GetBool();
        }
    }
    static void read(const rapidjson::Value& json, double& value) {
        if (json.IsNumber()) {
            value = json.GetDouble();
        }
    }
    static void read(const rapidjson::Value& json, std::string& value) {
        if (json.IsString()) {
            value.assign(json.GetString(), json.GetStringLength());
        }
    }
    static void read(const rapidjson::Value& json, Moment& value) {
        if (json.IsString()) {
            value = fromIsoText({json.GetString(), json.GetStringLength()}).value_or(value);
        }
    }
    template<std::integral T>
    static void read(const rapidjson::Value& json, T& value) {
        if (json.IsInt64() && std::in_range<T>(json.GetInt64())) {
            value = static_cast<T>(json.GetInt64());
        } else if (json.IsUint64() && std::in_range<T>(json.GetUint64())) {
            value = static_cast<T>(json.GetUint64());
        }
    }
    template<class T>
    static void read(const rapidjson::Value& json, std::optional<T>& value) {
        if (!json.IsNull()) {
            value.emplace();
            read(json, *value);
        }
    }
    template<class T>
    static void read(const rapidjson::Value& json, std::vector<T>& values) {
        if (json.IsArray()) {
            values.clear();
            for (const auto& element : json.GetArray()) {
                read(element, values.emplace_back());
            }
        }
    }
    template<class T>
        requires requires(T& record, RecordReader& reader) { T::members(record, reader); }
    static void read(const rapidjson::Value& json, T& record) {
        if (json.IsObject()) {
            RecordReader reader(json);
            T::members(record, reader);
        }
    }

    const rapidjson::Value& m_object;
};

/// The JSON text of `document`; indented when it is for people's eyes as well.
std::string jsonText(const rapidjson::Value& document, bool indented);

/// The JSON text of `record` as `audience` sees it; indented for the state file.
template<class T>
std::string recordText(const T& record, Audience audience) {
    rapidjson::Document document(rapidjson::kObjectType);
    RecordWriter writer(document, document.GetAllocator(), audience);
    T::members(record, writer);
    return jsonText(document, audience == Audience::stateFile);
}

/// Parses `text` as one JSON object; nothing when it is anything else.
std::optional<rapidjson::Document> parseObject(std::string_view text);

} // namespace tunedeck::demo
