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
    PanelState state = samples::troubledState();
    state.links.push_back(samples::link(u"s"_s, Assistant::iphone));
    state.copied = u"s.key"_s;
    samples::status(state).rekordboxDb->rekordboxRunning = false;
    Release release;
    release.version = u"1.5.0"_s;
    state.update.value = UpdateState::Available{release};
    PanelContent content = samples::contentOf(state);
    content.notRunning = samples::stopped().notRunning;
    return content;
}

} // namespace

TEST_F(ControlTests, EveryControlHasAnUnambiguousName) {
    PanelState namesakes = samples::usualState();
    for (const auto* const id : {u"x", u"y"}) {
        namesakes.links.push_back(samples::link(QString::fromUtf16(id), Assistant::claude));
        namesakes.links.push_back(samples::link(QString::fromUtf16(id) + u'i', Assistant::iphone));
        namesakes.links.push_back(samples::link(QString::fromUtf16(id) + u't', Assistant::telegram));
    }
    for (const PanelContent& content : {samples::checking(), samples::stopped(), pressable(), samples::longWords(),
                                        samples::crowded(), samples::contentOf(namesakes)}) {
        mainWindow(content);
        become(content);
        QSet<QPair<QString, QString>> known;
        for (const Seen& seen : controls()) {
            EXPECT_FALSE(seen.name.isEmpty())
                << seen.item()->metaObject()->className() << " under "
                << seen.item()->parentItem()->metaObject()->className() << " at " << seen.place.y();
            const QPair key(seen.name, seen.description);
            EXPECT_FALSE(known.contains(key)) << qPrintable(seen.name) << " / " << qPrintable(seen.description);
            known.insert(key);
        }
        EXPECT_GT(known.size(), 6);
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
        const Seen seen = control(name, which);
        EXPECT_FALSE(seen.isEnabled()) << qPrintable(name);
        EXPECT_FALSE(seen.press()) << qPrintable(name);
        click(seen);
        EXPECT_FALSE(seen.item()->activeFocusOnTab()) << qPrintable(name);
        seen.item()->forceActiveFocus(Qt::TabFocusReason);
        key(Qt::Key_Space);
        key(Qt::Key_Return);
    }
    EXPECT_EQ(host.pressed.join(u';').toStdString(), "");
    content.footer.restarting = false;
    become(content);
    click(control(u"Restart tunedeck"_s));
    EXPECT_EQ(host.pressed, QStringList{u"restartService"_s});
}

TEST_F(ControlTests, TabVisitsEveryControlInOrderAndScrollsToIt) {
    QQuickWindow& window = popover(samples::crowded());
    const qsizetype count = controls().size();
    QStringList visited;
    int lastInCards = 0;
    for (qsizetype i = 0; i < count; ++i) {
        key(Qt::Key_Tab);
        const QRectF place = focus()->mapRectToScene(focus()->boundingRect());
        EXPECT_GE(place.top(), 0) << qPrintable(focusName());
        EXPECT_LE(place.bottom(), window.height()) << qPrintable(focusName());
        EXPECT_TRUE(focus()->property("focusShown").toBool()) << qPrintable(focusName());
        visited.append(focusName());
        lastInCards = focusName() == u"Copy Diagnostics"_s ? static_cast<int>(i) : lastInCards;
    }
    QStringList order;
    for (const Seen& seen : controls()) {
        order.append(seen.name);
    }
    EXPECT_EQ(visited.join(u'|').toStdString(), order.join(u'|').toStdString());
    EXPECT_EQ(lastInCards, count - 5) << "the footer comes after the cards";
    key(Qt::Key_Tab);
    EXPECT_EQ(focusName(), visited.first());
    key(Qt::Key_Backtab, Qt::ShiftModifier);
    EXPECT_EQ(focusName(), visited.last());
}

