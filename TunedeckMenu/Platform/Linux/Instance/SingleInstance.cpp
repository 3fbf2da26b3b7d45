#include "TunedeckMenu/Platform/SingleInstance.h"

#include "TunedeckMenu/Platform/Linux/Instance/ActivationToken.h"
#include "TunedeckMenu/Platform/Linux/Instance/InstanceSocket.h"
#include "TunedeckMenu/Platform/Log.h"

#include <QFile>
#include <QSocketNotifier>
#include <QTimer>

#include <sys/socket.h>
#include <sys/stat.h>

#include <cerrno>
#include <thread>

namespace tunedeck {

using namespace std::chrono_literals;

namespace {

constexpr int mostConnections = 8;
constexpr auto connectionTime = 2s;

// One start that asks for something. Lives until it has an answer, hangs up or takes too long.
class Visitor : public QObject {
public:
    Visitor(FileDescriptor socket, SingleInstance& instance, QObject* parent)
        : QObject(parent)
        , m_socket(std::move(socket))
        , m_instance(instance)
        , m_notifier(m_socket.get(), QSocketNotifier::Read) {
        connect(&m_notifier, &QSocketNotifier::activated, this, &Visitor::read);
        QTimer::singleShot(connectionTime, this, &QObject::deleteLater);
    }

private:
    void read() {
        char bytes[instance::longestLine];
        const auto count = ::recv(m_socket.get(), bytes, sizeof bytes, 0);
        if (count < 0 && (errno == EAGAIN || errno == EINTR)) {
            return;
        }
        if (count > 0) {
            m_line.append(bytes, count);
        }
        const auto end = m_line.indexOf('\n');
        if (count > 0 && end < 0 && m_line.size() < instance::longestLine) {
            return;
        }
        m_notifier.setEnabled(false);
        deleteLater();
        if (const auto request = end < 0 ? std::nullopt : instance::Request::parse(m_line.left(end))) {
            // One that gave up meanwhile has told its user so; nothing happens late.
            if (::send(m_socket.get(), "ok\n", 3, MSG_NOSIGNAL | MSG_DONTWAIT) == 3) {
                useActivationToken(request->token);
                Q_EMIT m_instance.requested(request->word);
            }
        }
    }

    FileDescriptor m_socket;
    SingleInstance& m_instance;
    QSocketNotifier m_notifier;
    QByteArray m_line;
};

} // namespace

// The lock and the socket of the first instance.
class SingleInstance::Listener : public QObject {
public:
    Listener(FileDescriptor lock, FileDescriptor socket, QString path, SingleInstance& instance)
        : m_lock(std::move(lock)), m_socket(std::move(socket)), m_path(std::move(path)), m_instance(instance) {}
    ~Listener() override {
        if (m_socket) {
            QFile::remove(m_path); // while the lock is held: it is ours
        }
    }

    void start() {
        if (m_socket && !m_notifier) {
            m_notifier = std::make_unique<QSocketNotifier>(m_socket.get(), QSocketNotifier::Read);
            connect(m_notifier.get(), &QSocketNotifier::activated, this, &Listener::accept);
        }
    }

private:
    void accept() {
        FileDescriptor visitor(::accept4(m_socket.get(), nullptr, nullptr, SOCK_NONBLOCK | SOCK_CLOEXEC));
        if (visitor && instance::isOwnUser(visitor.get()) && children().size() < mostConnections) {
            new Visitor(std::move(visitor), m_instance, this);
        }
    }

    FileDescriptor m_lock;
    FileDescriptor m_socket;
    QString m_path;
    SingleInstance& m_instance;
    std::unique_ptr<QSocketNotifier> m_notifier;
};

SingleInstance::SingleInstance(QString socketPath, QObject* parent) : QObject(parent), m_path(std::move(socketPath)) {}

SingleInstance::~SingleInstance() = default;

SingleInstance::Role SingleInstance::acquire(const QByteArray& request, std::chrono::milliseconds patience) {
    const QDeadlineTimer deadline(patience, Qt::PreciseTimer);
    const instance::Request wish{request, ownActivationToken()};
    do {
        auto lock = m_path.isEmpty() ? std::nullopt : instance::takeLock(m_path + QStringLiteral(".lock"));
        if (!lock || lock->descriptor) {
            auto socket = lock ? instance::listenAt(m_path) : FileDescriptor();
            if (!socket) {
                qCWarning(appLog).noquote() << "other starts can't be heard: no socket at" << m_path;
            }
            m_listener = std::make_unique<Listener>(lock ? std::move(lock->descriptor) : FileDescriptor(),
                                                    std::move(socket), m_path, *this);
            return Role::first;
        }
        switch (instance::deliver(m_path, wish, deadline)) {
        case instance::Delivery::taken:
            return Role::handedOver;
        case instance::Delivery::silent:
            return Role::unanswered;
        case instance::Delivery::refused: // it is just starting or ending
            std::this_thread::sleep_for(10ms);
        }
    } while (!deadline.hasExpired());
    return Role::unanswered;
}

std::expected<bool, QString> SingleInstance::takeOver(std::chrono::milliseconds patience) {
    const QDeadlineTimer deadline(patience, Qt::PreciseTimer);
    bool ran = false;
    do {
        const std::chrono::milliseconds left(deadline.remainingTime());
        switch (acquire(QByteArrayLiteral("quit"), left)) {
        case Role::first:
            return ran;
        case Role::unanswered: // for as long as acquire() had
            return std::unexpected(ran ? QStringLiteral("the Tunedeck that runs doesn't end")
                                       : QStringLiteral("another Tunedeck runs but doesn't answer"));
        case Role::handedOver:
            ran = true;
            std::this_thread::sleep_for(20ms);
        }
    } while (!deadline.hasExpired());
    return std::unexpected(QStringLiteral("the Tunedeck that runs doesn't end"));
}

void SingleInstance::answer() {
    if (m_listener) {
        m_listener->start();
    }
}

QString SingleInstance::defaultSocketPath() {
    const auto isOwnFolder = [](const QString& path, bool ownAlone) {
        struct stat info{};
        return ::lstat(QFile::encodeName(path).constData(), &info) == 0 && S_ISDIR(info.st_mode) &&
               info.st_uid == ::getuid() && (!ownAlone || (info.st_mode & 0077) == 0);
    };
    auto folder = QFile::decodeName(qgetenv("XDG_RUNTIME_DIR"));
    if (!folder.startsWith(u'/') || !isOwnFolder(folder, false)) {
        folder = QStringLiteral("/tmp/tunedeck-%1").arg(::getuid());
        ::mkdir(QFile::encodeName(folder).constData(), 0700);
        if (!isOwnFolder(folder, true)) {
            return {}; // somebody else's: nothing there can be trusted
        }
    }
    return folder + QStringLiteral("/com.brightfold.tunedeck.menu.socket");
}

} // namespace tunedeck
