#include "TunedeckMenu/Actions/LoginAction.h"

namespace tunedeck {

void setOpensAtLogin(MenuModel& model, LoginItem& loginItem, bool on) {
    if (const auto changed = loginItem.setEnabled(on); changed) {
        model.clearError();
    } else {
        model.show(QStringLiteral("Couldn't change Open at Login: ") + changed.error());
    }
    // What the system says now, which may not be what was asked for.
    model.readSettings();
}

} // namespace tunedeck
