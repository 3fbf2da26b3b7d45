// Saves pictures of every state of the panel: gallery FOLDER [NAME…]
//
// The real module draws them, for light and dark, at 1x, 1.5x and 2x and with large text. Each NAME picks the pictures
// that begin with it.
#include "Gallery/FakeHost.h"
#include "Gallery/Samples.h"
#include "TunedeckBuildId.h"

#include <QApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QFont>
#include <QJsonObject>
#include <QKeyEvent>
#include <QPainter>
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

void settle(int milliseconds) {
    QEventLoop loop;
    QTimer::singleShot(milliseconds, &loop, &QEventLoop::quit);
    loop.exec();
}

/// The topmost window of ours that is on the screen.
QQuickWindow* shownWindow() {
    QQuickWindow* found = nullptr;
    for (QWindow* window : QGuiApplication::topLevelWindows()) {
        auto* const quick = qobject_cast<QQuickWindow*>(window);
        if (quick != nullptr && quick->isVisible() && (found == nullptr || quick->modality() == Qt::ApplicationModal)) {
            found = quick;
        }
    }
    return found;
}

QObject* findNamed(QQuickItem* item, const QString& label) {
    if (item->isVisible() && item->property("label").toString() == label) {
        return item;
    }
    for (QQuickItem* child : item->childItems()) {
        if (QObject* found = findNamed(child, label)) {
            return found;
        }
    }
    return nullptr;
}

void press(const QString& label) {
    if (QObject* item = findNamed(shownWindow()->contentItem(), label)) {
        QMetaObject::invokeMethod(item, "clicked");
    }
}

enum class Place { Popover, Window, Onboarding };

struct Shot {
    QString name;
    PanelContent panel;
    Place place = Place::Popover;
    std::function<void(PanelViews&)> then = {};
    OnboardingContent onboarding = {};
};

QList<Shot> shots() {
    PanelContent starting = samples::stopped();
    starting.notRunning.starting = true;
    starting.notRunning.button = u"Starting…"_s;
    starting.footer.restarting = true;
    PanelContent installing = samples::usual();
    installing.tools.shown = true;
    installing.tools.installing = true;
    installing.tools.badge = u"Installing"_s;
    installing.tools.badgeTone = look::Tone::Accent;
    installing.tools.text = u"Missing: spotdl"_s;
    installing.tools.detail = u"Unpacking spotdl 4.2"_s;
    installing.tools.installingText = u"Installing…"_s;
    installing.tools.progress = 0.4;

    PanelContent open = samples::troubled();
    open.tools.shown = open.hiddenIcon.shown = open.banner.shown = false;
    open.rekordbox.failed.clear();
    open.rekordbox.retryButton.clear();
    open.assistants.links.removeLast();
    PanelContent busy = samples::usual();
    busy.rekordbox.headline = u"Applying 1 change…"_s;
    busy.rekordbox.tone = look::Tone::Accent;
    busy.rekordbox.applyButton = u"Applying…"_s;
    busy.rekordbox.busy = true;
    busy.about.busy = true;
    busy.about.progress = 0.63;
    busy.about.updateText = u"Installing the update… Tunedeck restarts when it's done."_s;
    PanelContent codes = samples::usual();
    codes.assistants.connect.clear();
    codes.assistants.links = {samples::telegramLink(u"x"_s, false), samples::telegramLink(u"y"_s, false)};
    TelegramPairingView& expired = codes.assistants.links[0].pairing;
    expired.expired = true;
    expired.text = u"This code has expired."_s;
    expired.openButton.clear();
    expired.newCodeButton = u"Get a New Code"_s;
    expired.expiryNote.clear();
    TelegramPairingView& elsewhere = codes.assistants.links[1].pairing;
    elsewhere = {
        .shown = true, .text = u"Paired from another Mac or before a reinstall."_s, .newCodeButton = u"New Code"_s};
    const auto tab = [](int times) {
        return [times](PanelViews&) {
            for (int i = 0; i < times; ++i) {
                QWindow* const window = shownWindow();
                QKeyEvent down(QEvent::KeyPress, Qt::Key_Tab, {});
                QKeyEvent up(QEvent::KeyRelease, Qt::Key_Tab, {});
                QCoreApplication::sendEvent(window, &down);
                QCoreApplication::sendEvent(window, &up);
            }
        };
    };

    OnboardingContent telegram = samples::assistantStep();
    telegram.chosen = u"telegram"_s;
    telegram.pairing = samples::telegramLink(u"t"_s, false).pairing;
    telegram.liveText = u"Waiting for you to tap Start in Telegram…"_s;
    OnboardingContent claude = samples::assistantStep();
    claude.chosen = u"claude"_s;
    claude.pasteText = u"Paste this into Claude"_s;
    claude.privateUrl = u"https://tunedeck.example/m/k7QxPz81mWv0aVh8Kd"_s;
    claude.copyButton = u"Copied"_s;
    claude.setupSteps = {u"In Claude, open Settings → Connectors."_s,
                         u"Choose “Add custom connector” and paste the URL."_s,
                         u"Choose Connect, then ask for a track."_s};
    claude.connected = true;
    claude.liveText = u"Connected. Try: “Add open.spotify.com/track/4uLU6h… to a playlist called Friday”"_s;
    claude.error = u"Couldn't make a link. Is this Mac online?"_s;

    const Confirmation restore{
        .message = u"Restore your Rekordbox library to v1.2.0?"_s,
        .informativeText =
            u"This puts back the backup from 18 Nov 2026, 18:04: “Before removing “Old set””. Your "
            "current library is backed up first, so you can undo this from the same list. Keep Rekordbox "
            "closed until it finishes."_s,
        .confirmButton = u"Restore"_s,
        .cancelButton = u"Cancel"_s,
        .warning = true};
    const auto ask = [restore](PanelViews& views) { views.confirm(restore, [](bool) {}); };

    return {
        {.name = u"checking"_s, .panel = samples::checking()},
        {.name = u"stopped"_s, .panel = samples::stopped()},
        {.name = u"starting"_s, .panel = starting},
        {.name = u"usual"_s, .panel = samples::usual()},
        {.name = u"installing"_s, .panel = installing},
        {.name = u"troubled-window"_s, .panel = samples::troubled(), .place = Place::Window},
        {.name = u"long-words"_s, .panel = samples::longWords()},
        {.name = u"crowded"_s, .panel = samples::crowded()},
        {.name = u"backups"_s, .panel = samples::usual(), .then = [](PanelViews&) { press(u"Backups (3)"_s); }},
        {.name = u"more"_s, .panel = samples::usual(), .then = [](PanelViews&) { press(u"More"_s); }},
        {.name = u"rekordbox-open"_s, .panel = open, .then = [](PanelViews&) { press(u"Backups (3)"_s); }},
        {.name = u"busy"_s, .panel = busy},
        {.name = u"telegram-codes"_s, .panel = codes},
        {.name = u"focus-button"_s, .panel = samples::usual(), .then = tab(3)},
        {.name = u"focus-folder"_s, .panel = samples::usual(), .then = tab(6)},
        {.name = u"welcome-tools"_s, .place = Place::Onboarding, .onboarding = samples::toolsStep()},
        {.name = u"welcome-rekordbox"_s, .place = Place::Onboarding, .onboarding = samples::rekordboxStep()},
        {.name = u"welcome-assistant"_s, .place = Place::Onboarding, .onboarding = samples::assistantStep()},
        {.name = u"welcome-telegram"_s, .place = Place::Onboarding, .onboarding = telegram},
        {.name = u"welcome-claude"_s, .place = Place::Onboarding, .onboarding = claude},
        {.name = u"confirm"_s, .panel = samples::usual(), .place = Place::Window, .then = ask},
    };
}

