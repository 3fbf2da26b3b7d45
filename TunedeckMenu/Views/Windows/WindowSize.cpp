#include "TunedeckMenu/Views/Windows/WindowSize.h"

#include <QScreen>
#include <QtMath>

#include <algorithm>

namespace tunedeck {

namespace {

constexpr QMargins usualFrame(4, 36, 4, 4);

QRect roomOf(const QQuickWindow& window) {
    const auto* screen = window.screen();
    return screen != nullptr
               ? roomInside(freeArea(screen->geometry(), screen->availableGeometry()), window.frameMargins())
               : QRect();
}

} // namespace

int steadyHeight(int wanted, double ratio) {
    const int step = qRound(ratio);
    int height = wanted;
    while (true) {
        const int pixels = qRound(height * ratio);
        if (qRound((pixels - pixels % step) / ratio) == height || height - wanted > step) {
            return height;
        }
        ++height;
    }
}

QRect freeArea(const QRect& screen, const QRect& available) {
    constexpr int usualBar = 36;
    return available == screen ? screen.adjusted(0, usualBar, 0, 0) : available;
}

QRect roomInside(const QRect& available, const QMargins& frame) {
    constexpr int gap = 12;
    const auto margins = (frame.isNull() ? usualFrame : frame) + gap;
    // Of a screen that is too small even for the gap, use everything.
    const auto room = available.marginsRemoved(margins);
    return room.isValid() ? room : available;
}

QSize wantedSize(const QQuickWindow& window) {
    const auto points = [&](const char* wanted) { return qCeil(window.property(wanted).toDouble()); };
    return {points("wantedWidth"), steadyHeight(points("wantedHeight"), window.effectiveDevicePixelRatio())};
}

QSize fittingSize(const QQuickWindow& window) {
    const auto wanted = wantedSize(window);
    const auto room = roomOf(window);
    if (room.isEmpty() || (wanted.width() <= room.width() && wanted.height() <= room.height())) {
        return wanted;
    }
    constexpr int maxRounding = 2; // added by steadyHeight
    const int height = steadyHeight(room.height() - maxRounding, window.effectiveDevicePixelRatio());
    return wanted.boundedTo({room.width(), height});
}

void setFixedSize(QQuickWindow& window) {
    const auto size = fittingSize(window);
    window.setMinimumSize(size);
    window.setMaximumSize(size);
    window.resize(size);
}

void centre(QQuickWindow& window, const QWindow* over) {
    if (window.screen() != nullptr) {
        QRect place(QPoint(), window.size());
        place.moveCenter((over != nullptr ? over->geometry() : roomOf(window)).center());
        window.setPosition(place.topLeft());
        keepOnScreen(window);
        if (window.frameMargins().isNull()) {
            // Some window managers take this for the place of the frame: be right for them, too, but for half a title.
            window.setPosition(window.x(), window.y() - usualFrame.top() / 2);
        }
    }
}

void keepOnScreen(QQuickWindow& window) {
    const auto room = roomOf(window);
    if (room.isEmpty()) {
        return;
    }
    // What doesn't fit sticks out at the right and below: the title bar stays within reach.
    const auto inside = [](int at, int low, int high) { return std::max(low, std::min(at, high)); };
    const QPoint place(inside(window.x(), room.left(), room.right() + 1 - window.width()),
                       inside(window.y(), room.top(), room.bottom() + 1 - window.height()));
    if (place != window.position()) {
        window.setPosition(place);
    }
}

} // namespace tunedeck
