#include "TunedeckMenu/Views/Windows/PopoverPlace.h"

#include "TunedeckMenu/Views/Windows/WindowSize.h"

#include <algorithm>

namespace tunedeck {

QRect popoverPlace(const QRect& anchor, const QSize& wanted, const QRect& screen, const QRect& available) {
    constexpr int gap = 6;
    // With a known icon, its distance from the edge of the screen is enough room for the bar.
    const QRect room = (anchor.isEmpty() ? freeArea(screen, available) : available).adjusted(gap, gap, -gap, -gap);
    const int width = std::min(wanted.width(), room.width());

    // A bar at the bottom usually contains the tray; without any bar, assume the top.
    const bool known = !anchor.isEmpty();
    const bool barBelow = available.bottom() < screen.bottom() && available.top() <= screen.top();
    const bool opensDown = known ? anchor.center().y() < screen.center().y() : !barBelow;

    int top = room.top();
    int bottom = room.bottom();
    if (known && opensDown) {
        top = std::clamp(anchor.bottom() + 1 + gap, room.top(), room.bottom());
    } else if (known) {
        bottom = std::clamp(anchor.top() - 1 - gap, room.top(), room.bottom());
    }
    const int height = std::min(wanted.height(), bottom - top + 1);
    const int left = known ? anchor.center().x() - width / 2 : room.right() + 1 - width;
    const int x = std::clamp(left, room.left(), std::max(room.left(), room.right() + 1 - width));
    return {x, opensDown ? top : bottom + 1 - height, width, height};
}

} // namespace tunedeck
