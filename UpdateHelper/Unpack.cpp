#include "TunedeckCore/Update/Confined/UpdateSteps.h"
#include "UpdateHelper/Subcommands.h"

#include <QFile>
#include <QFileInfo>

namespace tunedeck::helper {

Outcome unpack(const Options& options) {
    const auto operand = [&](std::size_t index) { return QFile::decodeName(options.operands[index].c_str()); };
    const auto app = UpdateInstaller::unpack(operand(0), operand(1));
    if (!app) {
        return app;
    }
    if (const auto valid = UpdateInstaller::validate(*app, operand(2), operand(3)); !valid) {
        return std::unexpected(valid.error());
    }
    return QFileInfo(*app).fileName();
}

} // namespace tunedeck::helper
