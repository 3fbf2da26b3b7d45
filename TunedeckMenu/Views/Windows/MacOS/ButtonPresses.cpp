#include "TunedeckMenu/Views/Windows/ButtonPresses.h"

namespace tunedeck {

// A click elsewhere takes the focus, which is enough.
class ButtonPresses::Observer {};

ButtonPresses::ButtonPresses() = default;

ButtonPresses::~ButtonPresses() = default;

void ButtonPresses::start() {}

void ButtonPresses::stop() {}

} // namespace tunedeck
