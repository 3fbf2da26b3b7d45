#include "TunedeckMenu/App/Application.h"

#include "TunedeckBuildId.h"
#include "TunedeckCore/Locations/BundlePaths.h"
#include "TunedeckCore/Support/Text/Time.h"
#include "TunedeckCore/Update/ScratchFolder.h"
#include "TunedeckMenu/Model/UpdateServices.h"

#include <QGuiApplication>
#include <QScreen>

#include <utility>
#include <variant>

namespace tunedeck {

using namespace Qt::StringLiterals;

namespace {

PanelLoader::Options panelLoaderOptions(const QString& bundle, Relauncher& relauncher) {
    return {.module = BundlePaths(bundle).panelModule(),
            .buildId = QString::fromLatin1(buildId),
            .wasReplaced = [bundle, &relauncher] { return relauncher.isReplaced(bundle); },
            .restart =
                [bundle, &relauncher] {
                    const bool isStarting = relauncher.relaunch(bundle, {u"--show"_s});
                    if (isStarting) {
                        QCoreApplication::quit();
                    }
                    return isStarting;
                }};
}

QCoro::Task<UpdateCheck> recordCheck(QCoro::Task<UpdateCheck> check, UserDefaults defaults, Clock* clock,
                                     std::stop_token stop) {
    auto result = co_await check;
    if (!stop.stop_requested() && !std::holds_alternative<UpdateCheck::Failed>(result.value)) {
        defaults.setValue(lastUpdateCheckKey, isoTimestamp(clock->now()));
    }
    co_return result;
}

MenuServices makeMenuServices(Platform& platform, Clock& clock, const SystemFacts& facts,
                              const UserDefaults& defaults) {
    auto updates = makeUpdateServices(facts);
    updates.check = [check = updates.check, defaults, &clock](std::stop_token stop) {
        return recordCheck(check(stop), defaults, &clock, stop);
    };
    return {.clock = clock,
            .workspace = platform.workspace(),
            .pasteboard = platform.pasteboard(),
            .folderPicker = platform.folderPicker(),
            .loginItem = platform.loginItem(),
            .relauncher = platform.relauncher(),
            .facts = facts,
            .settings = SettingsFile::standard(),
            .launchctl = platform.launchctl(),
            .updates = updates,
            .quit = [] { QCoreApplication::quit(); }};
}

} // namespace

Application::Application(Clock& clock, const SystemFacts& facts)
    : m_bundle(facts.bundle)
    , m_platform(createPlatform(facts))
    , m_loader(m_platform->notifications(), panelLoaderOptions(facts.bundle, m_platform->relauncher()))
    , m_delegate(makeMenuServices(*m_platform, clock, facts, m_defaults), {.statusItem = m_platform->statusItem(),
                                                                           .notifications = m_platform->notifications(),
                                                                           .appearance = m_platform->appearance(),
                                                                           .views = m_loader,
                                                                           .defaults = m_defaults}) {
    QObject::connect(&m_platform->reopenListener(), &ReopenListener::reopenRequested, &m_delegate,
                     &AppDelegate::reopen);
}

Application::~Application() = default;

void Application::launch() {
    m_delegate.launch();
    spawn(ScratchFolder::removeStale(m_bundle, m_scope.token())); // FUSE keeps a replaced program until it has exited
    watchScreens();
    m_platform->reopenListener().start();
}

void Application::watchScreens() {
    const auto watch = [this](QScreen* screen) {
        QObject::connect(screen, &QScreen::geometryChanged, &m_delegate, &AppDelegate::screensChanged);
    };
    for (auto* screen : QGuiApplication::screens()) {
        watch(screen);
    }
    QObject::connect(qGuiApp, &QGuiApplication::screenAdded, &m_delegate, [this, watch](QScreen* screen) {
        watch(screen);
        m_delegate.screensChanged();
    });
    QObject::connect(qGuiApp, &QGuiApplication::screenRemoved, &m_delegate, &AppDelegate::screensChanged);
    QObject::connect(qGuiApp, &QGuiApplication::primaryScreenChanged, &m_delegate, &AppDelegate::screensChanged);
}

} // namespace tunedeck
