#include "DemoService/Http/StatusDocument.h"

#include "TunedeckCore/Support/Json/Record.h"

namespace tunedeck::demo {

using namespace Qt::StringLiterals;

json::Object describeService(const State& state, const ServiceFacts& facts) {
    json::Object mcp{{u"local_url"_s, u"http://127.0.0.1:%1/mcp"_s.arg(facts.port)}};
    json::Object document{{u"version"_s, facts.version},
                          {u"import_xml"_s, facts.paths.importXml()},
                          {u"cloud"_s, json::encode(state.cloud)},
                          {u"recent_jobs"_s, json::encode(state.jobs.recent)}};
    if (state.library) {
        document.set(u"rekordbox_db"_s, json::encode(*state.library));
    }
    if (state.cloud.enabled) {
        document.set(u"shortcut_url"_s, state.cloud.baseUrl + u"/api/requests"_s);
        // Clients take the public URL as a sign that an assistant is connected and skip the first run.
        if (state.links.anyConnected()) {
            mcp.set(u"public_url"_s, state.cloud.baseUrl + u"/mcp"_s);
        }
    }
    document.set(u"mcp"_s, mcp);
    if (state.jobs.xmlVersion > 0) {
        document.set(u"xml_version"_s, QString::number(state.jobs.xmlVersion));
    }
    const auto folder = json::encode(DownloadFolder::current(facts.paths, state.stagedFolder));
    for (const auto& [key, value] : *folder.as<json::Object>()) {
        document.set(key, value);
    }
    return document;
}

} // namespace tunedeck::demo
