#include "DemoService/Library/ImportXml.h"

#include <set>
#include <string_view>

namespace tunedeck::demo {

namespace {

std::string escaped(std::string_view text) {
    std::string result;
    for (const char c : text) {
        switch (c) {
        case '&':
            result += "&amp;";
            break;
        case '<':
            result += "&lt;";
            break;
        case '"':
            result += "&quot;";
            break;
        default:
            result += c;
        }
    }
    return result;
}

} // namespace

std::string importXmlText(const Jobs& jobs, const std::string& version) {
    std::set<std::string> playlists;
    for (const Job& job : jobs.recent) {
        if (job.state == job_state::done) {
            playlists.insert(job.playlist);
        }
    }
    std::string text = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<DJ_PLAYLISTS Version=\"1.0.0\">\n"
                       "  <PRODUCT Name=\"Tunedeck\" Version=\"" +
                       escaped(version) +
                       "\"/>\n  <COLLECTION Entries=\"0\"/>\n  <PLAYLISTS>\n"
                       "    <NODE Type=\"0\" Name=\"ROOT\" Count=\"" +
                       std::to_string(playlists.size()) + "\">\n";
    for (const std::string& playlist : playlists) {
        text += "      <NODE Type=\"1\" Name=\"" + escaped(playlist) + "\" KeyType=\"0\" Entries=\"0\"/>\n";
    }
    return text + "    </NODE>\n  </PLAYLISTS>\n</DJ_PLAYLISTS>\n";
}

} // namespace tunedeck::demo
