#include "TunedeckCore/Update/UpdateInstaller.h"

#include "TunedeckCore/Locations/BundlePaths.h"
#include "TunedeckCore/Support/Async/Background.h"
#include "TunedeckCore/Support/Async/HelperProgram.h"
#include "TunedeckCore/Support/Async/Process.h"
#include "TunedeckCore/Support/Files/AtomicFile.h"
#include "TunedeckCore/Support/Text/Text.h"
#include "TunedeckCore/Update/BundleSwap.h"
#include "TunedeckCore/Update/ScratchFolder.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <unistd.h>

#include <chrono>
#include <functional>
#include <memory>

using namespace Qt::StringLiterals;

namespace tunedeck {

namespace {

using Result = std::expected<QString, UpdateError>;
using Signed = std::expected<void, QString>;

constexpr std::int64_t archiveLimit = std::int64_t{1024} * 1024 * 1024;
constexpr std::chrono::hours archiveTimeout{2};
constexpr std::chrono::seconds answerTimeout{10};
constexpr qint64 answerLimit = 200;
const QString archiveName = u"update.zip"_s;

std::unexpected<UpdateError> failure(UpdateError::Kind kind) {
    return std::unexpected(UpdateError{.kind = kind});
}

Result cancelled() {
    return std::unexpected(UpdateError::other(u"The update was cancelled."_s));
}

/// Runs a step on the archive in the helper.
QCoro::Task<Result> runStep(QString helper, QString step, QStringList operands, std::stop_token stop) {
    HelperRequest request{.subcommand = std::move(step), .operands = std::move(operands)};
    const auto ended = co_await runHelper(helper, request, stop);
    if (!ended) {
        co_return std::unexpected(UpdateError::other(ended.error()));
    }
    switch (ended->status) {
    case HelperStatus::Done:
        co_return ended->text;
    case HelperStatus::Refused:
        co_return failure(UpdateError::Kind::noApp);
    case HelperStatus::Unexpected:
        co_return std::unexpected(UpdateError::wrongApp(ended->text));
    default:
        co_return std::unexpected(UpdateError::other(ended->text));
    }
}

/// Runs the new program, because one that can't run must not replace one that can. Returns the version that it prints.
QCoro::Task<Result> askVersion(QString app, QString home, std::stop_token stop) {
    if (const auto created = createFolder(home); !created) {
        co_return std::unexpected(UpdateError::other(created.error()));
    }
    ProcessRequest request{.program = BundlePaths(app).application(),
                           .arguments = {u"--version"_s},
                           .keepOutput = true,
                           .outputLimit = answerLimit,
                           .timeLimit = answerTimeout,
                           .isolatedIn = home};
    const auto ended = co_await runProcess(request, stop);
    const bool isAnswered = ended && ended->exitStatus == 0;
    const QString answer = isAnswered ? withoutControls(QString::fromUtf8(ended->output).simplified()) : QString();
    if (answer.isEmpty()) {
        co_return failure(UpdateError::Kind::noApp);
    }
    co_return answer.startsWith(u"Tunedeck "_s) ? answer.sliced(9) : answer;
}

/// All steps but the removal of the scratch folder.
QCoro::Task<Result> installFrom(std::shared_ptr<ScratchFolder> scratch, Release release, QString installed,
                                QString bundleID, QString helper, DownloadProgress progress, std::stop_token stop,
                                SignatureCheck checkSignature) {
    const QUrl url(release.url, QUrl::StrictMode);
    if (!url.isValid() || url.scheme().isEmpty()) {
        co_return failure(UpdateError::Kind::noApp);
    }
    const QString zip = scratch->filePath(archiveName);
    DownloadRequest request{.url = url, .file = zip, .limit = archiveLimit, .timeout = archiveTimeout};
    const auto status = co_await Downloader(helper).download(request, std::move(progress), stop);
    if (!status) {
        co_return std::unexpected(UpdateError::other(status.error()));
    }
    if (*status != 200) {
        co_return std::unexpected(UpdateError::http(*status));
    }
    const QStringList archive{zip};
    const auto digest = co_await runStep(helper, u"verify"_s, archive, stop);
    if (!digest) {
        co_return std::unexpected(digest.error());
    }
    if (digest->isEmpty() || digest->compare(release.sha256, Qt::CaseInsensitive) != 0) {
        co_return failure(UpdateError::Kind::checksum);
    }
    const QString unpacked = scratch->filePath(u"unpacked"_s);
    const QStringList target{zip, unpacked, bundleID, release.version};
    const auto app = co_await runStep(helper, u"unpack"_s, target, stop);
    if (!app) {
        co_return std::unexpected(app.error());
    }
    if (app->contains(u'/') || !app->endsWith(u".app")) { // must not lead out of the folder, whatever the helper says
        co_return failure(UpdateError::Kind::noApp);
    }
    const QString fresh = unpacked + u'/' + *app;
    std::function<Signed(std::stop_token)> check = [scratch, fresh, checkSignature](const std::stop_token&) {
        return checkSignature(fresh);
    };
    const auto isSigned = co_await inBackground<Signed>(std::move(check), stop);
    if (!isSigned) {
        co_return cancelled();
    }
    if (!*isSigned) {
        co_return std::unexpected(UpdateError::other(isSigned->error()));
    }
    const auto answer = co_await askVersion(fresh, scratch->filePath(u"home"_s), stop);
    if (!answer) {
        co_return answer;
    }
    if (*answer != release.version) {
        co_return std::unexpected(UpdateError::wrongVersion(*answer, release.version));
    }
    // Keeps the scratch folder until it has ended, also when the task is cancelled.
    std::function<Result(std::stop_token)> swap = [scratch, zip, installed, fresh](const std::stop_token&) {
        QFile::remove(zip); // before replace() syncs the volume, so that the archive isn't written out
        return UpdateInstaller::replace(installed, fresh, scratch->asidePath());
    };
    auto swapped = co_await inBackground<Result>(std::move(swap), stop);
    co_return swapped ? *swapped : cancelled();
}

} // namespace

QCoro::Task<Result> UpdateInstaller::install(Release release, QString installed, QString bundleID, QString helper,
                                             DownloadProgress progress, std::stop_token stop,
                                             SignatureCheck checkSignature) {
    installed = QDir::cleanPath(installed); // the parent of "a/b/" would be "a/b"
    if (access(QFile::encodeName(QFileInfo(installed).absolutePath()).constData(), W_OK) != 0) {
        co_return failure(UpdateError::Kind::notWritable);
    }
    const auto scratch = ScratchFolder::create(installed);
    if (!scratch) {
        co_return std::unexpected(UpdateError::other(scratch.error()));
    }
    const auto result = co_await installFrom(*scratch, release, installed, bundleID, helper, std::move(progress), stop,
                                             std::move(checkSignature));
    if (!stop.stop_requested()) { // else the swap may still be running
        co_await (*scratch)->remove(stop);
    }
    co_return result;
}

} // namespace tunedeck
