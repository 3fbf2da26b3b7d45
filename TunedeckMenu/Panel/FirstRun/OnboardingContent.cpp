#include "TunedeckMenu/Panel/FirstRun/OnboardingContent.h"

#include "TunedeckCore/Support/Text/Text.h"
#include "TunedeckMenu/Panel/Cards/LinkRow.h"
#include "TunedeckMenu/Panel/FirstRun/OnboardingState.h"
#include "TunedeckMenu/Panel/ShownText.h"

#include <chrono>
#include <utility>
#include <variant>

using namespace Qt::StringLiterals;

namespace tunedeck {

namespace {

ToolRowView toolRow(const ToolboxReport::Tool& tool, bool installing) {
    ToolRowView row{.name = oneLine(tool.name)};
    if (tool.ready) {
        row.state = oneLine(tool.displayVersion().value_or(u"Ready"_s));
        row.symbol = u"checkmark.circle.fill"_s;
        row.tone = look::Tone::Good;
    } else if (installing) {
        row.state = u"Installing…"_s;
        row.symbol = u"arrow.down.circle.fill"_s;
        row.tone = look::Tone::Accent;
    } else {
        row.state = u"Not installed yet"_s;
        row.symbol = u"clock.fill"_s;
    }
    return row;
}

/// What takes so long, if it does.
QString waitNote(const OnboardingState& state, const QDateTime& now) {
    constexpr auto patience = std::chrono::seconds(20);
    if (!state.waitingSince || *state.waitingSince + patience > now) {
        return {};
    }
    switch (state.wait()) {
    case OnboardingWait::Nothing:
        break;
    case OnboardingWait::Service:
        return u"The service was started and hasn't answered yet. Tunedeck goes on by itself as soon as it does."_s;
    case OnboardingWait::Tools:
        return u"Still waiting for the service's list of tools."_s;
    case OnboardingWait::Backup:
        return u"Still copying. A large library on a slow disk can take some minutes."_s;
    case OnboardingWait::Link:
        return u"Still waiting for Tunedeck's cloud to answer. Is this Mac online?"_s;
    }
    return {};
}

void describeService(OnboardingContent& content, const OnboardingState& state) {
    if (state.status) {
        return;
    }
    content.serviceFailure = paragraph(state.serviceFailure);
    content.serviceAdvice = state.serviceAdvice;
    content.startingService = state.isStartingService;
    if (content.serviceFailure.isEmpty()) {
        content.waitingText = u"Starting Tunedeck's background service…"_s;
    }
    if (!content.serviceFailure.isEmpty() || !content.waitNote.isEmpty()) {
        content.startButton = u"Try Again"_s;
        content.logButton = u"Open Log"_s;
    }
}

void describeTools(OnboardingContent& content, const OnboardingState& state, RowRange range) {
    content.text = u"Tunedeck downloads the free tools it uses (yt-dlp, spotdl, ffmpeg) from their "
                   "official sources and keeps them up to date. About 250 MB, once."_s;
    if (!state.toolbox) {
        if (state.status) {
            content.waitingText = std::exchange(content.waitNote, {});
        }
        return;
    }
    const auto& report = *state.toolbox;
    const auto rowOf = [&](const ToolboxReport::Tool& tool) { return toolRow(tool, report.installing); };
    content.tools = RowSlice<ToolRowView>::of(report.all(), range, rowOf);
    if (report.installing) {
        content.installText = paragraph(report.step.value_or(u"Installing…"_s));
        content.progress = report.progress.value_or(-1);
    } else if (!report.allReady()) {
        content.installText = paragraph(report.error.value_or(QString()));
        content.repairButton = u"Repair Tools"_s;
    }
}

void describeBaseline(OnboardingContent& content, const OnboardingState& state) {
    const auto& baseline = state.baseline.value;
    if (std::holds_alternative<Baseline::Working>(baseline)) {
        content.baselineText = u"Backing up your library…"_s;
        content.baselineBusy = true;
        return;
    }
    if (const auto* done = std::get_if<Baseline::Done>(&baseline)) {
        content.baselineText = u"Your library v%1 is backed up. Every change is backed up first; restore "
                               "any time from the menu."_s.arg(oneLine(done->version));
        content.baselineSymbol = u"checkmark.shield.fill"_s;
        content.baselineTone = look::Tone::Good;
        return;
    }
    if (const auto* later = std::get_if<Baseline::Later>(&baseline)) {
        content.baselineText = paragraph(later->reason);
        content.baselineSymbol = u"clock.fill"_s;
        content.baselineButton = u"Back Up Now"_s;
    }
    if (state.status && state.status->rekordboxDb && state.status->rekordboxDb->rekordboxRunning) {
        content.baselineNote = u"Rekordbox is open, so Tunedeck will back up your library before its "
                               "first change. Restore any time from the menu."_s;
        content.baselineSymbol = u"clock.fill"_s;
    }
}

void describeRekordbox(OnboardingContent& content, const OnboardingState& state) {
    if (state.rekordbox) {
        content.rekordboxName = oneLine(joined({state.rekordbox->name, state.rekordbox->version.value_or(QString())}));
        content.text = u"New songs and playlist changes go straight into your Rekordbox library (a "
                       "Tunedeck folder in Playlists). With Rekordbox open, they appear under rekordbox "
                       "xml and land in the library when you quit it."_s;
    } else {
        content.text = u"Rekordbox isn't installed here. Tunedeck still saves your songs and writes a "
                       "rekordbox xml file; install Rekordbox any time and they'll show up."_s;
        if (state.status && state.status->rekordboxDb) {
            content.libraryNote = u"There is a Rekordbox library here, though. Tunedeck looks after it."_s;
        }
    }
    describeBaseline(content, state);
}

void describeLink(OnboardingContent& content, const OnboardingState& state, const AssistantLink& link, Assistant picked,
                  const QDateTime& now) {
    const auto assistant = link.assistant().value_or(picked);
    const auto& facts = info(assistant);
    content.connected = link.isConnected();
    if (assistant == Assistant::telegram) {
        content.pairing = telegramPairing(link, state.renewing, now);
        content.liveText = u"Waiting for you to tap Start in Telegram…"_s;
    } else {
        const bool isShortcut = assistant == Assistant::iphone;
        content.pasteText = u"Paste this into "_s + facts.name;
        if (isShortcut && link.apiUrl) {
            content.urlField = shortcutField(u"URL"_s, u"url"_s, oneLine(*link.apiUrl), state.copied);
        } else if (!isShortcut && link.url) {
            content.urlField = privateUrlField(u"url"_s, oneLine(*link.url), state.copied);
        }
        if (isShortcut && link.token) {
            content.keyField = shortcutField(u"Key"_s, u"key"_s, oneLine(*link.token), state.keyCopied);
        }
        content.guideTitle = guideTitle();
        content.guideHelp = guideHelp(assistant);
        content.setupSteps = facts.setupSteps;
        content.liveText = u"Waiting for the first request from %1…"_s.arg(facts.name);
    }
    if (content.connected) {
        content.liveText = u"Connected. Try: “"_s + facts.example + u'”';
    }
}

void describeAssistants(OnboardingContent& content, const OnboardingState& state, const QDateTime& now) {
    content.text = u"Pick where you'll ask for tracks. Tunedeck gives it a private link to this Mac. It "
                   "works from your phone too, even while this Mac is asleep. Telegram and Claude are "
                   "free; ChatGPT needs a paid plan."_s;
    for (const auto assistant : allAssistants) {
        content.assistants << connectRow(assistant, info(assistant).systemImage, state.connecting);
    }
    content.chosen = state.assistant ? info(*state.assistant).rawValue : QString();
    content.connecting = state.connecting;
    if (state.connecting) {
        content.connectingText =
            state.assistant == Assistant::telegram ? u"Making your pairing code…"_s : u"Making your private link…"_s;
    } else if (state.link && state.assistant) {
        describeLink(content, state, *state.link, *state.assistant, now);
    }
}

} // namespace

OnboardingWait OnboardingState::wait() const {
    if (!status) {
        return serviceFailure.isEmpty() ? OnboardingWait::Service : OnboardingWait::Nothing;
    }
    switch (step) {
    case OnboardingStep::tools:
        return toolbox ? OnboardingWait::Nothing : OnboardingWait::Tools;
    case OnboardingStep::rekordbox:
        return std::holds_alternative<Baseline::Working>(baseline.value) ? OnboardingWait::Backup
                                                                         : OnboardingWait::Nothing;
    case OnboardingStep::assistant:
        return connecting ? OnboardingWait::Link : OnboardingWait::Nothing;
    }
    return OnboardingWait::Nothing;
}

OnboardingContent onboardingContent(const OnboardingState& state, const QDateTime& now, RowRange tools) {
    OnboardingContent content;
    content.step = static_cast<int>(state.step);
    content.stepLabel = u"Step %1 of %2"_s.arg(content.step + 1).arg(content.stepCount);
    content.title = title(state.step);
    content.error = paragraph(state.error.value_or(QString()));
    content.backButton = state.step == OnboardingStep::tools ? QString() : u"Back"_s;
    content.nextButton = state.step == OnboardingStep::assistant ? u"Done"_s : u"Continue"_s;
    content.waitNote = waitNote(state, now);
    describeService(content, state);
    switch (state.step) {
    case OnboardingStep::tools:
        describeTools(content, state, tools);
        break;
    case OnboardingStep::rekordbox:
        describeRekordbox(content, state);
        break;
    case OnboardingStep::assistant:
        describeAssistants(content, state, now);
        break;
    }
    return content;
}

} // namespace tunedeck
