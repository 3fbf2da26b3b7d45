#pragma once

#include "TunedeckMenu/Panel/PanelActions.h"
#include "TunedeckMenu/Views/Windows/ButtonPresses.h"
#include "TunedeckMenu/Views/Windows/WindowFactory.h"

#include <QElapsedTimer>
#include <QObject>
#include <QQuickWindow>
#include <QRect>
#include <QTimer>

#include <memory>

namespace tunedeck {

/// The panel at the tray icon. Closes when the user clicks elsewhere.
class PopoverWindow : public QObject {
    Q_OBJECT
public:
    /// `actions` are notified when it appears and disappears. Both must outlive the popover.
    PopoverWindow(const WindowFactory& factory, PanelActions& actions);
    ~PopoverWindow() override;

    /// `anchor`: the icon's rectangle on the screen, empty when unknown.
    void show(const QRect& anchor);
    Q_SLOT void close();
    [[nodiscard]] bool isShown() const;
    /// The window, or null before it was first shown.
    [[nodiscard]] QQuickWindow* window() const { return m_window.get(); }

private:
    void create();
    void place();
    void dismiss();

    const WindowFactory& m_factory;
    PanelActions& m_actions;
    std::unique_ptr<QQuickWindow> m_window;
    QRect m_anchor;
    QElapsedTimer m_dismissed; ///< since the popover lost the focus or a click outside closed it
    QPoint m_dismissedAt;      ///< where the pointer was then
    ButtonPresses m_presses;
    QTimer m_dismissIfUnfocused;
    QTimer m_settling; ///< while the window manager places it
};

} // namespace tunedeck
