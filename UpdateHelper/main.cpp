// Handles data from the internet in separate processes, so that the application doesn't parse it and only `fetch` has a
// network. Each process runs one subcommand, confined to what that needs, and reports to HelperProgram.

#include "TunedeckCore/Support/Async/HelperProgram.h"
#include "TunedeckCore/Update/Confined/Archive.h"
#include "UpdateHelper/Confinement.h"
#include "UpdateHelper/Options.h"
#include "UpdateHelper/Subcommands.h"

#include <cstdio>
#include <cstdlib>
#include <exception>
#include <new>

using namespace Qt::StringLiterals;
using namespace tunedeck;
using namespace tunedeck::helper;

namespace {

Outcome run(const Options& options) {
    const auto& operands = options.operands;
    const bool isFetch = options.subcommand == "fetch";
    const bool isUnpack = options.subcommand == "unpack";
    Permissions permissions{.network = isFetch};
    if (isUnpack) {
        permissions.files = {operands[0]};
        permissions.folder = operands[1];
        permissions.fileSize = ArchiveLimits().bytes;
    } else if (!isFetch && operands.size() == 1) {
        permissions.files = operands;
    }
    try {
        if (const auto confined = confine(options.parent, permissions); !confined) {
            return std::unexpected(UpdateError::other(QString::fromStdString(confined.error())));
        }
        return isFetch ? fetch(options) : isUnpack ? unpack(options) : verify(options);
    } catch (const std::bad_alloc&) {
        return std::unexpected(UpdateError::other(u"The helper program ran out of memory."_s));
    } catch (const std::exception& error) {
        return std::unexpected(UpdateError::other(QString::fromUtf8(error.what())));
    }
}

int report(HelperStatus status, const QString& text) {
    std::fprintf(stderr, "result %s\n", text.toUtf8().toPercentEncoding().constData());
    return static_cast<int>(status);
}

int report(const Outcome& outcome) {
    if (outcome) {
        return report(HelperStatus::Done, *outcome);
    }
    const UpdateError& error = outcome.error();
    switch (error.kind) {
    case UpdateError::Kind::other:
        return report(HelperStatus::Failed, error.detail);
    case UpdateError::Kind::wrongApp:
        return report(HelperStatus::Unexpected, error.detail);
    default:
        return report(HelperStatus::Refused, QString::number(error.status));
    }
}

} // namespace

int main(int argc, char** argv) {
    const auto options = Options::parse({argv + 1, argv + argc});
    // Without cleaning up: a thread that resolves a name may still be running.
    std::_Exit(options ? report(run(*options)) : report(HelperStatus::Failed, u"Invalid command line."_s));
}
