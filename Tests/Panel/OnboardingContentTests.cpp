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
        for (const ToolRowView& tool : content.tools) {
            all << tool.state;
        }
        return all;
    };
    const auto progress = [&] { return contentAt(OnboardingStep::tools, state).progress; };
    EXPECT_EQ(texts(), (QStringList{u"Starting Tunedeck's background service…"_s, {}, {}}));
    state.status = goodStatus();
    state.toolbox = ToolboxReport{.tools = {{u"yt-dlp"_s, u"yt-dlp==1.2"_s, {}, true}, {u"ffmpeg"_s, {}, {}, false}},
                                  .venvs = {{u"env"_s, {}, {}, true}},
                                  .installing = true};
    EXPECT_EQ(texts(), (QStringList{{}, u"Installing…"_s, {}, u"1.2"_s, u"Installing…"_s, u"Ready"_s}));
    EXPECT_LT(progress(), 0) << "unknown";
    state.toolbox->progress = 0.25;
    state.toolbox->step = u"Unpacking"_s;
    EXPECT_EQ(texts()[1], u"Unpacking");
    EXPECT_EQ(progress(), 0.25);
    state.toolbox->installing = false;
    state.toolbox->error = u"Disk full"_s;
    EXPECT_EQ(texts(),
              (QStringList{{}, u"Disk full"_s, u"Repair Tools"_s, u"1.2"_s, u"Not installed yet"_s, u"Ready"_s}));
    EXPECT_LT(progress(), 0);
    state.toolbox->tools[1].ready = true;
    EXPECT_EQ(texts(), (QStringList{{}, {}, {}, u"1.2"_s, u"Ready"_s, u"Ready"_s}));
}

TEST(RekordboxStep, FollowsTheFirstBackup) {
    struct Case {
        Baseline baseline;
        bool rekordboxRunning = false;
        QStringList starts; ///< of the text and the note; button
        bool busy = false;
    };
    const QString open = u"Rekordbox is open, so"_s;
    const Case cases[] = {
        {{Baseline::Waiting{}}, false, {{}, {}, {}}},
        {{Baseline::Waiting{}}, true, {{}, open, {}}},
        {{Baseline::Working{}}, true, {u"Backing up your library…"_s, {}, {}}, true},
        {{Baseline::Done{u"1.0.0"_s}}, true, {u"Your library v1.0.0 is backed up"_s, {}, {}}},
        {{Baseline::Later{u"Locked"_s}}, false, {u"Locked"_s, {}, u"Back Up Now"_s}},
        {{Baseline::Later{u"Locked"_s}}, true, {u"Locked"_s, open, u"Back Up Now"_s}},
    };
    for (const auto& [baseline, rekordboxRunning, starts, busy] : cases) {
        OnboardingState state{.status = goodStatus(), .baseline = baseline};
        state.status->rekordboxDb = ServiceStatus::Library{.rekordboxRunning = rekordboxRunning};
        const OnboardingContent content = contentAt(OnboardingStep::rekordbox, state);
        EXPECT_EQ((QStringList{content.baselineText.left(starts[0].size()), content.baselineNote.left(open.size()),
                               content.baselineButton}),
                  starts);
        EXPECT_EQ(content.baselineText.isEmpty(), starts[0].isEmpty());
        EXPECT_EQ(content.baselineBusy, busy);
    }
    const OnboardingState found{.rekordbox = RekordboxInstall{u"Rekordbox 7"_s, u"7.1"_s}};
    EXPECT_EQ(contentAt(OnboardingStep::rekordbox, found).rekordboxName, u"Rekordbox 7 · 7.1");
    EXPECT_NE(contentAt(OnboardingStep::rekordbox, found).text, contentAt(OnboardingStep::rekordbox).text);
}

TEST(AssistantStep, CopyButtonsFollowTheValueThatWasCopied) {
    AssistantLink shortcut = link("s", "shortcut");
    shortcut.apiUrl = u"https://x.example/api"_s;
    shortcut.token = u"secret"_s;
    for (const bool urlCopied : {true, false}) {
        QStringList fields;
        for (const SecretFieldView& field :
             assistantContent(Assistant::iphone, shortcut, {.copied = urlCopied, .keyCopied = !urlCopied}).fields) {
            fields << field.key << field.shownValue << field.button;
        }
        EXPECT_EQ(fields, (QStringList{u"url"_s, *shortcut.apiUrl, urlCopied ? u"Copied"_s : u"Copy"_s, //
                                       u"key"_s, *shortcut.token, urlCopied ? u"Copy"_s : u"Copied"_s}));
    }
}

TEST(AssistantStep, ShowsThePairingUnlessALinkIsBeingMade) {
    const AssistantLink telegram = link("t", "telegram");
    const OnboardingContent waiting = assistantContent(Assistant::telegram, telegram);
    EXPECT_TRUE(waiting.pairing.shown && !waiting.pairing.busy && waiting.fields.isEmpty());
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
