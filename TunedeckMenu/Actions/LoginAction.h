#pragma once

#include "TunedeckMenu/MenuModel.h"

namespace tunedeck {

/// Switches Open at Login; a refusal becomes the error line.
void setOpensAtLogin(MenuModel& model, LoginItem& loginItem, bool on);

} // namespace tunedeck
