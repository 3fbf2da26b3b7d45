// Usage: gallery FOLDER [NAME…]
//
// Saves screenshots of every state of the panel, drawn by the real module: light and dark, at 1x, 1.5x and 2x and with
// large text. With NAMEs, only the screenshots whose name starts with one of them.
#include "Tests/Gallery/FakeHost.h"
#include "Tests/Gallery/Samples.h"
#include "TunedeckBuildId.h"
#include "TunedeckMenu/Panel/PanelModule.h"

#include <QApplication>
#include <QDir>
#include <QFont>
#include <QJsonObject>
#include <QKeyEvent>
#include <QPluginLoader>
#include <QProcess>
#include <QQuickItem>
#include <QQuickWindow>
#include <QTimer>

#include <cstdio>
#include <functional>

using namespace Qt::StringLiterals;
using namespace tunedeck;

namespace {

void waitFor(int milliseconds) {
    QEventLoop loop;
    QTimer::singleShot(milliseconds, &loop, &QEventLoop::quit);
    loop.exec();
}

/// The visible window, a modal one first.
QQuickWindow* visibleWindow() {
    QQuickWindow* found = nullptr;
    for (QWindow* window : QGuiApplication::topLevelWindows()) {
        auto* const quick = qobject_cast<QQuickWindow*>(window);
        if (quick != nullptr && quick->isVisible() && (found == nullptr || quick->modality() == Qt::ApplicationModal)) {
            found = quick;
        }
    }
    return found;
}

QObject* findByLabel(QQuickItem* item, const QString& label) {
    if (item->isVisible() && item->property("label").toString() == label) {
        return item;
    }
    for (QQuickItem* child : item->childItems()) {
        if (QObject* found = findByLabel(child, label)) {
            return found;
        }
    }
    return nullptr;
}

void press(const QString& label) {
    if (QObject* item = findByLabel(visibleWindow()->contentItem(), label)) {
        QMetaObject::invokeMethod(item, "clicked");
    }
}

enum class Window { Popover, Main, Onboarding };

struct Screenshot {
    QString name;
    PanelContent panel;
    Window window = Window::Popover;
    std::function<void(PanelViews&)> then = {};
    OnboardingContent onboarding = {};
};

QList<Screenshot> screenshots() {
    PanelState starting = samples::stoppedState();
    starting.isRestarting = true;
    PanelState installing = samples::usualState();
    installing.toolbox = samples::toolsStep().toolbox;
    PanelState open = samples::troubledState();
    open.toolbox.reset();
    open.actionError.reset();
    open.links.pop_back();
    samples::status(open).rekordboxDb->failed.clear();
    PanelState busy = samples::usualState();
    samples::status(busy).rekordboxDb->pending = {{u"p"_s, samples::ago(60), u"Add 2 tracks to “Sunday”"_s}};
    busy.libraryBusy = busy.linksBusy = true;
    busy.revealSecrets = true;
    busy.update.value = UpdateState::Installing{0.63};
    PanelState codes = samples::usualState();
    codes.links = {samples::link(u"x"_s, Assistant::telegram), samples::link(u"y"_s, Assistant::telegram),
                   samples::link(u"z"_s, Assistant::chatgpt), samples::link(u"k"_s, Assistant::iphone)};
    codes.links[0].expiresAt = samples::ago(60);
    codes.links[1].url.reset();
    codes.links[2].url.reset();
    const auto tab = [](int times) {
        return [times](PanelViews&) {
            for (int i = 0; i < times; ++i) {
                QWindow* const window = visibleWindow();
                QKeyEvent down(QEvent::KeyPress, Qt::Key_Tab, {});
                QKeyEvent up(QEvent::KeyRelease, Qt::Key_Tab, {});
                QCoreApplication::sendEvent(window, &down);
                QCoreApplication::sendEvent(window, &up);
            }
        };
    };

    OnboardingState noTools;
    noTools.toolbox = ToolboxReport{.tools = {{.name = u"yt-dlp"_s}, {.name = u"spotdl"_s}, {.name = u"ffmpeg"_s}},
                                    .error = u"The download was cut off."_s};
    noTools.error = u"Couldn't reach tunedeck to repair its tools."_s;
    OnboardingState later = samples::rekordboxStep();
    later.rekordbox.reset();
    later.baseline.value = Baseline::Later{u"Rekordbox is open."_s};
    later.status->rekordboxDb->rekordboxRunning = true;
    OnboardingState claude = samples::assistantStep(Assistant::claude);
    claude.copied = true;
    claude.link->lastUsedAt = samples::ago(60);
    claude.error = u"Couldn't open https://tunedeck.example/connect/claude."_s;
    const auto pressing = [](const QString& label) { return [label](PanelViews&) { press(label); }; };

    PanelState offered = samples::usualState();
    offered.update.value =
        UpdateState::Available{Release{.version = u"1.5.0"_s, .notes = u"Backups are listed by day."_s}};
    PanelState restored = samples::usualState();
    samples::status(restored).rekordboxDb->backups.insert(
        samples::status(restored).rekordboxDb->backups.begin(),
        ServiceStatus::Library::Backup{
            .version = u"2.0.0"_s, .createdAt = samples::ago(30), .reason = u"Before restoring v1.2.0"_s});
    const Confirmation restore{
        .message = u"Restore your Rekordbox library to v1.2.0?"_s,
        .informativeText =
            u"This puts back the backup from 18 Nov 2026, 18:04.\n\nKeep Rekordbox closed until it finishes."_s,
        .confirmButton = u"Restore"_s,
        .cancelButton = u"Cancel"_s,
        .warning = true};
    const auto ask = [restore](PanelViews& views) { views.confirm(restore, [](bool) {}); };

    using samples::contentOf;
    const auto welcome = [](const QString& name, const OnboardingState& state) {
        return Screenshot{.name = u"welcome-"_s + name, .window = Window::Onboarding, .onboarding = contentOf(state)};
    };
    return {
        {.name = u"checking"_s, .panel = samples::checking()},
        {.name = u"stopped"_s, .panel = samples::stopped()},
        {.name = u"starting"_s, .panel = contentOf(starting)},
        {.name = u"usual"_s, .panel = samples::usual()},
        {.name = u"installing"_s, .panel = contentOf(installing)},
        {.name = u"troubled-window"_s, .panel = samples::troubled(), .window = Window::Main},
        {.name = u"long-words"_s, .panel = samples::longWords()},
        {.name = u"crowded"_s, .panel = samples::crowded()},
        {.name = u"backups"_s, .panel = samples::usual(), .then = pressing(u"Backups (3)"_s)},
        {.name = u"more"_s, .panel = samples::usual(), .then = pressing(u"More"_s)},
        {.name = u"rekordbox-open"_s, .panel = contentOf(open), .then = pressing(u"Backups (3)"_s)},
        {.name = u"busy"_s, .panel = contentOf(busy), .then = pressing(u"Backups (3)"_s)},
        {.name = u"links-elsewhere"_s, .panel = contentOf(codes)},
        {.name = u"focus-button"_s, .panel = samples::usual(), .then = tab(3)},
        {.name = u"focus-folder"_s, .panel = samples::usual(), .then = tab(7)},
        {.name = u"confirm"_s, .panel = samples::usual(), .window = Window::Main, .then = ask},
        {.name = u"restored"_s, .panel = contentOf(restored), .then = pressing(u"Backups (4)"_s)},
        {.name = u"update"_s, .panel = contentOf(offered)},
        welcome(u"starting"_s, {}),
        welcome(u"no-tools"_s, noTools),
        welcome(u"tools"_s, samples::toolsStep()),
        welcome(u"rekordbox"_s, samples::rekordboxStep()),
        welcome(u"no-rekordbox"_s, later),
        welcome(u"assistant"_s, samples::assistantStep()),
        welcome(u"telegram"_s, samples::assistantStep(Assistant::telegram)),
        welcome(u"claude"_s, claude),
        welcome(u"iphone"_s, samples::assistantStep(Assistant::iphone)),
    };
}

int takeScreenshots(const QDir& folder, const QStringList& only, const QString& suffix) {
    QPluginLoader loader(QStringLiteral(TUNEDECK_MODULE));
    const QString id = loader.metaData().value("MetaData"_L1).toObject().value("buildId"_L1).toString();
    auto* const module = qobject_cast<PanelModule*>(loader.instance());
    if (module == nullptr || id != QLatin1StringView(buildId)) {
        std::fprintf(stderr, "can't load the panel module: %s\n", qPrintable(loader.errorString()));
        return 1;
    }
    for (const bool dark : {false, true}) {
        for (const Screenshot& each : screenshots()) {
            const QString name = each.name + (dark ? u"-dark"_s : u"-light"_s) + suffix;
            const auto wanted = [&](const QString& start) { return name.startsWith(start); };
            if (!only.isEmpty() && std::none_of(only.begin(), only.end(), wanted)) {
                continue;
            }
            FakeHost host;
            const auto views = module->createViews(host, {.dark = dark, .reduceMotion = false});
            views->setContent(each.panel);
            views->setOnboardingContent(each.onboarding);
            switch (each.window) {
            case Window::Popover:
                views->showPopover({1000, 4, 24, 24});
                break;
            case Window::Main:
                views->showWindow();
                break;
            case Window::Onboarding:
                views->showOnboarding(host.onboarding);
                break;
            }
            waitFor(350);
            if (each.then) {
                each.then(*views);
                waitFor(450);
            }
            QQuickWindow* const window = visibleWindow();
            const QImage image = window != nullptr ? window->grabWindow() : QImage();
            if (!image.save(folder.filePath(name + u".png"_s))) {
                std::fprintf(stderr, "can't save %s: %s\n", qPrintable(name),
                             window != nullptr ? "write error" : "no window");
                return 1;
            }
        }
    }
    return 0;
}

} // namespace

