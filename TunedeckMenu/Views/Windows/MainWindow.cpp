#include "TunedeckMenu/Views/Windows/MainWindow.h"

#include "TunedeckMenu/Views/Windows/WindowPresence.h"
#include "TunedeckMenu/Views/Windows/WindowSize.h"
#include "TunedeckMenu/Views/Windows/WindowSizeWatch.h"

using namespace Qt::StringLiterals;

namespace tunedeck {

MainWindow::MainWindow(const WindowFactory& factory, PanelActions& actions) : m_factory(factory), m_actions(actions) {}

MainWindow::~MainWindow() = default;

void MainWindow::show() {
    if (m_window == nullptr) {
        create();
    }
    bringToFront(*m_window);
}

void MainWindow::create() {
    m_window = m_factory.create(u"Frames/MainWindow.qml"_s);
    onPresenceChanged(*m_window,
                      [this](bool present) { present ? m_actions.panelAppeared() : m_actions.panelDisappeared(); });
    constexpr int groupAnimation = 40; // an expanding group changes the height with each of its frames
    connect(new WindowSizeWatch(*m_window, groupAnimation), &WindowSizeWatch::changed, this, &MainWindow::fit);
    fit();
    centre(*m_window);
}

void MainWindow::fit() {
    if (m_autoHeight != 0 && m_window->height() != m_autoHeight) {
        return;
    }
    const auto size = fittingSize(*m_window).expandedTo(m_window->minimumSize());
    m_autoHeight = size.height();
    m_window->resize(size);
    if (m_window->isVisible()) {
        keepOnScreen(*m_window);
    }
}

void MainWindow::close() {
    if (m_window != nullptr) {
        m_window->hide();
    }
}

bool MainWindow::isShown() const {
    return isOnScreen(m_window.get());
}

} // namespace tunedeck
