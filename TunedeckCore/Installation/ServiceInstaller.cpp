#include "TunedeckCore/Installation/ServiceInstaller.h"

#include "TunedeckCore/Support/Files/AtomicFile.h"
#include "TunedeckCore/Support/Files/Document.h"
#include "TunedeckCore/Support/Files/FileCopy.h"

#include <QFile>
#include <QFileInfo>

#include <unistd.h>

#include <chrono>
#include <utility>

namespace tunedeck {

using namespace Qt::StringLiterals;
using Outcome = ServiceInstaller::Outcome;

namespace {

constexpr int loadAttempts = 10;
constexpr std::chrono::milliseconds loadPause{500};
constexpr std::int64_t throttleInterval = 30; // seconds

Outcome failed(QString message) {
    return {.kind = Outcome::Kind::failed, .message = std::move(message)};
}

Outcome stopped() {
    return failed(u"The installation was stopped."_s);
}

bool isExecutableFile(const QString& path) {
    return QFileInfo(path).isFile() && ::access(QFile::encodeName(path).constData(), X_OK) == 0;
}

QString flag(bool value) {
    return value ? u"true"_s : u"false"_s;
}

QString quoted(QString text) {
    text.replace(u"\\"_s, u"\\\\"_s).replace(u"\""_s, u"\\\""_s).replace(u"\n"_s, u"\\n"_s);
    return u"\""_s + text + u"\""_s;
}

} // namespace

QString Outcome::description() const {
    switch (kind) {
    case Kind::installed:
        return u"installed(serviceChanged: %1, plistChanged: %2)"_s.arg(flag(serviceChanged), flag(plistChanged));
    case Kind::failed:
        return u"failed("_s + quoted(message) + u")"_s;
    case Kind::notBundled:
        return u"notBundled"_s;
    case Kind::upToDate:
        break;
    }
    return u"upToDate"_s;
}

ServiceInstaller::ServiceInstaller(QString home, std::optional<QString> bundledService, std::uint32_t uid,
                                   Launchctl launchctl, Clock& clock)
    : m_paths(std::move(home))
    , m_bundledService(std::move(bundledService))
    , m_uid(uid)
    , m_launchctl(std::move(launchctl))
    , m_clock(&clock) {}

QString ServiceInstaller::domainTarget(std::uint32_t uid) {
    return u"gui/"_s + QString::number(uid);
}

QString ServiceInstaller::serviceTarget(std::uint32_t uid) {
    return domainTarget(uid) + u'/' + QString::fromLatin1(label);
}

PropertyDictionary ServiceInstaller::plist() const {
    const PropertyDictionary environment{
        {u"PATH"_s,
         PropertyValue(m_paths.localPrograms() + u":/opt/homebrew/bin:/usr/local/bin:/usr/bin:/bin:/usr/sbin:/sbin"_s)},
        {u"RUST_LOG"_s, PropertyValue(u"tunedeck=info"_s)},
    };
    return {
        {u"Label"_s, PropertyValue(QString::fromLatin1(label))},
        {u"ProgramArguments"_s, PropertyValue(PropertyArray{PropertyValue(installed())})},
        {u"WorkingDirectory"_s, PropertyValue(m_paths.dataFolder())},
        {u"EnvironmentVariables"_s, PropertyValue(environment)},
        {u"RunAtLoad"_s, PropertyValue(true)},
        {u"KeepAlive"_s, PropertyValue(true)},
        {u"ThrottleInterval"_s, PropertyValue(throttleInterval)},
        {u"StandardErrorPath"_s, PropertyValue(m_paths.serviceLog())},
        {u"StandardOutPath"_s, PropertyValue(m_paths.serviceOutput())},
    };
}

/// Returns whether it was copied.
std::expected<bool, QString> ServiceInstaller::updateProgram(const QString& bundled) const {
    const auto program = installed();
    if (auto made = createFolder(QFileInfo(program).path()); !made) {
        return std::unexpected(made.error());
    }
    if (haveSameBytes(bundled, program)) {
        return false;
    }
    auto copied = installCopy(bundled, program + u".new"_s, program, 0755);
    return copied ? std::expected<bool, QString>(true) : std::unexpected(copied.error());
}

/// Returns whether it was written.
std::expected<bool, QString> ServiceInstaller::updatePlist() const {
    const auto path = plistURL();
    if (auto made = createFolder(QFileInfo(path).path()); !made) {
        return std::unexpected(made.error());
    }
    const auto wanted = plist();
    const auto bytes = readDocument(path);
    if (bytes && parsePropertyList(*bytes) == wanted) {
        return false;
    }
    auto written = writeFileAtomically(path, xmlPropertyList(wanted));
    return written ? std::expected<bool, QString>(true) : std::unexpected(written.error());
}

QCoro::Task<Outcome> ServiceInstaller::ensureInstalled(std::stop_token stop) const {
    return run(*this, std::move(stop));
}

QCoro::Task<Outcome> ServiceInstaller::run(ServiceInstaller installer, std::stop_token stop) {
    if (!installer.m_bundledService || !isExecutableFile(*installer.m_bundledService)) {
        co_return Outcome{.kind = Outcome::Kind::notBundled};
    }
    const auto serviceChanged = installer.updateProgram(*installer.m_bundledService);
    if (!serviceChanged) {
        co_return failed(serviceChanged.error());
    }
    const auto plistChanged = installer.updatePlist();
    if (!plistChanged) {
        co_return failed(plistChanged.error());
    }
    Outcome done;
    if (*serviceChanged || *plistChanged) {
        done = {.kind = Outcome::Kind::installed, .serviceChanged = *serviceChanged, .plistChanged = *plistChanged};
    }

    const auto target = serviceTarget(installer.m_uid);
    const QStringList print{u"print"_s, target};
    const bool loaded = co_await installer.m_launchctl(print, stop) == 0;
    if (stop.stop_requested()) {
        co_return stopped();
    }
    if (loaded && !*plistChanged) {
        if (*serviceChanged) {
            const QStringList restart{u"kickstart"_s, u"-k"_s, target};
            co_await installer.m_launchctl(restart, stop);
        }
        co_return done;
    }
    if (loaded) {
        const QStringList unload{u"bootout"_s, target};
        co_await installer.m_launchctl(unload, stop);
        if (stop.stop_requested()) {
            co_return stopped();
        }
    }
    co_return co_await load(installer, done, stop);
}

/// Loads the agent. Retries, because bootstrap fails while a previous bootout is still in progress.
QCoro::Task<Outcome> ServiceInstaller::load(ServiceInstaller installer, Outcome done, std::stop_token stop) {
    const QStringList bootstrap{u"bootstrap"_s, domainTarget(installer.m_uid), installer.plistURL()};
    for (int attempt = 1;; ++attempt) {
        const auto status = co_await installer.m_launchctl(bootstrap, stop);
        if (stop.stop_requested()) {
            co_return stopped();
        }
        if (status == 0) {
            co_return done;
        }
        if (attempt == loadAttempts) {
            co_return failed(u"launchctl bootstrap exited "_s + QString::number(status));
        }
        const bool slept = co_await installer.m_clock->sleep(loadPause, stop);
        if (!slept) {
            co_return stopped();
        }
    }
}

} // namespace tunedeck
