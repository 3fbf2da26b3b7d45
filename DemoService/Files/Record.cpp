#include "DemoService/Files/Record.h"

#include <rapidjson/prettywriter.h>
#include <rapidjson/stringbuffer.h>
#include <rapidjson/writer.h>

namespace tunedeck::demo {

std::string jsonText(const rapidjson::Value& document, bool indented) {
    rapidjson::StringBuffer buffer;
    if (indented) {
        rapidjson::PrettyWriter writer(buffer);
        writer.SetIndent(' ', 2);
        document.Accept(writer);
    } else {
        rapidjson::Writer writer(buffer);
        document.Accept(writer);
    }
    return {buffer.GetString(), buffer.GetSize()};
}

std::optional<rapidjson::Document> parseObject(std::string_view text) {
    rapidjson::Document document;
    // Iterative: a deeply nested text must not use up the stack.
    document.Parse<rapidjson::kParseIterativeFlag | rapidjson::kParseValidateEncodingFlag>(text.data(), text.size());
    if (document.HasParseError() || !document.IsObject()) {
        return std::nullopt;
    }
    return document;
}

} // namespace tunedeck::demo
