// Usage: gallery FOLDER [NAME…]
//
// Saves screenshots of every state of the panel, drawn by the real module: light and dark, at 1x, 1.5x and 2x and with
// large text. With NAMEs, only the screenshots whose name starts with one of them.
#include "Tests/Gallery/FakeHost.h"
#include "Tests/Gallery/Samples.h"
#include "Tests/Helpers/Views/Elements.h"
#include "TunedeckMenu/Panel/PanelModule.h"

#include <QApplication>
#include <QDir>
#include <QFont>
#include <QPluginLoader>
#include <QTest>

#include <cstdio>
#include <functional>

using namespace Qt::StringLiterals;
using namespace tunedeck;

namespace {

void press(const QString& label) {
    for (const auto& element : test::elementsOf(*test::openWindows().first())) {
        if (element.name == label) {
            element.press();
            return;
        }
    }
}

enum class Window { Popover, Main, Onboarding };

struct Screenshot {
    QString name;
    PanelState panel;
    Window window = Window::Popover;
    std::function<void(PanelViews&)> then = {};
    OnboardingState onboarding = {};
};

void pressTab(PanelViews& /*views*/) {
    for (int i = 0; i < 3; ++i) {
        QTest::keyClick(test::openWindows().first(), Qt::Key_Tab);
    }
}

void ask(PanelViews& views) {
    views.confirm({.message = u"Restore your Rekordbox library to v1.2.0?"_s,
                   .informativeText = u"This puts back the backup from 18 Nov 2026, 18:04.\n\n"
                                      "Keep Rekordbox closed until it finishes."_s,
                   .confirmButton = u"Restore"_s,
                   .cancelButton = u"Cancel"_s,
                   .warning = true},
                  [](bool) {});
}

QList<Screenshot> screenshots() {
    const auto pressing = [](const QString& label) { return [label](PanelViews&) { press(label); }; };
    QList<Screenshot> all{
        {.name = u"backups"_s, .panel = samples::usual(), .then = pressing(u"Backups (3)"_s)},
        {.name = u"more"_s, .panel = samples::usual(), .then = pressing(u"More"_s)},
        {.name = u"focus"_s, .panel = samples::usual(), .then = pressTab},
        {.name = u"confirm"_s, .panel = samples::usual(), .window = Window::Main, .then = ask},
        {.name = u"window"_s, .panel = samples::troubled(), .window = Window::Main},
    };
    for (const auto& [name, state] : samples::panels()) {
        all.append({.name = name, .panel = state});
    }
    for (const auto& [name, state] : samples::firstRuns()) {
        all.append({.name = u"welcome-"_s + name, .window = Window::Onboarding, .onboarding = state});
    }
    return all;
}

bool takeScreenshot(PanelModule& module, const Screenshot& screenshot, bool dark, const QString& path) {
    FakeHost host;
    const auto views = module.createViews(host, {.dark = dark, .reduceMotion = false});
    views->setContent(contentOf(screenshot.panel));
    views->setOnboardingContent(contentOf(screenshot.onboarding));
    if (screenshot.window == Window::Popover) {
        views->showPopover({1000, 4, 24, 24});
    } else if (screenshot.window == Window::Main) {
        views->showWindow();
    } else {
        views->showOnboarding(host);
    }
    QTest::qWait(350);
    if (screenshot.then) {
        screenshot.then(*views);
        QTest::qWait(450);
    }
    return test::openWindows().first()->grabWindow().save(path);
}

} // namespace

int main(int argc, char** argv) {
    QApplication application(argc, argv);
    const QStringList arguments = QCoreApplication::arguments();
    QPluginLoader loader(QString::fromUtf8(TUNEDECK_MODULE));
    auto* const module = qobject_cast<PanelModule*>(loader.instance());
    if (arguments.size() < 3 || module == nullptr) {
        std::fprintf(stderr, "Usage: gallery FOLDER SUFFIX [TEXT-SIZE]\n%s\n", qPrintable(loader.errorString()));
        return 2;
    }
    QGuiApplication::setQuitOnLastWindowClosed(false);
    if (arguments.size() > 3) {
        QFont font = QGuiApplication::font();
        font.setPixelSize(arguments[3].toInt());
        QApplication::setFont(font);
    }
    for (const Screenshot& each : screenshots()) {
        for (const bool dark : {false, true}) {
            const QString name = each.name + (dark ? u"-dark"_s : u"-light"_s) + arguments[2] + u".png"_s;
            if (!takeScreenshot(*module, each, dark, QDir(arguments[1]).filePath(name))) {
                std::fprintf(stderr, "can't save %s\n", qPrintable(name));
                return 1;
            }
        }
    }
    return 0;
}
