#include "TunedeckCore/Service/Assistants.h"

#include "TunedeckCore/Locations/WebEndpoint.h"

#include <algorithm>

namespace tunedeck {

using namespace Qt::StringLiterals;

namespace {

const QString playlistRequest = u"Add https://open.spotify.com/track/… to a playlist called Friday"_s;

const std::array<AssistantInfo, allAssistants.size()>& table() {
    static const std::array<AssistantInfo, allAssistants.size()> infos{{
        {u"chatgpt"_s,
         u"ChatGPT"_s,
         u"Paid plan"_s,
         u"bubble.left.and.bubble.right"_s,
         u"chatgpt"_s,
         playlistRequest,
         {u"Open ChatGPT in a browser, go to Settings and then to Connectors; custom ones may need developer mode."_s,
          u"Create a connector, name it Tunedeck and paste your private URL as its address."_s,
          u"Choose no authentication: the URL itself is the key, so keep it to yourself."_s,
          u"Start a chat with the Tunedeck connector switched on, and ask for a track."_s}},
        {u"claude"_s,
         u"Claude"_s,
         u"Free"_s,
         u"asterisk"_s,
         u"claude"_s,
         playlistRequest,
         {u"Open Claude in a browser or on your computer, go to Settings and then to Connectors."_s,
          u"Add a custom connector, name it Tunedeck and paste your private URL."_s,
          u"Start a chat with Tunedeck switched on among its connectors, and ask for a track."_s,
          u"From then on it works in Claude on your phone too."_s}},
        {u"telegram"_s,
         u"Telegram"_s,
         u"Free"_s,
         u"paperplane"_s,
         u"telegram"_s,
         u"send the bot a Spotify link"_s,
         {u"Scan the code with your phone's camera; it opens the Tunedeck bot in Telegram."_s,
          u"Tap Start, and this window shows that you are paired."_s,
          u"Send the bot a Spotify or YouTube link, or /playlists."_s}},
        {u"shortcut"_s,
         u"iPhone"_s,
         u"Free"_s,
         u"iphone"_s,
         u"iphone"_s,
         u"share a Spotify link → Send to Tunedeck"_s,
         {u"On your iPhone, open the Shortcuts app and make a new shortcut called Send to Tunedeck."_s,
          u"Build it as the setup guide shows, with the URL and the key from here."_s,
          u"Switch on Show in Share Sheet in the shortcut's details."_s,
          u"Share a link from Spotify and choose Send to Tunedeck."_s}},
    }};
    return infos;
}

} // namespace

const AssistantInfo& info(Assistant assistant) {
    return table()[static_cast<std::size_t>(assistant)];
}

std::optional<Assistant> assistantFromRawValue(const QString& rawValue) {
    const auto* const found =
        std::ranges::find(allAssistants, rawValue, [](Assistant assistant) { return info(assistant).rawValue; });
    return found == allAssistants.end() ? std::nullopt : std::optional(*found);
}

QUrl guideURL(Assistant assistant) {
    return WebEndpoint::url("/connect/"_L1 + info(assistant).guide);
}

} // namespace tunedeck
