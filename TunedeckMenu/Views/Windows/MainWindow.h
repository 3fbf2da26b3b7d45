#pragma once

#include "TunedeckMenu/Panel/PanelActions.h"
#include "TunedeckMenu/Views/Windows/WindowFactory.h"

#include <QObject>
#include <QQuickWindow>

#include <memory>

namespace tunedeck {

/// The panel in a separate window. It is as high as its content until the user chooses another height.
class MainWindow : public QObject {
    Q_OBJECT
public:
    /// `actions` are notified when it appears and disappears. Both must outlive the window.
    MainWindow(const WindowFactory& factory, PanelActions& actions);
    ~MainWindow() override;

    /// Shows it and brings it to the front.
    void show();
    /// Hides it.
    void close();
    [[nodiscard]] bool isShown() const;
    /// The window, or null before it was first shown.
    [[nodiscard]] QQuickWindow* window() const { return m_window.get(); }

private:
    void create();
    void fit();

    const WindowFactory& m_factory;
    PanelActions& m_actions;
    std::unique_ptr<QQuickWindow> m_window;
    int m_autoHeight = 0; ///< set from the content; a different height was chosen by the user
};

} // namespace tunedeck
