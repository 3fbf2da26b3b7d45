#include "TunedeckMenu/App/RemoveCommand.h"

#include "TunedeckCore/Locations/Paths.h"
#include "TunedeckCore/Locations/UserPaths.h"
#include "TunedeckCore/UserDefaults.h"

#include <QFileInfo>

namespace tunedeck {

using namespace Qt::StringLiterals;

namespace {

/// The user's files that stay, with their paths; empty if Tunedeck was never used.
QStringList remainingItems(const RemoveRequest& request) {
    const UserPaths paths(request.home);
    QStringList lines;
    const auto keep = [&](const QString& what, const QString& path) {
        if (QFileInfo::exists(path)) {
            lines << what + u' ' + abbreviatingHome(path, request.home);
        }
    };
    keep(u"settings, backups and the service's state, in"_s, QFileInfo(request.settings.url).path());
    if (!lines.isEmpty()) {
        const auto music = request.settings.downloadDir();
        lines.prepend(music ? u"your music, in "_s + abbreviatingHome(*music, request.home)
                            : u"your music, where the service saved it"_s);
    }
    keep(u"the service's log,"_s, paths.serviceLog());
    keep(u"the service's output,"_s, paths.serviceOutput());
    keep(u"the place of the icon, in"_s, UserDefaults::standardPath());
    return lines;
}

} // namespace

QCoro::Task<CommandResult> removeCommand(RemoveRequest request, ServiceRemover remover, std::stop_token stop) {
    Removal removal;
    if (!request.ended) {
        removal.failures << u"It couldn't be ended: "_s + request.ended.error() + u'.';
    } else if (*request.ended) {
        removal.done << u"Ended the Tunedeck that ran."_s;
    }
    // First remove what would start it again.
    const auto loginItem = request.uninstall.removeLoginItem();
    const auto service = co_await remover.remove(stop);
    removal.done += loginItem.done + service.done;
    removal.failures += loginItem.failures + service.failures;

    CommandResult result;
    if (removal.done.isEmpty() && removal.failures.isEmpty()) {
        result.output = u"There was nothing of Tunedeck to remove.\n"_s;
    }
    for (const auto& line : removal.done) {
        result.output += line + u'\n';
    }
    if (const auto lines = remainingItems(request); !lines.isEmpty()) {
        result.output += u"These stay:\n  "_s + lines.join(u"\n  "_s) + u'\n';
    }
    for (const auto& line : removal.failures) {
        result.errorOutput += u"Tunedeck: "_s + line + u'\n';
    }
    result.exitStatus = removal.failures.isEmpty() ? 0 : 1;
    co_return result;
}

} // namespace tunedeck
