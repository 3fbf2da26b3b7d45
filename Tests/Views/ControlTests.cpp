// Controls used by assistive technology, keyboard and mouse.
#include "Tests/Helpers/Views/Screen.h"

#include <QSet>
#include <QTest>

using namespace Qt::StringLiterals;

namespace tunedeck::test {

namespace {

class ControlTests : public Screen {};

/// A panel that shows every control at once.
PanelContent pressable() {
    PanelState state = samples::troubled();
    state.links.push_back(samples::link(u"s"_s, Assistant::iphone));
    state.copied = u"s.key"_s;
    samples::status(state).rekordboxDb->rekordboxRunning = false;
    Release release;
    release.version = u"1.5.0"_s;
    state.update.value = UpdateState::Available{release};
    PanelContent content = contentOf(state);
    content.notRunning = contentOf(samples::stopped()).notRunning;
    return content;
}

} // namespace

TEST_F(ControlTests, EveryControlHasAnUnambiguousName) {
    PanelState namesakes = samples::usual();
    for (const auto& id : {u"x"_s, u"y"_s}) {
        for (const Assistant assistant : {Assistant::claude, Assistant::iphone, Assistant::telegram}) {
            namesakes.links.push_back(samples::link(id + info(assistant).rawValue, assistant));
        }
    }
    mainWindow(contentOf(samples::checking()));
    for (const PanelContent& content : {contentOf(samples::stopped()), pressable(), contentOf(samples::longWords()),
                                        contentOf(samples::crowded()), contentOf(namesakes)}) {
        setContent(content);
        QSet<QPair<QString, QString>> names;
        for (const Element& element : controls()) {
            EXPECT_FALSE(element.name.isEmpty())
                << element.item()->metaObject()->className() << " at " << element.geometry.y();
            const QPair name(element.name, element.description);
            EXPECT_FALSE(names.contains(name)) << qPrintable(name.first) << " / " << qPrintable(name.second);
            names.insert(name);
        }
        EXPECT_GT(names.size(), 6);
    }
}

TEST_F(ControlTests, DisabledControlsIgnoreMouseKeysAndAssistiveTechnology) {
    PanelContent content = pressable();
    content.notRunning.starting = true;
    content.notRunning.button = u"Starting…"_s;
    content.footer.restarting = true;
    content.rekordbox.busy = true;
    content.rekordbox.busyHelp = u"A change is under way."_s;
    for (BackupRowView& row : content.rekordbox.backups) {
        row.canRestore = false;
        row.help = u"Quit Rekordbox to restore v"_s + row.version;
    }
    mainWindow(content).resize(400, 2400);
    press(u"Backups (3)"_s);
    for (const auto& [name, which] : {std::pair(u"Starting…"_s, u""_s),
                                      {u"Restart tunedeck"_s, u""_s},
                                      {u"Retry"_s, u"under way"_s},
                                      {u"Apply Now"_s, u"under way"_s},
                                      {u"Restore"_s, u"Quit Rekordbox to restore v1.2.0"_s}}) {
        const Element element = control(name, which);
        EXPECT_FALSE(element.isEnabled()) << qPrintable(name);
        EXPECT_FALSE(element.press()) << qPrintable(name);
        click(element);
        EXPECT_FALSE(element.item()->activeFocusOnTab()) << qPrintable(name);
        element.item()->forceActiveFocus(Qt::TabFocusReason);
        key(Qt::Key_Space);
        key(Qt::Key_Return);
    }
    EXPECT_EQ(host.pressed.join(u';').toStdString(), "");
    content.footer.restarting = false;
    setContent(content);
    click(control(u"Restart tunedeck"_s));
    EXPECT_EQ(host.pressed, QStringList{u"restartService"_s});
}

TEST_F(ControlTests, TabVisitsEveryControlInOrderAndScrollsToIt) {
    QQuickWindow& window = popover(contentOf(samples::crowded()));
    QStringList order;
    for (const Element& element : controls()) {
        order.append(element.name);
    }
    QStringList visited;
    for (qsizetype i = 0; i < order.size(); ++i) {
        key(Qt::Key_Tab);
        const QRectF place = focus()->mapRectToScene(focus()->boundingRect());
        EXPECT_GE(place.top(), 0) << qPrintable(focusName());
        EXPECT_LE(place.bottom(), window.height()) << qPrintable(focusName());
        EXPECT_TRUE(focus()->property("focusShown").toBool()) << qPrintable(focusName());
        visited.append(focusName());
    }
    EXPECT_EQ(visited.join(u'|').toStdString(), order.join(u'|').toStdString());
    EXPECT_EQ(visited.indexOf(u"Copy Diagnostics"_s), visited.size() - 5) << "the footer comes after the cards";
    key(Qt::Key_Tab);
    EXPECT_EQ(focusName(), visited.first());
    key(Qt::Key_Backtab, Qt::ShiftModifier);
    EXPECT_EQ(focusName(), visited.last());
}

TEST_F(ControlTests, EveryKindOfControlReactsToMouseKeysAndAssistiveTechnology) {
    PanelState state = samples::usual();
    state.links.push_back(samples::link(u"s"_s, Assistant::iphone));
    const PanelContent content = contentOf(state);
    const ConnectRowView& assistant = content.assistants.connect.first();
    QQuickWindow& window = mainWindow(content);
    window.resize(400, 2400);
    for (const auto& [name, which, action] :
         {std::tuple(u"Check for Updates"_s, u""_s, u"checkForUpdates"_s),
          {u"Open Log"_s, u""_s, u"openLog"_s},
          {u"Open at Login"_s, u""_s, u"setOpensAtLogin off"_s},
          {content.downloads.folderTitle + u", "_s + content.downloads.folderSubtitle, u""_s, u"revealDownloads"_s},
          {assistant.accessibleName, assistant.help, u"connectAssistant "_s + assistant.id},
          {u"Setup guide"_s, u""_s, u"openSetupGuide s"_s}}) {
        const Element element = control(name, which);
        const QPoint centre = element.geometry.center() - window.position();
        const auto expectActions = [&](int count, const char* input) {
            EXPECT_EQ(host.pressed, QStringList(count, action)) << qPrintable(name) << ": " << input;
            host.pressed.clear();
        };
        EXPECT_TRUE(element.press());
        expectActions(1, "assistive technology");
        click(element);
        expectActions(1, "click");
        EXPECT_FALSE(element.item()->property("focusShown").toBool()) << qPrintable(name);
        QTest::mouseDClick(&window, Qt::LeftButton, {}, centre);
        expectActions(2, "double click");
        QTest::mousePress(&window, Qt::LeftButton, {}, centre);
        QTest::mouseMove(&window, {1, 1});
        QTest::mouseRelease(&window, Qt::LeftButton, {}, {1, 1});
        expectActions(0, "released elsewhere");
        element.item()->forceActiveFocus(Qt::TabFocusReason);
        for (const Qt::Key pressed : {Qt::Key_Space, Qt::Key_Return, Qt::Key_Enter}) {
            QTest::keyPress(&window, pressed);
            for (int i = 0; i < 3; ++i) {
                QKeyEvent repeat(QEvent::KeyPress, pressed, {}, {}, true);
                QCoreApplication::sendEvent(&window, &repeat);
            }
            QTest::keyRelease(&window, pressed);
            expectActions(1, "held key");
            key(pressed, Qt::ControlModifier);
            expectActions(0, "key with modifier");
        }
        QTest::keyPress(&window, Qt::Key_Space);
        key(Qt::Key_Tab);
        QTest::keyRelease(&window, Qt::Key_Space);
        expectActions(0, "space released elsewhere");
    }
}

TEST_F(ControlTests, OneAssistantIsConnectedAtATime) {
    OnboardingState state = samples::assistantStep();
    state.connecting = true;
    const OnboardingContent content = contentOf(state);
    onboarding(content);
    for (const ConnectRowView& assistant : content.assistants) {
        const Element element = control(assistant.accessibleName);
        EXPECT_FALSE(element.isEnabled());
        click(element);
    }
    EXPECT_TRUE(host.pressed.isEmpty()) << qPrintable(host.pressed.join(u' '));
}

TEST_F(ControlTests, TheFirstRunsControlsCallTheirActions) {
    OnboardingState noTools = samples::toolsStep();
    noTools.toolbox->installing = false;
    OnboardingState noBackup = samples::rekordboxStep();
    noBackup.baseline.value = Baseline::Later{u"Rekordbox is open."_s};
    for (const auto& [shown, labels, actions] :
         {std::tuple(contentOf(noTools), &OnboardingContent::repairButton, u"repairTools"_s),
          {contentOf(noTools), &OnboardingContent::nextButton, u"advance"_s},
          {contentOf(noBackup), &OnboardingContent::baselineButton, u"takeBaseline"_s},
          {contentOf(noBackup), &OnboardingContent::backButton, u"back"_s},
          {contentOf(samples::assistantStep(Assistant::claude)), &OnboardingContent::guideTitle,
           u"openSetupGuide"_s}}) {
        onboarding(shown);
        press(shown.*labels);
        EXPECT_EQ(host.pressed, QStringList{actions});
        host.pressed.clear();
    }
    onboarding(contentOf(samples::assistantStep(Assistant::iphone)));
    for (const Element& copy : controls(u"Copy"_s)) {
        copy.press();
    }
    onboarding(contentOf(samples::assistantStep(Assistant::telegram)));
    press(u"Open Telegram"_s);
    press(u"New Code"_s);
    press(contentOf(samples::assistantStep()).assistants.first().accessibleName);
    EXPECT_EQ(host.pressed.join(u';').toStdString(), "copyLink;copyKey;openTelegram;newTelegramCode;choose chatgpt");
}

TEST_F(ControlTests, ScreenReadersGetJobStatesAndEachNewResult) {
    static QStringList events;
    events.clear();
    PanelContent content = contentOf(samples::usual());
    mainWindow(content);
    for (const JobRowView& job : content.recent.jobs) {
        EXPECT_TRUE(std::ranges::any_of(elements(), [&](const Element& element) {
            return element.name == job.stateName && element.description == job.message;
        })) << qPrintable(job.playlist);
    }
    const auto old = QAccessible::installUpdateHandler([](QAccessibleEvent* event) {
        if (event->type() == QAccessible::Alert) {
            events.append(event->accessibleInterface()->text(QAccessible::Name));
        }
    });
    for (const auto& text : {u"Library updated."_s, u"Library updated."_s, u"Backup restored."_s}) {
        content.banner = {.shown = true, .text = text};
        setContent(content);
        wait(20);
    }
    EXPECT_EQ(events, QStringList({u"Library updated."_s, u"Backup restored."_s}));
    QAccessible::installUpdateHandler(old);
}

TEST_F(ControlTests, ALinksMenuWorksByKeyboardAndMouse) {
    popover(contentOf(samples::usual()));
    EXPECT_TRUE(controls(u"Disconnect"_s).isEmpty());
    while (focusName() != u"More"_s) {
        key(Qt::Key_Tab);
    }
    key(Qt::Key_Space);
    EXPECT_EQ(focusName(), u"New URL…"_s);
    key(Qt::Key_Up);
    EXPECT_EQ(focusName(), u"Disconnect"_s);
    key(Qt::Key_Down);
    key(Qt::Key_Down);
    EXPECT_EQ(focusName(), u"Setup Guide"_s);
    key(Qt::Key_Escape);
    EXPECT_TRUE(controls(u"Disconnect"_s).isEmpty());
    EXPECT_EQ(focusName(), u"More"_s);
    EXPECT_TRUE(views->isPopoverShown());

    // A refresh keeps an open menu open; choosing an entry closes it.
    click(control(u"More"_s, u"Claude"_s));
    PanelContent later = contentOf(samples::usual());
    later.assistants.links.first().detail = u"· used 6 minutes ago"_s;
    setContent(later);
    click(control(u"Disconnect"_s));
    EXPECT_EQ(host.pressed, QStringList{u"disconnectLink a"_s});
    EXPECT_TRUE(controls(u"Disconnect"_s).isEmpty());

    // A paired chat gets a new code instead of a new URL.
    press(u"More"_s, u"Telegram"_s);
    press(u"New Code…"_s);
    EXPECT_EQ(host.pressed.last(), u"newTelegramCode t"_s);

    // The menu closes when its link is removed.
    click(control(u"More"_s, u"Claude"_s));
    later.assistants.links.removeFirst();
    setContent(later);
    EXPECT_TRUE(controls(u"Disconnect"_s).isEmpty());
}

} // namespace tunedeck::test
