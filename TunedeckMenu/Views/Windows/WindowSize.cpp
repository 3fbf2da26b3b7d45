#include "TunedeckMenu/Views/Windows/WindowSize.h"

#include <QScreen>
#include <QtMath>

#include <algorithm>

namespace tunedeck {

namespace {

/// The widths of the window's frame. Before the window manager has told them, or if it never does, those of a usual
/// one.
QMargins frameOf(const QQuickWindow& window) {
    constexpr QMargins usualFrame(4, 36, 4, 4);
    const auto frame = window.frameMargins();
    return frame.isNull() ? usualFrame : frame;
}

QRect roomOf(const QQuickWindow& window) {
    const auto* screen = window.screen();
    constexpr int gap = 6;
    return screen != nullptr ? freeArea(screen->geometry(), screen->availableGeometry()).adjusted(gap, gap, -gap, -gap)
                             : QRect();
}

/// Moves a window's frame as little as necessary to be in the room. What doesn't fit sticks out at the right and below:
/// the title bar stays within reach.
QRect movedInto(const QRect& room, QRect frame) {
    frame.moveLeft(std::max(room.left(), std::min(frame.left(), room.right() + 1 - frame.width())));
    frame.moveTop(std::max(room.top(), std::min(frame.top(), room.bottom() + 1 - frame.height())));
    return frame;
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
    return available == screen ? screen.adjusted(0, usualBar, 0, -usualBar) : available;
}

QSize wantedSize(const QQuickWindow& window) {
    const auto points = [&](const char* wanted) { return qCeil(window.property(wanted).toDouble()); };
    return {points("wantedWidth"), steadyHeight(points("wantedHeight"), window.effectiveDevicePixelRatio())};
}

QSize fittingSize(const QQuickWindow& window) {
    const auto wanted = wantedSize(window);
    const auto room = roomOf(window).marginsRemoved(frameOf(window));
    if (!room.isValid() || (wanted.width() <= room.width() && wanted.height() <= room.height())) {
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

// Both set the place of the frame: some window managers take the place of a window for that of its frame.

void centre(QQuickWindow& window, const QWindow* over) {
    if (const auto room = roomOf(window); room.isValid()) {
        auto frame = QRect(QPoint(), window.size()).marginsAdded(frameOf(window));
        frame.moveCenter((over != nullptr ? over->geometry() : room).center());
        window.setFramePosition(movedInto(room, frame).topLeft());
    }
}

void keepOnScreen(QQuickWindow& window) {
    const auto frame = window.geometry().marginsAdded(frameOf(window));
    const auto place = movedInto(roomOf(window), frame);
    if (place != frame) {
        window.setFramePosition(place.topLeft());
    }
}

} // namespace tunedeck
