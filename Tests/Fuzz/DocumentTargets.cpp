#include "Tests/Fuzz/Targets.h"
#include "TunedeckCore/Service/AssistantLink.h"
#include "TunedeckCore/Service/CloudHealth.h"
#include "TunedeckCore/Service/ServiceStatus.h"
#include "TunedeckCore/Service/Toolbox.h"
#include "TunedeckCore/Support/Files/PropertyList.h"
#include "TunedeckCore/Support/Json/Parse.h"
#include "TunedeckCore/Support/Json/Record.h"
#include "TunedeckCore/Support/Json/Value.h"
#include "TunedeckCore/Update/Appcast.h"

namespace tunedeck::fuzz {

namespace {

/// Requires that a document is an object or is rejected with a reason.
template<class Record>
void check(const std::expected<Record, json::Error>& record, bool isObject) {
    require(record || !record.error().reason.isEmpty(), "a rejection has a reason");
    require(!record || isObject, "only an object is a document");
}

} // namespace

void documents(const QByteArray& input) {
    const bool isObject = json::parseObject(input).has_value();
    check(ServiceStatus::decode(input), isObject);
    check(ToolboxReport::decode(input), isObject);
    check(Appcast::decode(input), isObject);
    check(CloudHealth::decode(input), isObject);
    check(json::decode<AssistantLink>(input, json::Keys::AsWritten), isObject);
}

void jsonValues(const QByteArray& input) {
    const auto object = json::parseObject(input);
    if (!object) {
        require(!object.error().reason.isEmpty(), "a rejection has a reason");
        return;
    }
    for (const QByteArray& text : {json::compactText(*object), json::prettyText(*object)}) {
        const auto again = json::parseObject(text);
        require(again && json::compactText(*again) == json::compactText(*object),
                "a written document reads as the same");
    }
}

void propertyList(const QByteArray& input) {
    const auto list = parsePropertyList(input);
    if (list) {
        const QByteArray xml = xmlPropertyList(*list);
        const auto again = parsePropertyList(xml);
        require(again && xmlPropertyList(*again) == xml, "what is written reads as the same");
    }
}

} // namespace tunedeck::fuzz
