// The windows: visibility, painting, rows and dialogs.
#include "Tests/Helpers/Contrast.h"
#include "Tests/Helpers/Views/Screen.h"
#include "TunedeckCore/QRCode.h"

#include <QAbstractEventDispatcher>
#include <QCursor>
#include <QGuiApplication>
#include <QQmlComponent>
#include <QQmlEngine>
#include <QScreen>
#include <QSet>
#include <QWheelEvent>

using namespace Qt::StringLiterals;

namespace tunedeck::test {

namespace {

class WindowTests : public Screen {};

/// A panel without animations.
PanelContent still() {
    PanelContent content = contentOf(samples::crowded());
    content.recent.jobs.removeFirst();
    return content;
}

const Confirmation disconnect{.message = u"Disconnect Claude?"_s,
                              .informativeText = u"Its link stops working at once."_s,
                              .confirmButton = u"Disconnect"_s,
                              .cancelButton = u"Cancel"_s,
                              .warning = true};

} // namespace

TEST_F(WindowTests, AnUnchangedRefreshRepaintsNothing) {
    QQuickWindow& window = popover(still());
    press(u"Backups (60)"_s);
    wait(300);
    int frames = 0;
    QObject::connect(&window, &QQuickWindow::afterRendering, &window, [&] { ++frames; }, Qt::DirectConnection);
    for (int i = 0; i < 20; ++i) {
        views->setContent(still());
        views->setAppearance(appearance);
        wait(10);
    }
    EXPECT_EQ(frames, 0);
    PanelContent changed = still();
    changed.recent.jobs.first().trailing = u"6 minutes ago"_s;
    setContent(changed);
    EXPECT_TRUE(runUntil([&] { return frames > 0; }));
    wait(100);
    EXPECT_LE(frames, 2);
}

TEST_F(WindowTests, AnimationsStopWhileTheWindowIsHiddenOrMinimized) {
    appearance.reduceMotion = false;
    PanelState starting = samples::stopped();
    starting.isRestarting = true;
    const auto wakeUps = [] {
        int count = 0;
        const QObject counter;
        QObject::connect(QAbstractEventDispatcher::instance(), &QAbstractEventDispatcher::awake, &counter,
                         [&] { ++count; });
        wait(400);
        return count;
    };
    for (const PanelState& state : {starting, samples::usual()}) { // with a spinner, with a pulsing symbol
        popover(contentOf(state));
        EXPECT_GE(wakeUps(), 8);
        views->closePopover();
        wait(100);
        EXPECT_LE(wakeUps(), 6) << "hidden";
        mainWindow(contentOf(state)).showMinimized();
        EXPECT_TRUE(runUntil([this] { return !views->isWindowShown(); }));
        wait(100);
        EXPECT_LE(wakeUps(), 6) << "minimized";
    }
}

TEST_F(WindowTests, CardsFadeOutWithTheirTextAndAnOpenGroupGrowsAtOnce) {
    appearance.reduceMotion = false;
    PanelContent content = contentOf(samples::troubled());
    content.notRunning = contentOf(samples::stopped()).notRunning;
    const QStringList fading{content.hiddenIcon.text,         content.notRunning.text,        content.tools.text,
                             content.recent.jobs[0].playlist, content.downloads.warning.text, content.banner.text};
    const auto countShown = [&] {
        return std::ranges::count_if(fading, [this](const QString& text) { return hasText(text); });
    };
    mainWindow(content);
    setContent(contentOf(samples::checking()));
    EXPECT_EQ(countShown(), fading.size());
    EXPECT_TRUE(runUntil([&] { return countShown() == 0; }));

    content = contentOf(samples::usual());
    setContent(content);
    press(u"Backups (3)"_s);
    wait(400);
    const auto bottom = [this] { return control(u"Show"_s).geometry.bottom(); };
    const int before = bottom();
    content.rekordbox.backups.rows << BackupRowView{.version = u"0.9.0"_s, .button = u"Restore"_s};
    setContent(content);
    wait(30);
    const int after = bottom();
    EXPECT_GT(after, before);
    wait(300);
    EXPECT_EQ(bottom(), after);
}

TEST_F(WindowTests, DrawsCodesIconsAndTones) {
    QPixmap red(32, 32);
    red.fill(Qt::red);
    host.icon = red;
    PanelContent content = contentOf(samples::troubled());
    TelegramPairingView& pairing = content.assistants.links.rows.last().pairing;
    mainWindow(content).resize(front().width(), 2000);
    wait(100);
    const auto code = QRCode::image(pairing.startUrl);
    ASSERT_TRUE(code);
    const auto picture = [this](const QString& name) {
        const QList<Element> shown = elements();
        const QRect place = std::ranges::find(shown, name, &Element::name)->geometry;
        return front().grabWindow().copy(place.translated(-front().position()));
    };
    const auto countWrong = [&](int darkest, int lightest) {
        const QImage image = picture(pairing.qrName);
        const int module = image.width() / code->size;
        const QPoint corner = image.rect().center() - QPoint(module, module) * code->size / 2;
        int wrong = 0;
        for (int i = 0; i < code->size * code->size; ++i) {
            const QPoint at(i % code->size, i / code->size);
            const int grey = qGray(image.pixel(corner + at * module + QPoint(module, module) / 2));
            wrong += code->isDark(at.x(), at.y()) ? grey < darkest || grey > darkest + 50 : grey < lightest;
        }
        return wrong;
    };
    EXPECT_EQ(countWrong(0, 200), 0);
    const QImage folder = picture(u"Show in Finder, ~/Music/Tunedeck"_s);
    EXPECT_EQ(folder.pixelColor(22, folder.height() / 2), QColor(Qt::red));
    EXPECT_EQ(host.iconPaths, QStringList{content.downloads.folderPath});
    EXPECT_EQ(picture(u"Added"_s).pixelColor(7, 2), QColor("#2ba84f"));
    EXPECT_EQ(picture(u"Failed"_s).pixelColor(7, 2), QColor("#e0362e"));
    pairing.expired = true;
    setContent(content);
    EXPECT_LT(countWrong(150, 200), 80) << "faded, below a symbol";

    views.reset();
    onboarding(contentOf(samples::rekordboxStep()));
    const QImage dots = picture(u"Step 2 of 3"_s);
    EXPECT_EQ(dots.pixelColor(dots.rect().center()), QColor("#6d3ee0"));
}

TEST_F(WindowTests, TimesInRowsKeepTheirPlaceWhileTheyCount) {
    PanelContent content = contentOf(samples::usual());
    QSet<int> lefts;
    for (const auto& time : {u"11 minutes ago"_s, u"28 minutes ago"_s, u"40 minutes ago"_s}) {
        content.recent.jobs[1].trailing = time;
        mainWindow(content);
        const auto all = elements();
        lefts.insert(std::ranges::find(all, time, &Element::name)->geometry.left());
    }
    EXPECT_EQ(lefts.size(), 1);
}

TEST_F(WindowTests, ARefreshKeepsRowsAndTheirFocus) {
    mainWindow(contentOf(samples::usual()));
    press(u"Backups (3)"_s);
    QQuickItem* const restore = control(u"Restore"_s, u"v1.2.0"_s).item();
    QQuickItem* const copy = control(u"Copy"_s).item();
    restore->forceActiveFocus(Qt::TabFocusReason);

    PanelContent next = contentOf(samples::usual());
    next.recent.jobs.prepend(
        JobRowView{.id = u"9"_s, .symbol = u"clock.fill"_s, .playlist = u"Sunday"_s, .trailing = u"now"_s});
    next.recent.jobs.removeLast();
    next.rekordbox.backups.rows.prepend(next.rekordbox.backups.rows.first());
    next.rekordbox.backups.rows.first().id = u"1.4.0"_s;
    next.rekordbox.backups.rows.first().help = u"Restore v1.4.0"_s;
    next.assistants.links.rows.swapItemsAt(0, 1);
    next.assistants.links.rows.last().urlField.buttonName = u"Copied"_s;
    setContent(next);

    EXPECT_EQ(control(u"Restore"_s, u"v1.2.0"_s).item(), restore);
    EXPECT_EQ(control(u"Copied"_s).item(), copy);
    EXPECT_EQ(focus(), restore);
    key(Qt::Key_Space);
    EXPECT_EQ(host.pressed, QStringList{u"restoreBackup 1.2.0"_s});
    EXPECT_FALSE(hasText(u"After Hours"_s));
    EXPECT_LT(texts().indexOf(u"Sunday"_s), texts().indexOf(u"Disco Edits 2026"_s));
}

TEST_F(WindowTests, EveryRowOfALongListIsReachableThoughFewExist) {
    constexpr int count = 3000;
    PanelState state = samples::usual();
    ServiceStatus::Library& library = *samples::status(state).rekordboxDb;
    for (int i = 0; i < count; ++i) {
        const QString error(1 + i % 7 * 40, u'e'); // rows of different heights
        library.failed.push_back({u"c%1"_s.arg(i), u"Change %1"_s.arg(i), error});
        state.links.push_back(samples::link(u"l%1"_s.arg(i), Assistant::claude));
    }
    RowRanges ranges;
    host.onShowRows = [&](RowRange RowRanges::* list, RowRange range) {
        ranges.*list = range;
        views->setContent(contentOf(state, ranges));
    };
    mainWindow(contentOf(state)).resize(front().width(), 600);
    const auto press = [this](Qt::Key pressed) {
        key(pressed);
        wait(30);
    };
    for (int i = 0; i < 4; ++i) {
        press(Qt::Key_End); // again, because the heights of rows are estimated until they exist
    }
    QSet<int> seen;
    for (int page = 0; page < 15; ++page) {
        const QRect window(front().position(), front().size());
        const QList<Element> all = elements();
        EXPECT_LT(all.size(), 1000);
        for (const Element& each : all) {
            static const QRegularExpression change(u"Change ([0-9]+)"_s);
            if (const auto match = change.match(each.name); match.hasMatch() && window.intersects(each.geometry)) {
                seen.insert(match.captured(1).toInt());
            }
        }
        press(Qt::Key_PageUp);
    }
    EXPECT_TRUE(seen.contains(count - 1));
    EXPECT_GT(seen.size(), 50);
    EXPECT_EQ(*std::ranges::min_element(seen), count - seen.size()) << "a row was skipped";

    press(Qt::Key_Home);
    int tabs = 0;
    const auto hasReached = [this] { return focusName(QAccessible::Description).contains(u"Claude, 100 of"_s); };
    while (tabs < 500 && !hasReached()) {
        key(Qt::Key_Tab);
        ++tabs;
    }
    EXPECT_LT(tabs, 500) << "the keyboard reaches links that didn't exist at first";
}

TEST_F(WindowTests, RowsComeAndGoWhileTheWindowIsResized) {
    QQuickWindow& window = mainWindow(contentOf(samples::crowded()));
    press(u"Backups (60)"_s);
    for (int round = 0; round < 60; ++round) {
        PanelContent content = round % 3 == 0 ? contentOf(samples::usual()) : contentOf(samples::crowded());
        content.recent.jobs = content.recent.jobs.mid(round % 4);
        content.assistants.links.rows = content.assistants.links.rows.mid(round % 5);
        content.assistants.connect = contentOf(samples::checking()).assistants.connect.mid(round % 3);
        window.resize(window.width(), 400 + round * 37 % 500);
        setContent(content);
        EXPECT_EQ(controls(u"Restore"_s).size(), content.rekordbox.backups.rows.size()) << round;
    }
}

TEST_F(WindowTests, ReportsEachWindowOnceWhenItAppearsOrDisappears) {
    popover(contentOf(samples::troubled()));
    EXPECT_FALSE(hasText(u"Menu bar"_s)) << "the icon that opened the popover isn't hidden";
    EXPECT_EQ(host.appeared, 1);
    views->showPopover({400, 2, 24, 24});
    EXPECT_EQ(host.appeared, 1);
    mainWindow(contentOf(samples::usual()));
    EXPECT_EQ(host.appeared, 1) << "the window takes the popover's place";
    EXPECT_FALSE(views->isPopoverShown());
    front().showMinimized();
    EXPECT_TRUE(runUntil([this] { return host.appeared == 0; }));
    EXPECT_FALSE(views->isWindowShown());
    views->showWindow();
    EXPECT_TRUE(runUntil([this] { return host.appeared == 1; }));
    QQuickWindow& window = front();
    EXPECT_TRUE(window.close());
    EXPECT_TRUE(runUntil([this] { return host.appeared == 0; }));
    views->showWindow();
    EXPECT_EQ(&front(), &window) << "the window is kept";
}

TEST_F(WindowTests, ThePopoverClosesOnFocusLossAndTheSameClickDoesNotReopenIt) {
    popover(contentOf(samples::usual()));
    const QRect anchor(400, 2, 24, 24);
    QCursor::setPos(anchor.center());
    QWindow elsewhere;
    elsewhere.show();
    elsewhere.requestActivate();
    EXPECT_TRUE(runUntil([this] { return !views->isPopoverShown(); }));
    views->showPopover(anchor);
    EXPECT_FALSE(views->isPopoverShown());
    views->showPopover(anchor);
    EXPECT_TRUE(views->isPopoverShown()) << "the next click opens it";
    runUntil([this] { return front().isActive(); });
    key(Qt::Key_Escape);
    EXPECT_FALSE(views->isPopoverShown());
}

TEST_F(WindowTests, TheWheelScrollsAPanelHigherThanTheScreen) {
    QQuickWindow& window = popover(contentOf(samples::crowded()));
    EXPECT_TRUE(window.screen()->availableGeometry().contains(window.geometry()));
    const QRect quit = control(u"Quit Tunedeck"_s).geometry;
    EXPECT_TRUE(window.geometry().contains(quit));
    const QPointF centre(window.width() / 2.0, window.height() / 2.0);
    for (int i = 0; i < 200; ++i) {
        QWheelEvent event(centre, window.mapToGlobal(centre), {}, {0, -120}, {}, {}, Qt::NoScrollPhase, false);
        QCoreApplication::sendEvent(&window, &event);
    }
    wait(20);
    EXPECT_LT(control(u"Copy Diagnostics"_s).geometry.bottom(), quit.top());
    const auto y = [this] { return control(u"Copy Diagnostics"_s).geometry.y(); };
    const int end = y();
    for (const auto& [there, back] :
         {std::pair(Qt::Key_Up, Qt::Key_Down), {Qt::Key_PageUp, Qt::Key_PageDown}, {Qt::Key_Home, Qt::Key_End}}) {
        key(there);
        EXPECT_GT(y(), end) << there;
        key(back);
        EXPECT_EQ(y(), end) << back;
    }
    EXPECT_EQ(control(u"Quit Tunedeck"_s).geometry, quit);
}

TEST_F(WindowTests, AQuestionIsAnsweredByButtonKeyOrClosing) {
    mainWindow(contentOf(samples::usual()));
    const struct {
        QString button;
        QList<Qt::Key> keys;
        bool confirms = false;
    } ways[] = {
        {u"Disconnect"_s, {}, true},
        {u"Cancel"_s, {}},
        {{}, {Qt::Key_Return}, true},
        {{}, {Qt::Key_Escape}},
        {{}, {Qt::Key_Tab, Qt::Key_Tab, Qt::Key_Return}},
        {}, // closes the window
    };
    for (const auto& [button, keys, confirms] : ways) {
        std::vector<bool> answers;
        views->confirm(disconnect, [&](bool yes) { answers.push_back(yes); });
        // A window manager may give the focus to the window behind for a moment when a question has closed.
        EXPECT_TRUE(runUntil([this] {
            return front().modality() == Qt::ApplicationModal && front().isActive() && !focusName().isEmpty();
        }));
        EXPECT_TRUE(hasText(disconnect.message) && hasText(disconnect.informativeText));
        if (!button.isEmpty()) {
            press(button);
        } else if (keys.isEmpty()) {
            front().close();
        }
        for (const Qt::Key each : keys) {
            key(each);
        }
        EXPECT_TRUE(runUntil([this] { return front().modality() == Qt::NonModal; }));
        EXPECT_EQ(answers, std::vector{confirms});
    }
}

TEST_F(WindowTests, QuestionsQueueWhileThePanelKeepsUpdating) {
    QQuickWindow& panel = popover(contentOf(samples::usual()));
    QStringList answers;
    Confirmation other = disconnect;
    other.message = u"Disconnect Telegram?"_s;
    for (const Confirmation& question : {disconnect, other}) {
        views->confirm(question,
                       [&, name = question.message](bool yes) { answers.append(name + (yes ? u" yes"_s : u" no"_s)); });
    }
    wait(300);
    EXPECT_TRUE(panel.isVisible()) << "the question doesn't close the popover";
    EXPECT_FALSE(hasText(other.message));
    PanelContent next = contentOf(samples::usual());
    next.header.status = u"Running · cloud off"_s;
    setContent(next);
    QKeyEvent held(QEvent::KeyPress, Qt::Key_Return, {}, {}, true);
    QCoreApplication::sendEvent(&front(), &held);
    for (const auto type : {QEvent::KeyRelease, QEvent::KeyPress}) { // as an X server repeats a key
        QKeyEvent repeat(type, Qt::Key_Return, {});
        repeat.setTimestamp(1000);
        QCoreApplication::sendEvent(&front(), &repeat);
    }
    EXPECT_TRUE(hasText(disconnect.message)) << "a held key that opened the question doesn't answer it";
    const Element yes = control(u"Disconnect"_s);
    yes.press();
    yes.press();
    EXPECT_TRUE(runUntil([&] { return hasText(other.message); })) << "a double press answers only one question";
    press(u"Cancel"_s);
    EXPECT_TRUE(runUntil([&] { return answers.size() == 2; }));
    EXPECT_EQ(answers, (QStringList{u"Disconnect Claude? yes"_s, u"Disconnect Telegram? no"_s}));
    EXPECT_TRUE(hasText(next.header.status));
}

TEST_F(WindowTests, ControlsDontOverlapWithLargeText) {
    const QFont usual = QGuiApplication::font();
    QFont large = usual;
    large.setPixelSize(24);
    QGuiApplication::setFont(large);
    PanelContent content = contentOf(samples::longWords());
    content.assistants.connect = contentOf(samples::checking()).assistants.connect;
    QQuickWindow& window = mainWindow(content);
    const QList<Element> shown = controls();
    for (const Element& element : shown) {
        EXPECT_GE(element.geometry.left(), window.x()) << qPrintable(element.name);
        EXPECT_LE(element.geometry.right(), window.geometry().right()) << qPrintable(element.name);
        for (const Element& other : shown) {
            const QRect both = element.geometry.intersected(other.geometry);
            EXPECT_TRUE(&element == &other || both.width() <= 1 || both.height() <= 1)
                << qPrintable(element.name) << " lies over " << qPrintable(other.name);
        }
    }
    EXPECT_GT(window.width(), 440);
    QGuiApplication::setFont(usual);
}

TEST_F(WindowTests, TextHasEnoughContrastInLightAndDark) {
    mainWindow(contentOf(samples::usual()));
    QQmlEngine* const engine = qmlEngine(front().contentItem()->childItems().first());
    QQmlComponent reader(engine);
    reader.setData("import QtQml\nimport Tunedeck.Views\nQtObject { readonly property QtObject theme: Theme }",
                   QUrl(u"qrc:/tunedeck/qml/Tunedeck/Views/Reader.qml"_s));
    const std::unique_ptr<QObject> read(reader.create());
    ASSERT_NE(read, nullptr) << qPrintable(reader.errorString());
    const auto* theme = read->property("theme").value<QObject*>();
    ASSERT_NE(theme, nullptr);
    const auto colour = [&](const char* name) { return theme->property(name).value<QColor>(); };
    QColor lightWindow;
    for (const bool dark : {false, true}) {
        views->setAppearance({.dark = dark, .reduceMotion = true});
        if (dark) {
            EXPECT_NE(colour("window"), lightWindow) << "it follows at once";
        }
        lightWindow = colour("window");
        for (const char* below : {"window", "card", "control", "raised"}) {
            for (const char* ink : {"text", "secondary", "accent", "good", "warning", "bad"}) {
                EXPECT_GE(contrast(colour(ink), colour(below)), 4.5) << ink << " on " << below << (dark ? " dark" : "");
            }
        }
        EXPECT_GE(contrast(colour("accentText"), colour("accentFill")), 4.5);
        EXPECT_GE(contrast(colour("hintText"), colour("hint")), 4.5);
        const double usual = contrast(colour("controlEdge"), colour("control"));
        views->setAppearance({.dark = dark, .moreContrast = true});
        EXPECT_GT(contrast(colour("controlEdge"), colour("control")), std::max(usual, 4.5));
    }
    for (const QRgb accent : {0xffffc600, 0xff007aff, 0xff8c8c8c, 0xff757575, 0xff62ba46}) {
        views->setAppearance({.accent = accent});
        EXPECT_EQ(colour("accentFill"), QColor(accent));
        EXPECT_GE(contrast(colour("accentText"), colour("accentFill")), 4.5) << accent;
    }
}

} // namespace tunedeck::test
