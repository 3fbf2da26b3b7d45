// Controls used by assistive technology, keyboard and mouse.
#include "Tests/Helpers/Contrast.h"
#include "Tests/Helpers/Views/Screen.h"

#include <QSet>
#include <QTest>

using namespace Qt::StringLiterals;

namespace tunedeck::test {

namespace {

class ControlTests : public Screen {};

/// What assistive technology was notified of: "alert Done.", "disabled Restart tunedeck", …
QStringList notifications; // NOLINT(cppcoreguidelines-avoid-non-const-global-variables): a handler has no object

void recordNotification(QAccessibleEvent* event) {
    const QString name = event->accessibleInterface()->text(QAccessible::Name);
    const QAccessible::State state = event->accessibleInterface()->state();
    if (event->type() == QAccessible::Alert) {
        notifications << u"alert "_s + name;
    } else if (event->type() == QAccessible::ObjectShow && !name.isEmpty() &&
               event->accessibleInterface()->role() == QAccessible::AlertMessage) {
        notifications << u"show "_s + name;
    } else if (event->type() == QAccessible::StateChanged) {
        const QAccessible::State changed = static_cast<QAccessibleStateChangeEvent*>(event)->changedStates();
        for (const auto& [isAbout, is, word] : {std::tuple(changed.disabled, state.disabled, u"disabled "_s),
                                                {changed.checked, state.checked, u"checked "_s},
                                                {changed.expanded, state.expanded, u"expanded "_s}}) {
            if (isAbout) {
                notifications << (is ? word : u"not "_s + word) + name;
            }
        }
    }
}

const QQuickItem& hintLayer(const QQuickWindow& window) {
    const auto items = window.findChildren<QQuickItem*>();
    return **std::ranges::find_if(items, [](const QQuickItem* item) { return item->inherits("tunedeck::HintLayer"); });
}

} // namespace

TEST_F(ControlTests, EveryControlHasAnUnambiguousName) {
    auto panels = samples::panels();
    auto& namesakes = panels.emplaceBack(u"namesakes"_s, samples::usual()).second.links;
    for (const auto& id : {u"x"_s, u"y"_s}) {
        for (const Assistant assistant : {Assistant::claude, Assistant::iphone, Assistant::telegram}) {
            namesakes.push_back(samples::link(id + info(assistant).rawValue, assistant));
        }
    }
    mainWindow(contentOf(samples::checking()));
    for (const auto& panel : panels) {
        setContent(contentOf(panel.second));
        QSet<QString> names;
        for (const Element& element : controls()) {
            EXPECT_FALSE(element.name.isEmpty())
                << element.item()->metaObject()->className() << " at " << element.geometry.y();
            // The backups' buttons are told apart by their help.
            const auto name = element.name == u"Restore" ? element.description : element.name;
            EXPECT_FALSE(names.contains(name)) << qPrintable(name);
            names.insert(name);
        }
        EXPECT_GT(names.size(), 6);
    }
}

TEST_F(ControlTests, DisabledControlsIgnoreMouseKeysAndAssistiveTechnology) {
    PanelState starting = samples::stopped();
    starting.isRestarting = true;
    PanelContent busy = contentOf(samples::busy());
    busy.notRunning = contentOf(starting).notRunning;
    OnboardingState connecting = samples::assistantStep();
    connecting.connecting = true;
    const auto disabled = [this] {
        QStringList names;
        for (const Element& element : controls()) {
            if (element.isEnabled()) {
                continue;
            }
            names << element.name;
            EXPECT_FALSE(element.press()) << qPrintable(element.name);
            click(element);
            EXPECT_FALSE(element.item()->activeFocusOnTab()) << qPrintable(element.name);
            element.item()->forceActiveFocus(Qt::TabFocusReason);
            key(Qt::Key_Space);
            key(Qt::Key_Return);
        }
        EXPECT_EQ(host.pressed.join(u';').toStdString(), "");
        return names.join(u'|').toStdString();
    };
    onboarding(contentOf(samples::assistantStep()));
    views->setOnboardingContent(contentOf(connecting));
    wait(1);
    EXPECT_TRUE(hasText(u"Making your private link…"_s));
    EXPECT_EQ(disabled(), "ChatGPT, Paid plan|Claude|Telegram|iPhone");
    views.reset();
    mainWindow(busy).resize(400, 2600);
    press(u"Backups (3)"_s);
    wait(100); // until nothing moves any more
    EXPECT_EQ(disabled(), "Starting…|Open Telegram|New Code|ChatGPT, Paid plan|iPhone|Retry|Dismiss|Applying…|"
                          "Restore|Restore|Restore|Check for Updates|Restart tunedeck");

    busy.footer.restarting = false;
    setContent(busy);
    click(control(u"Restart tunedeck"_s));
    EXPECT_EQ(host.pressed, QStringList{u"restartService"_s});
}

TEST_F(ControlTests, TabVisitsEveryControlInOrderAndScrollsToIt) {
    QQuickWindow& window = popover(contentOf(samples::crowded()));
    QStringList order;
    QStringList visited;
    for (const Element& element : controls()) {
        order.append(element.name);
    }
    const auto expectFocusInView = [&] {
        const QRectF place = focus()->mapRectToScene(focus()->boundingRect());
        EXPECT_GE(place.top(), 50) << qPrintable(focusName()) << " isn't below the header";
        EXPECT_LE(place.bottom(), window.height()) << qPrintable(focusName());
        EXPECT_TRUE(focus()->property("focusShown").toBool()) << qPrintable(focusName());
    };
    for (qsizetype i = 0; i < order.size(); ++i) {
        key(Qt::Key_Tab);
        expectFocusInView();
        visited.append(focusName());
    }
    EXPECT_EQ(visited.join(u'|').toStdString(), order.join(u'|').toStdString());
    EXPECT_EQ(visited.indexOf(u"Copy Diagnostics"_s), visited.size() - 5) << "the footer comes after the cards";
    key(Qt::Key_Tab);
    EXPECT_EQ(focusName(), visited.takeFirst());
    expectFocusInView();
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
    wait(100);
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
        QTest::mousePress(&window, Qt::LeftButton, {}, centre);
        EXPECT_TRUE(element.access->state().pressed);
        element.item()->ungrabMouse();
        EXPECT_FALSE(element.access->state().pressed) << "the window system took the pointer away";
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

TEST_F(ControlTests, TheFirstRunsControlsCallTheirActions) {
    for (const auto& [shown, labels, actions] :
         {std::tuple(contentOf(samples::brokenTools()), &OnboardingContent::repairButton, u"repairTools"_s),
          {contentOf(samples::brokenTools()), &OnboardingContent::nextButton, u"advance"_s},
          {contentOf(samples::noService()), &OnboardingContent::startButton, u"startService"_s},
          {contentOf(samples::noService()), &OnboardingContent::logButton, u"openLog"_s},
          {contentOf(samples::postponedBackup()), &OnboardingContent::baselineButton, u"takeBaseline"_s},
          {contentOf(samples::postponedBackup()), &OnboardingContent::backButton, u"back"_s},
          {contentOf(samples::assistantStep(Assistant::claude)), &OnboardingContent::guideTitle,
           u"openSetupGuide"_s}}) {
        onboarding(shown);
        press(shown.*labels);
        EXPECT_EQ(host.pressed, QStringList{actions});
        host.pressed.clear();
    }
    onboarding(contentOf(samples::assistantStep(Assistant::iphone)));
    press(u"Copy URL"_s);
    press(u"Copy Key"_s);
    onboarding(contentOf(samples::assistantStep(Assistant::telegram)));
    press(u"Open Telegram"_s);
    press(u"New Code"_s);
    press(contentOf(samples::assistantStep()).assistants.first().accessibleName);
    EXPECT_EQ(host.pressed.join(u';').toStdString(), "copyLink;copyKey;openTelegram;newTelegramCode;choose chatgpt");
    key(Qt::Key_Escape);
    EXPECT_EQ(host.appeared, 0) << "closed";
}

TEST_F(ControlTests, OneReturnTooManyDoesNotEndTheFirstRun) {
    onboarding(contentOf(samples::toolsStep()));
    key(Qt::Key_Backtab);
    ASSERT_EQ(focusName(), u"Continue");
    views->setOnboardingContent(contentOf(samples::rekordboxStep()));
    key(Qt::Key_Return);
    EXPECT_EQ(host.pressed, QStringList{u"advance"_s}) << "Return goes on through the steps";
    views->setOnboardingContent(contentOf(samples::assistantStep()));
    wait(1);
    key(Qt::Key_Return);
    EXPECT_EQ(host.pressed, QStringList{u"advance"_s});
    key(Qt::Key_Tab);
    EXPECT_EQ(focusName(), contentOf(samples::assistantStep()).assistants.first().accessibleName);
}

TEST_F(ControlTests, ScreenReadersAreNotifiedOfResultsAndStates) {
    notifications.clear();
    PanelContent content = contentOf(samples::usual());
    mainWindow(content);
    EXPECT_TRUE(control(u"Backups (3)"_s).access->state().collapsed);
    const auto old = QAccessible::installUpdateHandler(recordNotification);
    for (const auto& text : {u"Library updated."_s, u"Library updated."_s, u"Backup restored."_s}) {
        content.banner = {.shown = true, .text = text};
        setContent(content);
        wait(20);
    }
    content.footer.restarting = true;
    content.footer.opensAtLogin = false;
    setContent(content);
    press(u"Backups (3)"_s);
    QAccessible::installUpdateHandler(old);
    EXPECT_EQ(notifications.join(u'|').toStdString(),
              "alert Library updated.|show Library updated.|alert Backup restored.|show Backup restored.|"
              "disabled Restart tunedeck|not checked Open at Login|expanded Backups (3)");
}

TEST_F(ControlTests, ATooltipAppearsAfterADelayUntilThePointerLeavesOrPresses) {
    PanelContent content = contentOf(samples::usual());
    QQuickWindow& window = mainWindow(content);
    const QQuickItem* const layer = &hintLayer(window);
    QQuickItem* const bubble = layer->childItems().first();
    const QPoint button = control(u"Change Folder…"_s).geometry.center() - window.position();
    const auto point = [&](const QPoint& place) { QTest::mouseMove(&window, place); };

    for (const bool presses : {false, true}) {
        point({3, 3});
        point(button);
        wait(300);
        EXPECT_FALSE(bubble->isVisible());
        EXPECT_TRUE(runUntil([&] { return bubble->isVisible(); }));
        EXPECT_TRUE(layer->property("text") == content.downloads.changeHelp);
        content.downloads.changeHelp += u" Nothing is moved."_s;
        setContent(content);
        EXPECT_TRUE(layer->property("text") == content.downloads.changeHelp);
        EXPECT_TRUE(
            QRectF(window.contentItem()->boundingRect()).contains(bubble->mapRectToScene(bubble->boundingRect())));
        presses ? QTest::mousePress(&window, Qt::LeftButton, {}, button) : point({3, 3});
        EXPECT_FALSE(bubble->isVisible());
        EXPECT_TRUE(layer->property("text").toString().isEmpty()) << "it would appear again";
        QTest::mouseRelease(&window, Qt::LeftButton, {}, {3, 3});
    }
}

TEST_F(ControlTests, AHintGoesWithItsControl) {
    PanelContent content = contentOf(samples::usual());
    QQuickWindow& window = mainWindow(content);
    const auto& layer = hintLayer(window);
    QTest::mouseMove(&window,
                     control(content.assistants.connect.last().accessibleName).geometry.center() - window.position());
    EXPECT_TRUE(runUntil([&] { return !layer.property("text").toString().isEmpty(); }));
    content.assistants.connect.clear();
    setContent(content);
    EXPECT_TRUE(runUntil([&] { return layer.property("text").toString().isEmpty(); }));
    wait(700); // when the hint would have appeared
    EXPECT_FALSE(layer.childItems().first()->isVisible());
}

TEST_F(ControlTests, AFailedDownloadOpensInPlaceByKeyboard) {
    const PanelContent content = contentOf(samples::usual());
    const auto& failed = content.recent.jobs.last();
    QQuickWindow& window = popover(content);
    while (focusName() != failed.openName) {
        key(Qt::Key_Tab);
    }
    EXPECT_TRUE(controls(failed.logName).isEmpty());
    key(Qt::Key_Return);
    key(Qt::Key_Tab);
    EXPECT_EQ(focusName(), failed.message);
    key(Qt::Key_A, Qt::ControlModifier);
    EXPECT_EQ(focus()->property("selectedText").toString(), failed.message);
    key(Qt::Key_Tab);
    EXPECT_EQ(focusName(), failed.logName);
    key(Qt::Key_Return);
    EXPECT_EQ(host.pressed, QStringList{u"openLog"_s});
    PanelContent later = content;
    later.recent.jobs.last().trailing = u"2 hours ago"_s;
    setContent(later);
    EXPECT_EQ(focusName(), failed.logName) << "a refresh keeps it open";
    press(failed.openName);
    EXPECT_TRUE(controls(failed.logName).isEmpty());
    EXPECT_EQ(window.activeFocusItem()->window(), &window);
}

TEST_F(ControlTests, TheKeyboardFocusShowsHintsAndARing) {
    for (const bool dark : {false, true}) {
        appearance.dark = dark;
        QQuickWindow& window = popover(contentOf(samples::usual()));
        const QQuickItem& layer = hintLayer(window);
        const auto pressTabUntil = [&](const QString& name) {
            while (focusName() != name) {
                key(Qt::Key_Tab);
            }
        };
        pressTabUntil(u"Change Folder…"_s);
        const auto place = control(u"Change Folder…"_s).geometry.translated(-window.position());
        const auto picture = window.grabWindow();
        const auto fill = picture.pixelColor(place.left() + 7, place.center().y());
        double most = 1;
        for (int x = place.left(); x < place.left() + 7; ++x) {
            most = std::max(most, contrast(fill, picture.pixelColor(x, place.center().y())));
        }
        EXPECT_GE(most, 3) << "the ring on an accent button";
        pressTabUntil(u"Open Log"_s);
        EXPECT_TRUE(runUntil([&] { return layer.property("delayPassed").toBool(); }));
        EXPECT_EQ(layer.property("text").toString(), u"Open Log");
        key(Qt::Key_Return);
        EXPECT_EQ(layer.property("text").toString(), QString()) << "it was pressed";
        views.reset();
    }
}

TEST_F(ControlTests, ALinksMenuWorksByKeyboardAndMouse) {
    popover(contentOf(samples::usual()));
    EXPECT_TRUE(controls(u"Disconnect"_s).isEmpty());
    const auto more = control(u"More"_s, u"Claude"_s).name;
    while (focusName() != more) {
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
    EXPECT_EQ(focusName(), more);
    EXPECT_TRUE(views->isPopoverShown());

    // A refresh keeps an open menu open; choosing an entry closes it.
    click(control(u"More"_s, u"Claude"_s));
    PanelContent later = contentOf(samples::usual());
    later.assistants.links.rows.first().detail = u"· used 6 minutes ago"_s;
    setContent(later);
    click(control(u"Disconnect"_s));
    EXPECT_EQ(host.pressed, QStringList{u"disconnectLink a"_s});
    EXPECT_TRUE(controls(u"Disconnect"_s).isEmpty());

    // A paired chat gets a new code instead of a new URL.
    press(u"More"_s, u"Telegram"_s);
    press(u"New Code…"_s);
    EXPECT_EQ(host.pressed.last(), u"newTelegramCode t"_s);

    // The menu closes with the window's focus, and when its link is removed.
    press(u"More"_s, u"Claude"_s);
    QWindow elsewhere;
    elsewhere.show();
    elsewhere.requestActivate();
    EXPECT_TRUE(runUntil([this] { return controls(u"Disconnect"_s).isEmpty(); }));
    views->showPopover({});
    click(control(u"More"_s, u"Claude"_s));
    later.assistants.links.rows.removeFirst();
    setContent(later);
    EXPECT_TRUE(controls(u"Disconnect"_s).isEmpty());
}

} // namespace tunedeck::test
