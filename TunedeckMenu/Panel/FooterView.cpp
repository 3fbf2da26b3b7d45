#include "TunedeckMenu/Panel/FooterView.h"

using namespace Qt::StringLiterals;

namespace tunedeck {

FooterView footer(bool opensAtLogin, bool isRestarting) {
    return {
        .loginTitle = u"Open at Login"_s,
        .opensAtLogin = opensAtLogin,
        .restarting = isRestarting,
        .restartLabel = u"Restart tunedeck"_s,
        .logLabel = u"Open Log"_s,
        .quitLabel = u"Quit Tunedeck"_s,
    };
}

} // namespace tunedeck
