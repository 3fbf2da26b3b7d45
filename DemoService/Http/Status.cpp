#include "DemoService/Files/Record.h"
#include "DemoService/Http/Router.h"

namespace tunedeck::demo {

namespace {

struct Mcp {
    std::optional<std::string> publicUrl;
    std::string localUrl;

    static void members(auto& self, auto& archive) {
        archive("public_url", self.publicUrl);
        archive("local_url", self.localUrl);
    }
};

struct Status {
    const World& world;
    const ServiceFacts& facts;

    static void members(const Status& self, RecordWriter& archive) {
        const State& state = self.world.state();
        archive("version", self.facts.version);
        archive("rekordbox_db", state.library);
        // An address that nobody uses isn't told: whoever has one needs no first run.
        const bool isPublic = state.cloud.enabled && state.links.anyConnected();
        archive("mcp", Mcp{.publicUrl = isPublic ? std::optional(state.cloud.baseUrl + "/mcp") : std::nullopt,
                           .localUrl = "http://127.0.0.1:" + std::to_string(self.facts.port) + "/mcp"});
        if (state.cloud.enabled) {
            archive("shortcut_url", state.cloud.baseUrl + "/api/requests");
        }
        const DownloadFolder folder = findDownloadFolder(self.facts.paths, state.stagedFolder);
        DownloadFolder::members(folder, archive);
        archive("import_xml", self.facts.paths.importXml().string());
        if (state.jobs.xmlVersion > 0) {
            archive("xml_version", std::to_string(state.jobs.xmlVersion));
        }
        archive("cloud", state.cloud);
        archive("recent_jobs", state.jobs.recent);
    }
};

} // namespace

std::string statusText(const World& world, const ServiceFacts& facts) {
    return recordText(Status{world, facts}, Audience::client);
}

} // namespace tunedeck::demo
