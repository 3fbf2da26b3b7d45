#include "TunedeckMenu/Windows/WindowController.h"

#include "TunedeckMenu/Panel/FirstRun/OnboardingContent.h"
#include "TunedeckMenu/Panel/PanelContent.h"

#include <utility>

namespace tunedeck {

namespace {

constexpr qsizetype maxIcons = 16;

} // namespace

using namespace Qt::StringLiterals;

WindowController::WindowController(Parts parts, QObject* parent) : QObject(parent), m_parts(parts) {
    connect(&m_parts.model, &MenuModel::changed, this, &WindowController::updateContentSoon);
    connect(&m_parts.model, &MenuModel::refreshed, this, &WindowController::updateContentSoon);
    connect(&m_parts.appearance, &AppearanceSource::changed, this, [this] {
        if (m_views) {
            m_views->setAppearance(m_parts.appearance.current());
        }
    });
}

WindowController::~WindowController() = default;

PanelViews* WindowController::views() {
    if (!m_views) {
        m_views = m_parts.source.createViews(*this, m_parts.appearance.current());
    }
    return m_views.get();
}

void WindowController::showWindow() {
    if (auto* shown = views()) {
        m_hasBeenShown = true;
        updateContent();
        shown->showWindow();
    }
}

void WindowController::showOnboarding() {
    auto* shown = views();
    if (shown == nullptr) {
        return;
    }
    if (!m_onboarding) {
        m_onboarding = std::make_unique<OnboardingModel>(m_parts.panel.links(), m_parts.services, m_parts.setup,
                                                         RekordboxInstall::detect(u"/Applications"_s));
        connect(m_onboarding.get(), &OnboardingModel::changed, this, &WindowController::updateOnboarding);
        // Queued: the model calls this from a member function, and a double press calls it twice.
        m_onboarding->onFinish = [this] {
            QMetaObject::invokeMethod(this, &WindowController::finishOnboarding, Qt::QueuedConnection);
        };
    }
    m_hasBeenShown = true;
    updateOnboarding();
    shown->showOnboarding(*m_onboarding);
}

void WindowController::finishOnboarding() {
    if (!m_onboarding) {
        return;
    }
    m_views->closeOnboarding();
    m_onboarding.reset();
    Q_EMIT onboardingFinished();
}

void WindowController::togglePopover(const QRect& anchor) {
    auto* shown = views();
    if (shown == nullptr) {
        return;
    }
    if (shown->isPopoverShown()) {
        shown->closePopover();
    } else {
        m_hasBeenShown = true;
        updateContent();
        shown->showPopover(anchor);
    }
}

void WindowController::closePopover() {
    if (m_views) {
        m_views->closePopover();
    }
}

void WindowController::confirm(const Confirmation& question, std::function<void(bool)> answer) {
    if (auto* shown = views()) {
        shown->confirm(question, std::move(answer));
    }
}

void WindowController::showRows(RowRange RowRanges::* list, RowRange range) {
    m_ranges.*list = range;
    list == &RowRanges::tools ? updateOnboarding() : updateContent();
}

QIcon WindowController::fileIcon(const QString& path) {
    if (m_icons.size() > maxIcons) { // the service chooses the paths
        m_icons.clear();
    }
    const auto known = m_icons.constFind(path);
    return known != m_icons.constEnd() ? *known : *m_icons.insert(path, m_parts.services.workspace.icon(path));
}

void WindowController::updateContentSoon() {
    // A refresh changes several fields in turn: update the windows once for all of them.
    if (m_views && !std::exchange(m_updatePending, true)) {
        QMetaObject::invokeMethod(this, &WindowController::updateContent, Qt::QueuedConnection);
    }
}

void WindowController::updateContent() {
    m_updatePending = false;
    m_views->setContent(panelContent(m_parts.model.state(), m_parts.services.clock.now(), m_ranges));
}

void WindowController::updateOnboarding() {
    m_views->setOnboardingContent(
        onboardingContent(m_onboarding->state(), m_parts.services.clock.now(), m_ranges.tools));
}

} // namespace tunedeck
