#include "TunedeckMenu/Views/Windows/TaskBars.h"

namespace tunedeck {

// The Dock lists no windows of an application without an icon there.
void keepOutOfTaskBars(QWindow& /*window*/) {}

} // namespace tunedeck
