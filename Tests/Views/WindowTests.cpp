// The windows: position, size, visibility, painting and dialogs.
#include "Tests/Helpers/Views/Screen.h"
#include "TunedeckMenu/Views/Edge/PopoverPlace.h"

#include <QCursor>
#include <QGuiApplication>
#include <QQmlComponent>
#include <QQmlEngine>
#include <QScreen>
#include <QWheelEvent>

#include <cmath>

using namespace Qt::StringLiterals;

namespace tunedeck::test {

namespace {

class WindowTests : public Screen {};

/// A panel without animations.
PanelContent still() {
    PanelContent content = samples::crowded();
    content.recent.jobs.removeFirst();
    return content;
}

const Confirmation disconnect{.message = u"Disconnect Claude?"_s,
                              .informativeText = u"Its link stops working at once."_s,
                              .confirmButton = u"Disconnect"_s,
                              .cancelButton = u"Cancel"_s,
                              .warning = true};

void turnWheel(QQuickWindow& window, int angle) {
    const QPointF middle(window.width() / 2.0, window.height() / 2.0);
    QWheelEvent event(middle, window.mapToGlobal(middle), {}, {0, angle}, Qt::NoButton, Qt::NoModifier,
                      Qt::NoScrollPhase, false);
    QCoreApplication::sendEvent(&window, &event);
}

double luminance(const QColor& colour) {
    const auto linear = [](float value) {
        return value <= 0.04045F ? value / 12.92 : std::pow((value + 0.055) / 1.055, 2.4);
    };
    return 0.2126 * linear(colour.redF()) + 0.7152 * linear(colour.greenF()) + 0.0722 * linear(colour.blueF());
}

double contrast(const QColor& a, const QColor& b) {
    const double first = luminance(a) + 0.05;
    const double second = luminance(b) + 0.05;
    return std::max(first, second) / std::min(first, second);
}

QColor over(const QColor& below, const QColor& above, float opacity) {
    const auto mix = [&](float under, float top) { return under * (1 - opacity) + top * opacity; };
    return QColor::fromRgbF(mix(below.redF(), above.redF()), mix(below.greenF(), above.greenF()),
                            mix(below.blueF(), above.blueF()));
}

} // namespace

TEST(PopoverPlaceTests, ThePopoverIsAtItsIconAndInsideTheScreen) {
    const QRect screen(0, 0, 1600, 1000);
    const QRect barAbove = screen.adjusted(0, 28, 0, 0);
    const QRect barBelow = screen.adjusted(0, 0, 0, -44);
    const QSize size(360, 600);
    EXPECT_EQ(popoverPlace({800, 0, 24, 28}, size, screen, barAbove), QRect(631, 34, 360, 600));
    EXPECT_EQ(popoverPlace({1570, 0, 24, 28}, size, screen, barAbove).right(), 1593);
    EXPECT_EQ(popoverPlace({2, 0, 24, 28}, size, screen, barAbove).left(), 6);
    EXPECT_EQ(popoverPlace({800, 960, 24, 28}, size, screen, barBelow).bottom(), 949);
    // Unknown icon position: the corner where trays usually are.
    EXPECT_EQ(popoverPlace({}, size, screen, barAbove), QRect(1234, 34, 360, 600));
    EXPECT_EQ(popoverPlace({}, size, screen, barBelow).bottomRight(), QPoint(1593, 949));
    // A second screen that is too small, with icons partly outside.
    const QRect second(1600, -200, 800, 480);
    for (const QRect& anchor :
         {QRect(), QRect(2390, 270, 40, 40), QRect(1590, -210, 24, 24), QRect(1700, 20, 24, 24)}) {
        const QRect place = popoverPlace(anchor, {360, 4000}, second, second.adjusted(0, 20, -30, 0));
        EXPECT_TRUE(second.adjusted(0, 20, -30, 0).contains(place))
            << place.x() << "," << place.y() << " " << place.height();
        EXPECT_GT(place.height(), 100);
    }
}

TEST(PopoverPlaceTests, WindowManagersKeepTheHeightAtEveryScale) {
    for (const double ratio : {1.0, 1.25, 1.5, 1.75, 2.0, 2.5, 3.0}) {
        for (int wanted = 280; wanted < 1400; ++wanted) {
            const int height = steadyHeight(wanted, ratio);
            const int given = qRound(height * ratio) / qRound(ratio) * qRound(ratio); // in whole steps of pixels
            EXPECT_EQ(qRound(given / ratio), height) << wanted << " at " << ratio;
            EXPECT_TRUE(height >= wanted && height <= wanted + 2) << wanted << " at " << ratio;
        }
    }
}

TEST_F(WindowTests, AnUnchangedRefreshRepaintsNothing) {
    QQuickWindow& window = popover(still());
    press(u"Backups (60)"_s);
    pass(300);
    int frames = 0;
    QObject::connect(&window, &QQuickWindow::afterRendering, &window, [&] { ++frames; }, Qt::DirectConnection);
    for (int i = 0; i < 20; ++i) {
        views->setContent(still());
        views->setAppearance(appearance);
        pass(10);
    }
    EXPECT_EQ(frames, 0);
    PanelContent changed = still();
    changed.recent.jobs.first().trailing = u"6 minutes ago"_s;
    become(changed);
    EXPECT_TRUE(until([&] { return frames > 0; }));
    pass(100);
    EXPECT_LE(frames, 2);
}

TEST_F(WindowTests, ARefreshKeepsRowsAndTheirFocus) {
    mainWindow(samples::usual());
    press(u"Backups (3)"_s);
    const auto row = [this](const QString& text) {
        for (const Seen& seen : all()) {
            if (seen.name == text) {
                return seen.item();
            }
        }
        return static_cast<QQuickItem*>(nullptr);
    };
    QQuickItem* const disco = row(u"Disco Edits 2026"_s);
    QQuickItem* const restore = control(u"Restore"_s, u"v1.2.0"_s).item();
    QQuickItem* const copy = control(u"Copy"_s).item();
    restore->forceActiveFocus(Qt::TabFocusReason);

    PanelContent next = samples::usual();
    next.recent.jobs.prepend(
        JobRowView{.id = u"9"_s, .symbol = u"clock.fill"_s, .playlist = u"Sunday"_s, .trailing = u"now"_s});
    next.recent.jobs.removeLast();
    next.recent.jobs[2].trailing = u"6 minutes ago"_s;
    next.recent.jobs.swapItemsAt(1, 2);
    next.rekordbox.backups.prepend(next.rekordbox.backups.first());
    next.rekordbox.backups.first().version = u"1.4.0"_s;
    next.rekordbox.backups.first().help = u"Restore v1.4.0"_s;
    next.assistants.links.swapItemsAt(0, 1);
    next.assistants.links.last().fields.first().button = u"Copied"_s;
    become(next);

    EXPECT_EQ(row(u"Disco Edits 2026"_s), disco);
    EXPECT_EQ(control(u"Restore"_s, u"v1.2.0"_s).item(), restore);
    EXPECT_EQ(control(u"Copied"_s).item(), copy);
    EXPECT_EQ(focus(), restore);
    EXPECT_EQ(row(u"After Hours"_s), nullptr);
    EXPECT_LT(row(u"Sunday"_s)->mapToScene({}).y(), disco->mapToScene({}).y());
}

TEST_F(WindowTests, RowsComeAndGoWhileTheWindowIsResized) {
    QQuickWindow& window = mainWindow(samples::crowded());
    press(u"Backups (60)"_s);
    for (int round = 0; round < 60; ++round) {
        PanelContent content = round % 3 == 0 ? samples::usual() : samples::crowded();
        content.recent.jobs = content.recent.jobs.mid(round % 4);
        content.assistants.links = content.assistants.links.mid(round % 5);
        content.assistants.connect = samples::checking().assistants.connect.mid(round % 3);
        window.resize(window.width(), 400 + round * 37 % 500);
        become(content);
        EXPECT_EQ(controls(u"Restore"_s).size(), content.rekordbox.backups.size()) << round;
    }
}

TEST_F(WindowTests, ReportsEachWindowOnceWhenItAppearsOrDisappears) {
    popover(samples::usual());
    EXPECT_EQ(host.appeared, 1);
    views->showPopover({400, 2, 24, 24});
    EXPECT_EQ(host.appeared, 1);
    mainWindow(samples::usual());
    EXPECT_EQ(host.appeared, 1) << "the window takes the popover's place";
    EXPECT_FALSE(views->isPopoverShown());
    front().showMinimized();
    EXPECT_TRUE(until([this] { return host.appeared == 0; }));
    EXPECT_FALSE(views->isWindowShown());
    views->showWindow();
    EXPECT_TRUE(until([this] { return host.appeared == 1; }));
    QQuickWindow& window = front();
    EXPECT_TRUE(window.close());
    EXPECT_TRUE(until([this] { return host.appeared == 0; }));
    views->showWindow();
    EXPECT_EQ(&front(), &window) << "the window is kept";
}

TEST_F(WindowTests, ThePopoverClosesOnFocusLossAndTheSameClickDoesNotReopenIt) {
    popover(samples::usual());
    const QRect anchor(400, 2, 24, 24);
    QWindow elsewhere;
    elsewhere.show();
    elsewhere.requestActivate();
    EXPECT_TRUE(until([this] { return !views->isPopoverShown(); }));
    QCursor::setPos(anchor.center());
    views->showPopover(anchor);
    EXPECT_FALSE(views->isPopoverShown());
    views->showPopover(anchor);
    EXPECT_TRUE(views->isPopoverShown()) << "the next click opens it";
    until([this] { return front().isActive(); });
    key(Qt::Key_Escape);
    EXPECT_FALSE(views->isPopoverShown());
}

TEST_F(WindowTests, APanelHigherThanTheScreenScrolls) {
    QQuickWindow& window = popover(samples::crowded());
    EXPECT_TRUE(window.screen()->availableGeometry().contains(window.geometry()));
    const Seen quit = control(u"Quit Tunedeck"_s);
    EXPECT_TRUE(window.geometry().contains(quit.place));
    const int before = control(u"Copy Diagnostics"_s).place.top();
    EXPECT_GT(before, window.geometry().bottom());
    for (int i = 0; i < 200; ++i) {
        turnWheel(window, -120);
    }
    pass(20);
    EXPECT_LT(control(u"Copy Diagnostics"_s).place.bottom(), quit.place.top());
    EXPECT_EQ(control(u"Quit Tunedeck"_s).place, quit.place);
    for (int i = 0; i < 200; ++i) {
        turnWheel(window, 120);
    }
    pass(20);
    EXPECT_EQ(control(u"Copy Diagnostics"_s).place.top(), before);
}

TEST_F(WindowTests, TheWindowFitsItsContentUntilTheUserResizesIt) {
    QQuickWindow& window = mainWindow(samples::checking());
    const QRect available = window.screen()->availableGeometry();
    const int small = window.height();
    become(samples::crowded());
    EXPECT_TRUE(until([&] { return window.height() > small; }));
    EXPECT_TRUE(until([&] { return available.contains(window.geometry()); }))
        << window.y() << " + " << window.height() << " in " << available.height();
    become(samples::checking());
    EXPECT_TRUE(until([&] { return window.height() == small; }));
    window.resize(window.width(), 400);
    pass(20);
    become(samples::crowded());
    pass(120);
    EXPECT_EQ(window.height(), 400);
}

TEST_F(WindowTests, AQuestionIsAnsweredByButtonKeyOrClosing) {
    mainWindow(samples::usual());
    QList<bool> answers;
    const auto ask = [&] {
        views->confirm(disconnect, [&](bool yes) { answers.append(yes); });
        EXPECT_TRUE(until([this] { return front().modality() == Qt::ApplicationModal && front().isActive(); }));
        EXPECT_TRUE(until([this] { return sees(disconnect.message) && sees(disconnect.informativeText); }));
    };
    // A window manager may give the focus to the window behind for a moment when a question has closed.
    const auto type = [&](Qt::Key what) {
        EXPECT_TRUE(until([this] { return front().isActive() && !focusName().isEmpty(); }));
        key(what);
    };
    const auto gone = [&] { return until([this] { return front().modality() == Qt::NonModal; }); };
    ask();
    press(u"Disconnect"_s);
    EXPECT_TRUE(gone());
    EXPECT_FALSE(sees(disconnect.message));
    ask();
    press(u"Cancel"_s);
    EXPECT_TRUE(gone());
    ask();
    type(Qt::Key_Return);
    EXPECT_TRUE(gone());
    ask();
    type(Qt::Key_Escape);
    EXPECT_TRUE(gone());
    ask();
    type(Qt::Key_Tab);
    type(Qt::Key_Tab);
    EXPECT_TRUE(until([this] { return focusName() == u"Cancel"_s; }));
    type(Qt::Key_Return);
    EXPECT_TRUE(gone());
    ask();
    front().close();
    EXPECT_TRUE(gone());
    EXPECT_EQ(answers, (QList<bool>{true, false, true, false, false, false}));
}

TEST_F(WindowTests, QuestionsQueueWhileThePanelKeepsUpdating) {
    QQuickWindow& panel = popover(samples::usual());
    QStringList answers;
    views->confirm(disconnect, [&](bool yes) { answers.append(yes ? u"first yes"_s : u"first no"_s); });
    Confirmation other = disconnect;
    other.message = u"Disconnect Telegram?"_s;
    views->confirm(other, [&](bool yes) { answers.append(yes ? u"second yes"_s : u"second no"_s); });
    pass(300);
    EXPECT_TRUE(panel.isVisible()) << "the question closes no popover";
    EXPECT_FALSE(sees(other.message));
    PanelContent next = samples::usual();
    next.header.status = u"Running · cloud off"_s;
    become(next);
    press(u"Disconnect"_s);
    EXPECT_TRUE(until([&] { return sees(other.message); }));
    press(u"Cancel"_s);
    EXPECT_TRUE(until([&] { return answers.size() == 2; }));
    EXPECT_EQ(answers, (QStringList{u"first yes"_s, u"second no"_s}));
    EXPECT_TRUE(sees(u"Running · cloud off"_s));
}

TEST_F(WindowTests, ControlsDontOverlapWithLargeText) {
    const QFont usual = QGuiApplication::font();
    QFont large = usual;
    large.setPixelSize(24);
    QGuiApplication::setFont(large);
    PanelContent content = samples::longWords();
    content.assistants.connect = samples::checking().assistants.connect;
    QQuickWindow& window = mainWindow(content);
    const QList<Seen> shown = controls();
    for (const Seen& seen : shown) {
        EXPECT_GE(seen.place.left(), window.x()) << qPrintable(seen.name);
        EXPECT_LE(seen.place.right(), window.geometry().right()) << qPrintable(seen.name);
        for (const Seen& other : shown) {
            const QRect both = seen.place.intersected(other.place);
            EXPECT_TRUE(&seen == &other || both.width() <= 1 || both.height() <= 1)
                << qPrintable(seen.name) << " lies over " << qPrintable(other.name);
        }
    }
    EXPECT_GT(window.width(), 440);
    QGuiApplication::setFont(usual);
}

TEST_F(WindowTests, TextHasEnoughContrastInLightAndDark) {
    mainWindow(samples::usual());
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
        for (const char* ink : {"secondary", "accent", "good", "warning", "bad"}) { // badges
            EXPECT_GE(contrast(colour(ink), over(colour("card"), colour(ink), 0.14F)), 4.5)
                << ink << (dark ? " dark" : "");
        }
        for (const char* mark : {"goodMark", "warningMark"}) { // banners, on cards and on the window
            const QColor onWindow = over(colour("window"), colour(mark), 0.12F);
            EXPECT_GE(contrast(colour("text"), onWindow), 4.5);
            EXPECT_GE(contrast(colour("secondary"), over(colour("card"), colour(mark), 0.12F)), 4.5)
                << mark << (dark ? " dark" : "");
        }
        EXPECT_GE(contrast(colour("accentText"), colour("accentFill")), 4.5);
        EXPECT_GE(contrast(colour("hintText"), colour("hint")), 4.5);
    }
}

} // namespace tunedeck::test