int paint(const QDir& folder, const QStringList& only, const QString& suffix) {
    QPluginLoader loader(QStringLiteral(TUNEDECK_MODULE));
    const QString id = loader.metaData().value("MetaData"_L1).toObject().value("buildId"_L1).toString();
    auto* const module = qobject_cast<PanelModule*>(loader.instance());
    if (module == nullptr || id != QLatin1StringView(buildId)) {
        std::fprintf(stderr, "the module of views can't be used: %s\n", qPrintable(loader.errorString()));
        return 1;
    }
    for (const bool dark : {false, true}) {
        for (const Shot& shot : shots()) {
            const QString name = shot.name + (dark ? u"-dark"_s : u"-light"_s) + suffix;
            const auto wanted = [&](const QString& start) { return name.startsWith(start); };
            if (!only.isEmpty() && std::none_of(only.begin(), only.end(), wanted)) {
                continue;
            }
            FakeHost host;
            host.panel = shot.panel;
            host.onboarding = shot.onboarding;
            const auto views = module->createViews(host, {.dark = dark, .reduceMotion = false});
            switch (shot.place) {
            case Place::Popover:
                views->showPopover({1000, 4, 24, 24});
                break;
            case Place::Window:
                views->showWindow();
                break;
            case Place::Onboarding:
                views->showOnboarding();
                break;
            }
            settle(350);
            if (shot.then) {
                shot.then(*views);
                settle(450);
            }
            QQuickWindow* const window = shownWindow();
            const QImage picture = window != nullptr ? window->grabWindow() : QImage();
            if (!picture.save(folder.filePath(name + u".png"_s))) {
                std::fprintf(stderr, "no picture of %s: %s\n", qPrintable(name),
                             window != nullptr ? "not saved" : "no window");
                return 1;
            }
        }
    }
    return 0;
}

} // namespace

int main(int argc, char** argv) {
    QApplication application(argc, argv);
    QStringList words = QCoreApplication::arguments().mid(1);
    if (words.isEmpty()) {
        std::fputs("gallery FOLDER [NAME…]\n", stderr);
        return 2;
    }
    const QDir folder(words.takeFirst());
    folder.mkpath(u"."_s);
    QGuiApplication::setQuitOnLastWindowClosed(false);
    const QString suffix = qEnvironmentVariable("TUNEDECK_GALLERY_SUFFIX");
    if (!suffix.isEmpty()) {
        if (suffix == "-large-text"_L1) {
            QFont font = QGuiApplication::font();
            font.setPixelSize(22);
            QApplication::setFont(font);
        }
        return paint(folder, words, suffix);
    }
    // The scale factor is read once, at start: one process each.
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
