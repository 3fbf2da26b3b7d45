#include "TunedeckCore/Service/ToolboxClient.h"
#include "TunedeckCore/SettingsFile.h"
#include "TunedeckMenu/Checkup/Checks.h"

#include <QFileInfo>
#include <QLocale>
#include <QStorageInfo>

namespace tunedeck::checks {

using namespace Qt::StringLiterals;

namespace {

constexpr qint64 littleSpace = 2'000'000'000; // bytes

/// The folder, or its closest parent that exists.
QString existingFolder(QString path) {
    while (!path.isEmpty() && !QFileInfo::exists(path)) {
        path = QFileInfo(path).path();
    }
    return path;
}

} // namespace

QCoro::Task<CheckResult> tools(CheckContext context, std::stop_token stop) {
    if (!context.status) {
        co_return serviceNeeded();
    }
    const ToolboxClient client{context.serviceUrl};
    const auto toolbox = co_await client.fetch(stop);
    if (!toolbox) {
        co_return CheckResult::warning(u"The service doesn't report on its tools."_s,
                                       u"Press “Restart tunedeck” at the bottom of the panel."_s);
    }
    QStringList ready;
    QStringList missing;
    for (const auto& tool : toolbox->all()) {
        const auto version = tool.displayVersion();
        (tool.ready ? ready : missing) << (version ? tool.name + u' ' + *version : tool.name);
    }
    if (toolbox->installing) {
        co_return CheckResult::warning(u"They are being installed."_s, u"Wait until that is done."_s);
    }
    if (!missing.isEmpty()) {
        const auto error = toolbox->error ? u" ("_s + *toolbox->error + u')' : QString();
        co_return CheckResult::problem(u"Missing or too old: "_s + missing.join(u", "_s) + u'.' + error,
                                       u"Press “Repair Tools” in the panel."_s);
    }
    auto result = CheckResult::ok(u"All tools are installed."_s);
    result.details = ready.join(u", "_s);
    co_return result;
}

CheckResult downloadFolder(const CheckContext& context) {
    const auto folder = context.status ? std::optional(context.status->downloadDir)
                                       : SettingsFile(context.paths().settings()).downloadDir();
    if (!folder) {
        return serviceNeeded();
    }
    const auto path = context.shown(*folder);
    const bool isWritable = context.status ? context.status->downloadDirWritable : QFileInfo(*folder).isWritable();
    if (!isWritable) {
        const auto reason = context.status ? context.status->downloadDirError : std::nullopt;
        return CheckResult::problem(path + u" can't be written to."_s + (reason ? u' ' + *reason : QString()),
                                    u"Connect the drive, or press “Change Folder…” in the panel."_s);
    }
    const auto free = QStorageInfo(existingFolder(*folder)).bytesAvailable();
    const auto size = QLocale::c().formattedDataSize(free, 0, QLocale::DataSizeSIFormat);
    return free < littleSpace ? CheckResult::warning(u"%1 has only %2 of free space."_s.arg(path, size),
                                                     u"Delete files, or press “Change Folder…” in the panel."_s)
                              : CheckResult::ok(u"%1 can be written to, with %2 of free space."_s.arg(path, size));
}

} // namespace tunedeck::checks
