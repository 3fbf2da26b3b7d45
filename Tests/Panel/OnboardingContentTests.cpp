#include "Tests/Helpers/Test.h"
#include "Tests/Panel/Fixtures.h"
#include "TunedeckMenu/Panel/FirstRun/OnboardingContent.h"
#include "TunedeckMenu/Panel/FirstRun/OnboardingState.h"

namespace tunedeck::test {

namespace {

OnboardingContent contentAt(OnboardingStep step, OnboardingState state = {}) {
    state.step = step;
    return onboardingContent(state, moment());
}

OnboardingContent assistantContent(Assistant assistant, const AssistantLink& made, OnboardingState state = {}) {
    state.status = goodStatus();
    state.assistant = assistant;
    state.link = made;
    return contentAt(OnboardingStep::assistant, state);
}

} // namespace

TEST(OnboardingContent, NumbersTheStepsAndLabelsTheirButtons) {
    QStringList labels;
    for (const auto step : {OnboardingStep::tools, OnboardingStep::rekordbox, OnboardingStep::assistant}) {
        const OnboardingContent content = contentAt(step);
        labels << content.stepLabel << content.backButton << content.nextButton;
    }
    EXPECT_EQ(labels.join(u'|'), u"Step 1 of 3||Continue|Step 2 of 3|Back|Continue|Step 3 of 3|Back|Done");
    EXPECT_EQ(contentAt(OnboardingStep::tools, {.error = u"Failed."_s}).error, u"Failed.");
}

TEST(ToolsStep, FollowsTheInstallation) {
    OnboardingState state;
    const auto texts = [&] {
        const OnboardingContent content = contentAt(OnboardingStep::tools, state);
        QStringList all{content.waitingText, content.installText, content.repairButton};
        for (const ToolRowView& tool : content.tools.rows) {
            all << QString::fromStdString(textOf(tool)).section(u" | "_s, 1);
        }
        return all;
    };
    const auto progress = [&] { return contentAt(OnboardingStep::tools, state).progress; };
    EXPECT_EQ(texts(), (QStringList{u"Starting Tunedeck's background service…"_s, {}, {}}));
    state.status = goodStatus();
    state.toolbox = ToolboxReport{.tools = {{u"yt-dlp"_s, u"yt-dlp==1.2"_s, {}, true}, {u"ffmpeg"_s, {}, {}, false}},
                                  .venvs = {{u"env"_s, {}, {}, true}},
                                  .installing = true};
    const QString version = u"state: 1.2 | symbol: checkmark.circle.fill | tone: Good"_s;
    const QString ready = u"state: Ready | symbol: checkmark.circle.fill | tone: Good"_s;
    const QString arriving = u"state: Installing… | symbol: arrow.down.circle.fill | tone: Accent"_s;
    const QString missing = u"state: Not installed yet | symbol: clock.fill"_s;
    EXPECT_EQ(texts(), (QStringList{{}, u"Installing…"_s, {}, version, arriving, ready}));
    EXPECT_LT(progress(), 0) << "unknown";
    state.toolbox->progress = 0.25;
    state.toolbox->step = u"Unpacking"_s;
    EXPECT_EQ(texts()[1], u"Unpacking");
    EXPECT_EQ(progress(), 0.25);
    state.toolbox->installing = false;
    state.toolbox->error = u"Disk full"_s;
    EXPECT_EQ(texts(), (QStringList{{}, u"Disk full"_s, u"Repair Tools"_s, version, missing, ready}));
    EXPECT_LT(progress(), 0);
    state.toolbox->tools[1].ready = true;
    EXPECT_EQ(texts(), (QStringList{{}, {}, {}, version, ready, ready}));
}

TEST(RekordboxStep, FollowsTheFirstBackup) {
    struct Case {
        Baseline baseline;
        bool rekordboxRunning = false;
        QStringList starts; ///< of the text and the note; button, symbol
        bool busy = false;
    };
    const QString open = u"Rekordbox is open, so"_s;
    const Case cases[] = {
        {{Baseline::Waiting{}}, false, {{}, {}, {}, {}}},
        {{Baseline::Waiting{}}, true, {{}, open, {}, u"clock.fill"_s}},
        {{Baseline::Working{}}, true, {u"Backing up your library…"_s, {}, {}, {}}, true},
        {{Baseline::Done{u"1.0.0"_s}},
         true,
         {u"Your library v1.0.0 is backed up"_s, {}, {}, u"checkmark.shield.fill"_s}},
        {{Baseline::Later{u"Locked"_s}}, false, {u"Locked"_s, {}, u"Back Up Now"_s, u"clock.fill"_s}},
        {{Baseline::Later{u"Locked"_s}}, true, {u"Locked"_s, open, u"Back Up Now"_s, u"clock.fill"_s}},
    };
    for (const auto& [baseline, rekordboxRunning, starts, busy] : cases) {
        OnboardingState state{.status = goodStatus(), .baseline = baseline};
        state.status->rekordboxDb = ServiceStatus::Library{.rekordboxRunning = rekordboxRunning};
        const OnboardingContent content = contentAt(OnboardingStep::rekordbox, state);
        EXPECT_EQ((QStringList{content.baselineText.left(starts[0].size()), content.baselineNote.left(open.size()),
                               content.baselineButton, content.baselineSymbol}),
                  starts);
        EXPECT_EQ(content.baselineText.isEmpty(), starts[0].isEmpty());
        EXPECT_EQ(content.baselineBusy, busy);
        EXPECT_EQ(content.baselineTone == look::Tone::Good, content.baselineSymbol == u"checkmark.shield.fill");
    }
    const OnboardingState found{.rekordbox = RekordboxInstall{u"Rekordbox 7"_s, u"7.1"_s}};
    EXPECT_EQ(contentAt(OnboardingStep::rekordbox, found).rekordboxName, u"Rekordbox 7 · 7.1");
    EXPECT_TRUE(contentAt(OnboardingStep::rekordbox, found).text.startsWith(u"New songs and playlist changes go "));
    EXPECT_TRUE(contentAt(OnboardingStep::rekordbox).text.startsWith(u"Rekordbox isn't installed here."));
}

TEST(AssistantStep, ShowsWhatToCopyAndHowToSetItUp) {
    AssistantLink shortcut = link("s", "shortcut");
    shortcut.apiUrl = u"https://x.example/api"_s;
    shortcut.token = u"secret"_s;
    AssistantLink claude = link("c", "claude");
    claude.url = u"https://x.example/u/1/mcp"_s;
    claude.lastUsedAt = ago(60);
    const std::string page =
        "step: 2 | stepLabel: Step 3 of 3 | title: Connect your assistant | text: Pick where you'll ask for tracks. "
        "Tunedeck gives it a private link to this Mac. It works from your phone too, even while this Mac is asleep. "
        "Telegram and Claude are free; ChatGPT needs a paid plan. | chosen: ";
    const std::string buttons = "backButton: Back | nextButton: Done";
    const auto steps = [](Assistant assistant) { return info(assistant).setupSteps.join(u' ').toStdString(); };
    EXPECT_EQ(textOf(assistantContent(Assistant::iphone, shortcut, {.keyCopied = true})),
              page +
                  "shortcut | pasteText: Paste this into iPhone | label: URL | shownValue: https://x.example/api | "
                  "key: url | help: Copy the URL for the Shortcut | button: Copy | buttonName: Copy URL | "
                  "buttonSymbol: doc.on.doc | label: Key | shownValue: secret | key: key | "
                  "help: Copy the Key for the Shortcut | "
                  "button: Copied | buttonName: Copied Key | buttonSymbol: checkmark | guideTitle: Setup guide | "
                  "guideHelp: How to set up iPhone, on tunedeck.example | setupSteps: " +
                  steps(Assistant::iphone) + " | liveText: Waiting for the first request from iPhone… | " + buttons);
    EXPECT_EQ(textOf(assistantContent(Assistant::claude, claude, {.copied = true})),
              page +
                  "claude | pasteText: Paste this into Claude | shownValue: https://x.example/u/1/mcp | key: url | "
                  "help: Copy this assistant's private URL | button: Copied | buttonName: Copied | buttonSymbol: "
                  "checkmark | guideTitle: Setup guide | "
                  "guideHelp: How to set up Claude, on tunedeck.example | setupSteps: " +
                  steps(Assistant::claude) +
                  " | liveText: Connected. Try: “Add https://open.spotify.com/track/… to a playlist called Friday” | "
                  "connected: true | " +
                  buttons);
}

TEST(AssistantStep, ShowsThePairingUnlessALinkIsBeingMade) {
    const AssistantLink telegram = link("t", "telegram");
    const OnboardingContent waiting = assistantContent(Assistant::telegram, telegram);
    EXPECT_TRUE(waiting.pairing.shown && !waiting.pairing.busy);
    EXPECT_EQ(waiting.liveText, u"Waiting for you to tap Start in Telegram…");
    EXPECT_TRUE(assistantContent(Assistant::telegram, telegram, {.renewing = true}).pairing.busy);
    const OnboardingContent connecting = assistantContent(Assistant::telegram, telegram, {.connecting = true});
    EXPECT_EQ(connecting.connectingText, u"Making your pairing code…");
    EXPECT_FALSE(connecting.pairing.shown) << "it belongs to the previous link";
    EXPECT_TRUE(connecting.assistants.at(0).help.contains(u"Another link is being changed."));
    EXPECT_EQ(assistantContent(Assistant::claude, telegram, {.connecting = true}).connectingText,
              u"Making your private link…");
}

} // namespace tunedeck::test
