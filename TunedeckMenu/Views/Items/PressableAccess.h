#pragma once

namespace tunedeck {

/// Registers the accessibility interface of Pressable items: Qt 6.4's own reports neither disabled nor expanded items,
/// and lets disabled ones be pressed. Call once per process, before the first window.
void installPressableAccess();

} // namespace tunedeck
