#pragma once

#include <QQuickWindow>
#include <QRect>
#include <QSize>

namespace tunedeck {

/// The smallest height of at least `wanted` points that X11 window managers keep at this device pixel ratio. Qt sets
/// the size increment to the rounded ratio in pixels, and window managers round down to it: at 1.5x, a window of 1647
/// pixels becomes 1646 pixels, one point too low.
int steadyHeight(int wanted, double ratio);

/// The part of a screen without bars. i3 and Wayland compositors don't report theirs: `available` is all of the screen
/// then, and bars above and below are assumed.
QRect freeArea(const QRect& screen, const QRect& available);

/// The size that the window's QML wants (`wantedWidth` and `wantedHeight`), in whole points.
QSize wantedSize(const QQuickWindow& window);

/// The largest size up to the wanted one that fits on the window's screen with its frame.
QSize fittingSize(const QQuickWindow& window);

/// Gives the window its fitting size, which the user can't change.
void setFixedSize(QQuickWindow& window);

/// Centres a window over another, or on its screen.
void centre(QQuickWindow& window, const QWindow* over = nullptr);

/// Moves a window as little as necessary to have it on its screen with its frame.
void keepOnScreen(QQuickWindow& window);

} // namespace tunedeck
