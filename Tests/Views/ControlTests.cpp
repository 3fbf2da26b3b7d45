// The panel used as people use it: by screen reader, by keyboard, by mouse.
#include "Tests/Helpers/Views/Screen.h"

#include <QSet>

using namespace Qt::StringLiterals;

namespace tunedeck::test {

namespace {

class ControlTests : public Screen {};

/// The panel with everything in it that can be pressed at once.
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

TEST_F(ControlTests, EveryControlIsCalledSomethingAndIsToldFromItsEquals) {
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

TEST_F(ControlTests, WhatIsDisabledCannotBePressedByAnyRoad) {
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
        seen.item()->forceActiveFocus(Qt::TabFocusReason); // as when it was pressed a moment ago
        key(Qt::Key_Space);
        key(Qt::Key_Return);
    }
    EXPECT_EQ(host.pressed.join(u';').toStdString(), "");
    content.footer.restarting = false;
    become(content);
    click(control(u"Restart tunedeck"_s));
    EXPECT_EQ(host.pressed, QStringList{u"restartService"_s});
}

TEST_F(ControlTests, TabGoesThroughEveryControlFromTopToBottomAndBringsItIntoSight) {
    QQuickWindow& window = popover(samples::crowded());
    const qsizetype count = controls().size();
    QStringList way;
    int lastInCards = 0;
    for (qsizetype i = 0; i < count; ++i) {
        key(Qt::Key_Tab);
        const QRectF place = focus()->mapRectToScene(focus()->boundingRect());
        EXPECT_GE(place.top(), 0) << qPrintable(focusName());
        EXPECT_LE(place.bottom(), window.height()) << qPrintable(focusName());
        EXPECT_TRUE(focus()->property("focusShown").toBool()) << qPrintable(focusName());
        way.append(focusName());
        lastInCards = focusName() == u"Copy Diagnostics"_s ? static_cast<int>(i) : lastInCards;
    }
    QStringList order;
    for (const Seen& seen : controls()) {
        order.append(seen.name);
    }
    EXPECT_EQ(way.join(u'|').toStdString(), order.join(u'|').toStdString());
    EXPECT_EQ(lastInCards, count - 5) << "the footer comes after the cards";
    key(Qt::Key_Tab);
    EXPECT_EQ(focusName(), way.first());
    key(Qt::Key_Backtab, Qt::ShiftModifier);
    EXPECT_EQ(focusName(), way.last());
}

TEST_F(ControlTests, KeysPressAndTheMouseClicksOnce) {
    popover(samples::usual());
    while (focusName() != u"Open Log"_s) {
        key(Qt::Key_Tab);
    }
    key(Qt::Key_Return);
    key(Qt::Key_Space);
    EXPECT_EQ(host.pressed, (QStringList{u"openLog"_s, u"openLog"_s}));
    host.pressed.clear();
    click(control(u"Check for Updates"_s));
    EXPECT_EQ(host.pressed, QStringList{u"checkForUpdates"_s});
    EXPECT_FALSE(focus()->property("focusShown").toBool() && focusName() == u"Check for Updates"_s);
    key(Qt::Key_Escape);
    EXPECT_FALSE(views->isPopoverShown());
}

TEST_F(ControlTests, TheMenuOfALinkIsUsedByKeyboardAndMouseAndEscapeClosesItAlone) {
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

    // A refresh leaves an open menu open; choosing closes it and asks once.
    click(control(u"More"_s, u"Claude"_s));
    PanelContent later = samples::usual();
    later.assistants.links.first().detail = u"· used 6 minutes ago"_s;
    become(later);
    click(control(u"Disconnect"_s));
    EXPECT_EQ(host.pressed, QStringList{u"disconnectLink a"_s});
    EXPECT_TRUE(controls(u"Disconnect"_s).isEmpty());

    // A chat that is paired gets a new code, not a new address.
    press(u"More"_s, u"Telegram"_s);
    press(u"New Code…"_s);
    EXPECT_EQ(host.pressed.last(), u"newTelegramCode t"_s);

    // It goes with its link.
    click(control(u"More"_s, u"Claude"_s));
    later.assistants.links.removeFirst();
    become(later);
    EXPECT_TRUE(controls(u"Disconnect"_s).isEmpty());
}

} // namespace tunedeck::test
