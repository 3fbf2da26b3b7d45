#include "TunedeckMenu/Views/Edge/QuickViews.h"

#include "TunedeckMenu/Views/Items/PressableAccess.h"

#include <QGuiApplication>

using namespace Qt::StringLiterals;

namespace tunedeck {

namespace {

/// Wayland compositors choose the places of windows, and don't report clicks outside of them.
bool canPlaceWindows() {
    return !QGuiApplication::platformName().startsWith(u"wayland"_s);
}

} // namespace

QuickViews::QuickViews(PanelHost& host, const Appearance& appearance)
    : m_style(*new SystemStyle(m_engine))
    , m_panelAdapter(*new PanelAdapter(host, m_engine))
    , m_onboardingAdapter(*new OnboardingAdapter(host, m_engine))
    , m_factory(m_engine)
    , m_popover(m_factory, host.actions())
    , m_window(m_factory, host.actions())
    , m_onboarding(m_factory, m_onboardingAdapter)
    , m_questions(m_factory, [this] { return openPanel(); }) {
    m_engine.addImportPath(u"qrc:/tunedeck/qml"_s);
    [[maybe_unused]] static const bool once = [] {
        QQuickWindow::setGraphicsApi(QSGRendererInterface::Software);
        QQuickWindow::setTextRenderType(QQuickWindow::NativeTextRendering);
        installPressableAccess();
        return true;
    }();
    m_style.setAppearance(appearance);
    m_style.setFileIcons([&host](const QString& path) { return host.fileIcon(path); });
}

void QuickViews::showPopover(const QRect& anchor) {
    canPlaceWindows() ? m_popover.show(anchor) : m_window.show();
}

void QuickViews::closePopover() {
    canPlaceWindows() ? m_popover.close() : m_window.close();
}

bool QuickViews::isPopoverShown() const {
    return canPlaceWindows() ? m_popover.isShown() : m_window.isShown();
}

void QuickViews::showWindow() {
    m_popover.close();
    m_window.show();
}

QQuickWindow* QuickViews::openPanel() const {
    return m_popover.isShown() ? m_popover.window() : m_window.isShown() ? m_window.window() : nullptr;
}

} // namespace tunedeck