TEST_F(ControlTests, EveryKindOfControlReactsToMouseKeysAndAssistiveTechnology) {
    PanelState state = samples::usualState();
    state.links.push_back(samples::link(u"s"_s, Assistant::iphone));
    const PanelContent content = samples::contentOf(state);
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
        const Seen seen = control(name, which);
        const QPoint centre = seen.place.center() - window.position();
        const auto expectActions = [&](int count, const char* input) {
            EXPECT_EQ(host.pressed, QStringList(count, action)) << qPrintable(name) << ": " << input;
            host.pressed.clear();
        };
        EXPECT_TRUE(seen.press());
        expectActions(1, "assistive technology");
        click(seen);
        expectActions(1, "click");
        EXPECT_FALSE(seen.item()->property("focusShown").toBool()) << qPrintable(name);
        QTest::mouseDClick(&window, Qt::LeftButton, {}, centre);
        expectActions(2, "double click");
        QTest::mousePress(&window, Qt::LeftButton, {}, centre);
        QTest::mouseMove(&window, {1, 1});
        QTest::mouseRelease(&window, Qt::LeftButton, {}, {1, 1});
        expectActions(0, "released elsewhere");
        seen.item()->forceActiveFocus(Qt::TabFocusReason);
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
    const OnboardingContent content = samples::contentOf(state);
    onboarding(content);
    for (const ConnectRowView& assistant : content.assistants) {
        const Seen seen = control(assistant.accessibleName);
        EXPECT_FALSE(seen.isEnabled());
        click(seen);
    }
    EXPECT_TRUE(host.pressed.isEmpty()) << qPrintable(host.pressed.join(u' '));
}

TEST_F(ControlTests, TheFirstRunsControlsCallTheirActions) {
    OnboardingState noTools = samples::toolsStep();
    noTools.toolbox->installing = false;
    OnboardingState noBackup = samples::rekordboxStep();
    noBackup.baseline.value = Baseline::Later{u"Rekordbox is open."_s};
    for (const auto& [shown, labels, actions] :
         {std::tuple(samples::contentOf(noTools), &OnboardingContent::repairButton, u"repairTools"_s),
          {samples::contentOf(noTools), &OnboardingContent::nextButton, u"advance"_s},
          {samples::contentOf(noBackup), &OnboardingContent::baselineButton, u"takeBaseline"_s},
          {samples::contentOf(noBackup), &OnboardingContent::backButton, u"back"_s},
          {samples::contentOf(samples::assistantStep(Assistant::claude)), &OnboardingContent::guideTitle,
           u"openSetupGuide"_s}}) {
        onboarding(shown);
        press(shown.*labels);
        EXPECT_EQ(host.pressed, QStringList{actions});
        host.pressed.clear();
    }
    onboarding(samples::contentOf(samples::assistantStep(Assistant::iphone)));
    for (const Seen& copy : controls(u"Copy"_s)) {
        copy.press();
    }
    onboarding(samples::contentOf(samples::assistantStep(Assistant::telegram)));
    press(u"Open Telegram"_s);
    press(u"New Code"_s);
    press(samples::contentOf(samples::assistantStep()).assistants.first().accessibleName);
    EXPECT_EQ(host.pressed.join(u';').toStdString(), "copyLink;copyKey;openTelegram;newTelegramCode;choose chatgpt");
}

TEST_F(ControlTests, ScreenReadersGetJobStatesAndEachNewResult) {
    static QStringList events;
    events.clear();
    PanelContent content = samples::usual();
    mainWindow(content);
    for (const JobRowView& job : content.recent.jobs) {
        EXPECT_TRUE(std::ranges::any_of(all(), [&](const Seen& seen) {
            return seen.name == job.stateName && seen.description == job.message;
        })) << qPrintable(job.playlist);
    }
    const auto old = QAccessible::installUpdateHandler([](QAccessibleEvent* event) {
        if (event->type() == QAccessible::Alert) {
            events.append(event->accessibleInterface()->text(QAccessible::Name));
        }
    });
    const auto expectEvents = [&](const QString& text, qsizetype count) {
        become(content);
        pass(20);
        EXPECT_EQ(events.count(text), count) << qPrintable(events.join(u';'));
    };
    content.banner = {.shown = true, .text = u"Library updated."_s};
    expectEvents(u"Library updated."_s, 1);
    expectEvents(u"Library updated."_s, 1);
    content.banner.text = u"Backup restored."_s;
    expectEvents(u"Backup restored."_s, 1);
    QAccessible::installUpdateHandler(old);
}

TEST_F(ControlTests, ALinksMenuWorksByKeyboardAndMouse) {
    popover(samples::usual());
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
    PanelContent later = samples::usual();
    later.assistants.links.first().detail = u"· used 6 minutes ago"_s;
    become(later);
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
    become(later);
    EXPECT_TRUE(controls(u"Disconnect"_s).isEmpty());
}

} // namespace tunedeck::test