int main(int argc, char** argv) {
    QApplication application(argc, argv);
    QStringList names = QCoreApplication::arguments().mid(1);
    if (names.isEmpty()) {
        std::fputs("Usage: gallery FOLDER [NAME…]\n", stderr);
        return 2;
    }
    const QDir folder(names.takeFirst());
    folder.mkpath(u"."_s);
    QGuiApplication::setQuitOnLastWindowClosed(false);
    const QString suffix = qEnvironmentVariable("TUNEDECK_GALLERY_SUFFIX");
    if (!suffix.isEmpty()) {
        if (suffix == "-large-text"_L1) {
            QFont font = QGuiApplication::font();
            font.setPixelSize(22);
            QApplication::setFont(font);
        }
        return takeScreenshots(folder, names, suffix);
    }
    // Qt reads the scale factor only at startup, so each scale needs its own process.
    const std::pair<QString, QString> runs[] = {
        {u"1"_s, u"-1x"_s}, {u"1.5"_s, u"-1.5x"_s}, {u"2"_s, u"-2x"_s}, {u"1"_s, u"-large-text"_s}};
    for (const auto& [factor, name] : runs) {
        QProcess process;
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert(u"QT_SCALE_FACTOR"_s, factor);
        environment.insert(u"TUNEDECK_GALLERY_SUFFIX"_s, name);
        process.setProcessEnvironment(environment);
        process.setProcessChannelMode(QProcess::ForwardedChannels);
        process.start(QCoreApplication::applicationFilePath(), QCoreApplication::arguments().mid(1));
        process.waitForFinished(-1);
        if (process.exitStatus() != QProcess::NormalExit || process.exitCode() != 0) {
            return 1;
        }
    }
    return 0;
}
