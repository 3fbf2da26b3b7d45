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
#include "TunedeckMenu/Panel/PanelContent.h"
#include "TunedeckMenu/Panel/PanelState.h"

#include <algorithm>
#include <tuple>

namespace tunedeck::fuzz {

namespace {

/// Requires that a document is an object or is rejected with a reason.
template<class Record>
void check(const std::expected<Record, json::Error>& record, bool isObject) {
    require(record || !record.error().reason.isEmpty(), "a rejection has a reason");
    require(!record || isObject, "only an object is a document");
}

/// Requires that the views get few rows and short texts, however large the document is.
void requireShort(const PanelContent& content) {
    constexpr qsizetype longest = 34'000; // code units; a text has at most 1,000 characters with many marks
    const auto& [links, failed, backups] =
        std::tie(content.assistants.links.rows, content.rekordbox.failed.rows, content.rekordbox.backups.rows);
    require(std::max({links.size(), failed.size(), backups.size()}) <= RowRange().size, "few rows exist");
    for (const BannerView& banner : failed) {
        require(banner.text.size() < longest && banner.detail.size() < longest, "texts are cut");
    }
    for (const JobRowView& job : content.recent.jobs) {
        require(job.playlist.size() < longest && job.message.size() < longest, "texts are cut");
    }
    require(content.rekordbox.detail.size() < longest && content.tools.text.size() < longest, "texts are cut");
}

} // namespace

void documents(const QByteArray& input) {
    const bool isObject = json::parseObject(input).has_value();
    const auto status = ServiceStatus::decode(input);
    const auto toolbox = ToolboxReport::decode(input);
    check(status, isObject);
    check(toolbox, isObject);
    check(Appcast::decode(input), isObject);
    check(CloudHealth::decode(input), isObject);
    const auto link = json::decode<AssistantLink>(input, json::Keys::AsWritten);
    check(link, isObject);

    PanelState state;
    state.service = status ? ServiceState::running(*status) : ServiceState::notRunning();
    if (toolbox) {
        state.toolbox = *toolbox;
    }
    if (link) {
        state.links.assign(100, *link);
    }
    requireShort(panelContent(state, QDateTime(QDate(2026, 3, 14), QTime(15, 9), Qt::UTC)));
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
