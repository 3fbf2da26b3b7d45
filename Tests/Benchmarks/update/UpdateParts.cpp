// The parts of an update, one to a run, so that each can be timed beside another program that does the same:
//   update-parts start
//   update-parts hash FILE
//   update-parts unpack ARCHIVE FOLDER
//   update-parts transfer HELPER URL FILE
//   update-parts install HELPER URL SHA256 BUNDLE IDENTIFIER VERSION
// Ends with 0 when it worked, after telling its peak of memory in KiB: what waits for a program is told the peak of
// whoever started it, if that is higher.

#include "TunedeckCore/Update/UpdateInstaller.h"

#include <QCoreApplication>
#include <QFile>

#include <cstdio>

using namespace tunedeck;

namespace {

constexpr std::int64_t transferLimit = std::int64_t{1024} * 1024 * 1024;

/// The exit status of a part, with the reason on the way when it failed.
template<class T>
int ended(const UpdateInstaller::Result<T>& result) {
    if (!result) {
        static_cast<void>(std::fprintf(stderr, "%s\n", qPrintable(result.error().description())));
    }
    return result ? 0 : 1;
}

void tellPeak() {
    QFile status(QStringLiteral("/proc/self/status"));
    if (status.open(QIODevice::ReadOnly)) {
        const QByteArray facts = status.readAll();
        const qsizetype peak = facts.indexOf("VmHWM:");
        const QByteArray line = facts.mid(peak, facts.indexOf('\n', peak) - peak).simplified();
        std::puts(line.split(' ').value(1).constData());
    }
}

QCoro::Task<> transfer(QStringList words) {
    const Downloader downloader(words.value(0));
    const DownloadRequest request{.url = QUrl(words.value(1)), .file = words.value(2), .limit = transferLimit};
    const auto status = co_await downloader.download(request, {}, {});
    QCoreApplication::exit(status && *status == 200 ? 0 : 1);
}

QCoro::Task<> install(QStringList words) {
    Release release;
    release.url = words.value(1);
    release.sha256 = words.value(2);
    release.version = words.value(5);
    const auto result =
        co_await UpdateInstaller::install(release, words.value(3), words.value(4), Downloader(words.value(0)), {}, {});
    QCoreApplication::exit(ended(result));
}

int run() {
    const QString part = QCoreApplication::arguments().value(1);
    const QStringList words = QCoreApplication::arguments().mid(2);
    if (part == u"start") {
        return 0;
    }
    if (part == u"hash") {
        return ended(UpdateInstaller::sha256Hex(words.value(0)));
    }
    if (part == u"unpack") {
        return ended(UpdateInstaller::unpack(words.value(0), words.value(1)));
    }
    // Started from the event loop, so that it is there to be ended.
    if (part == u"transfer") {
        QMetaObject::invokeMethod(qApp, [words] { transfer(words); }, Qt::QueuedConnection);
    } else if (part == u"install") {
        QMetaObject::invokeMethod(qApp, [words] { install(words); }, Qt::QueuedConnection);
    } else {
        return 2;
    }
    return QCoreApplication::exec();
}

} // namespace

int main(int argc, char** argv) {
    const QCoreApplication application(argc, argv);
    const int status = run();
    tellPeak();
    return status;
}
