#include "TunedeckMenu/Views/Windows/FirstRunWindow.h"

#include "TunedeckMenu/Views/Windows/WindowPresence.h"
#include "TunedeckMenu/Views/Windows/WindowSize.h"
#include "TunedeckMenu/Views/Windows/WindowSizeWatch.h"

using namespace Qt::StringLiterals;

namespace tunedeck {

FirstRunWindow::FirstRunWindow(const WindowFactory& factory, OnboardingAdapter& adapter)
    : m_factory(factory), m_adapter(adapter) {}

FirstRunWindow::~FirstRunWindow() = default;

void FirstRunWindow::show(OnboardingActions& actions) {
    m_adapter.setActions(&actions);
    if (m_window == nullptr) {
        create();
    }
    bringToFront(*m_window);
}

void FirstRunWindow::create() {
    m_window = m_factory.create(u"FirstRun/OnboardingWindow.qml"_s);
    setFixedSize(*m_window);
    centre(*m_window);
    connect(new WindowSizeWatch(*m_window, 0), &WindowSizeWatch::changed, this, [this] {
        if (m_window != nullptr) {
            setFixedSize(*m_window);
            keepOnScreen(*m_window);
        }
    });
    connect(m_window.get(), &QWindow::visibleChanged, this, [this](bool visible) {
        auto& shown = *m_adapter.actions();
        visible ? shown.windowAppeared() : shown.windowClosed();
    });
}

void FirstRunWindow::close() {
    if (QQuickWindow* const window = m_window.release()) {
        // Delete later: a button of this window may be the caller.
        window->hide();
        window->deleteLater();
        m_adapter.setActions(nullptr);
    }
}

} // namespace tunedeck
