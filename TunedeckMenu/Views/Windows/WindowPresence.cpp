#include "TunedeckMenu/Views/Windows/WindowPresence.h"

#include <utility>

namespace tunedeck {

bool isOnScreen(const QQuickWindow* window) {
    return window != nullptr && window->isVisible() && window->visibility() != QWindow::Minimized;
}

void onPresenceChanged(QQuickWindow& window, std::function<void(bool present)> changed) {
    QObject::connect(&window, &QWindow::visibilityChanged, &window,
                     [&window, changed = std::move(changed), present = false]() mutable {
                         if (isOnScreen(&window) != present) {
                             present = !present;
                             changed(present);
                         }
                     });
}

void bringToFront(QQuickWindow& window) {
    if (window.visibility() == QWindow::Minimized) {
        window.showNormal();
    } else {
        window.show();
    }
    window.raise();
    window.requestActivate();
}

} // namespace tunedeck
