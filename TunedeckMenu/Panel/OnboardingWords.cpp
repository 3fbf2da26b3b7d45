#include "TunedeckMenu/Panel/OnboardingWords.h"

#include "TunedeckCore/Support/Text/Text.h"
#include "TunedeckMenu/Panel/Panel.h"

#include <algorithm>
#include <variant>

namespace tunedeck {

namespace {

ToolRowView toolRow(const ToolboxReport::Tool& tool, bool installing) {
    ToolRowView row{.name = tool.name};
    if (tool.ready) {
        row.state = tool.displayVersion().value_or(QStringLiteral("Ready"));
        row.symbol = QStringLiteral("checkmark.circle.fill");
        row.tone = look::Tone::Good;
    } else if (installing) {
        row.state = QStringLiteral("Installing…");
        row.symbol = QStringLiteral("arrow.down.circle.fill");
        row.tone = look::Tone::Accent;
    } else {
        row.state = QStringLiteral("Not installed yet");
        row.symbol = QStringLiteral("clock.fill");
    }
    return row;
}

void describeTools(OnboardingContent& content, const OnboardingState& state) {
    content.text = QStringLiteral("Tunedeck downloads the free tools it uses (yt-dlp, spotdl, ffmpeg) from their "
                                  "official sources and keeps them up to date. About 250 MB, once.");
    if (!state.status) {
        content.waitingText = QStringLiteral("Starting Tunedeck's background service…");
    }
    if (!state.toolbox) {
        return;
    }
    const auto& report = *state.toolbox;
    for (const auto& tool : report.all()) {
        content.tools.append(toolRow(tool, report.installing));
    }
    if (report.installing) {
        content.installText = report.step.value_or(QStringLiteral("Installing…"));
        content.progress = report.progress.value_or(-1);
    } else if (!report.allReady()) {
        content.installText = report.error.value_or(QString());
        content.repairButton = QStringLiteral("Repair Tools");
    }
}

void describeBaseline(OnboardingContent& content, const OnboardingState& state) {
    const auto& baseline = state.baseline.value;
    if (std::holds_alternative<Baseline::Working>(baseline)) {
        content.baselineText = QStringLiteral("Backing up your library…");
        content.baselineBusy = true;
        return;
    }
    if (const auto* done = std::get_if<Baseline::Done>(&baseline)) {
        content.baselineText = QStringLiteral("Your library v%1 is backed up. Every change is backed up first; restore "
                                              "any time from the menu.")
                                   .arg(done->version);
        content.baselineSymbol = QStringLiteral("checkmark.shield.fill");
        content.baselineTone = look::Tone::Good;
        return;
    }
    if (const auto* later = std::get_if<Baseline::Later>(&baseline)) {
        content.baselineText = later->reason;
        content.baselineSymbol = QStringLiteral("clock.fill");
        content.baselineButton = QStringLiteral("Back Up Now");
    }
    if (state.status && state.status->rekordboxDb && state.status->rekordboxDb->rekordboxRunning) {
        content.baselineNote = QStringLiteral("Rekordbox is open, so Tunedeck will back up your library before its "
                                              "first change. Restore any time from the menu.");
        content.baselineSymbol = QStringLiteral("clock.fill");
    }
}

void describeRekordbox(OnboardingContent& content, const OnboardingState& state) {
    if (state.rekordbox) {
        content.rekordboxName = joined({state.rekordbox->name, state.rekordbox->version.value_or(QString())});
        content.text = QStringLiteral("New songs and playlist changes go straight into your Rekordbox library (a "
                                      "Tunedeck folder in Playlists). With Rekordbox open, they appear under rekordbox "
                                      "xml and land in the library when you quit it.");
    } else {
        content.text = QStringLiteral("Rekordbox isn't installed here. Tunedeck still saves your songs and writes a "
                                      "rekordbox xml file; install Rekordbox any time and they'll show up.");
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
        content.liveText = QStringLiteral("Waiting for you to tap Start in Telegram…");
    } else {
        const bool isShortcut = assistant == Assistant::iphone;
        content.pasteText = QStringLiteral("Paste this into ") + facts.name;
        if (isShortcut && link.apiUrl) {
            content.fields << shortcutField(QStringLiteral("URL"), QStringLiteral("url"), *link.apiUrl, state.copied);
        } else if (!isShortcut && link.url) {
            content.fields << privateUrlField(QStringLiteral("url"), *link.url, state.copied);
        }
        if (isShortcut && link.token) {
            content.fields << shortcutField(QStringLiteral("Key"), QStringLiteral("key"), *link.token, state.keyCopied);
        }
        content.guideTitle = guideTitle();
        content.guideHelp = guideHelp(assistant);
        content.setupSteps = facts.setupSteps;
        content.liveText = QStringLiteral("Waiting for the first request from %1…").arg(facts.name);
    }
    if (content.connected) {
        content.liveText = QStringLiteral("Connected. Try: “") + facts.example + u'”';
    }
}

void describeAssistants(OnboardingContent& content, const OnboardingState& state, const QDateTime& now) {
    content.text = QStringLiteral("Pick where you'll ask for tracks. Tunedeck gives it a private link to this Mac. It "
                                  "works from your phone too, even while this Mac is asleep. Telegram and Claude are "
                                  "free; ChatGPT needs a paid plan.");
    for (const auto assistant : allAssistants) {
        content.assistants << connectRow(assistant, info(assistant).systemImage, state.connecting);
    }
    content.chosen = state.assistant ? info(*state.assistant).rawValue : QString();
    content.connecting = state.connecting;
    if (state.connecting) {
        content.connectingText = state.assistant == Assistant::telegram ? QStringLiteral("Making your pairing code…")
                                                                        : QStringLiteral("Making your private link…");
    } else if (state.link && state.assistant) {
        describeLink(content, state, *state.link, *state.assistant, now);
    }
}

} // namespace

OnboardingContent onboardingContent(const OnboardingState& state, const QDateTime& now) {
    OnboardingContent content;
    content.step = static_cast<int>(state.step);
    content.stepLabel = QStringLiteral("Step %1 of %2").arg(content.step + 1).arg(content.stepCount);
    content.title = title(state.step);
    content.error = state.error.value_or(QString());
    content.backButton = state.step == OnboardingStep::tools ? QString() : QStringLiteral("Back");
    content.nextButton = state.step == OnboardingStep::assistant ? QStringLiteral("Done") : QStringLiteral("Continue");
    switch (state.step) {
    case OnboardingStep::tools:
        describeTools(content, state);
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
