#pragma once

#include "TunedeckMenu/Model/MenuModel.h"

namespace tunedeck {

/// Switches Open at Login; a refusal becomes the error line.
void setOpensAtLogin(MenuModel& model, LoginItem& loginItem, bool on);

} // namespace tunedeck
