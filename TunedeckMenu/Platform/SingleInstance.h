#pragma once

#include <QByteArray>
#include <QObject>
#include <QString>

#include <chrono>
#include <expected>
#include <memory>

namespace tunedeck {

/// One running application per user: a second start hands its wish to the first and goes.
class SingleInstance : public QObject {
    Q_OBJECT
public:
    /// What a start is to be.
    enum class Role {
        first,      ///< this process is the one
        handedOver, ///< another runs and has taken the request
        unanswered, ///< another runs but doesn't answer
    };

    /// `socketPath`: in the user's runtime folder; a lock file stands beside it.
    explicit SingleInstance(QString socketPath, QObject* parent = nullptr);
    ~SingleInstance() override;

    /// Becomes the one instance, or hands the request (a word of small letters such as "show" or "quit") to the one
    /// that runs, together with the activation token of this start. Waits for its answer at most this long. Needs no
    /// application object, so that a second start is over before it has connected to the display. When the folder of
    /// the socket can't be used the process is the first one, with a line in the log: better two than none.
    Role acquire(const QByteArray& request, std::chrono::milliseconds patience = std::chrono::seconds(2));

    /// Becomes the one instance in the place of the one that runs, which is asked to quit and waited for: true when one
    /// ran. Fails with a sentence when it is still there after that long. Needs no application object.
    std::expected<bool, QString> takeOver(std::chrono::milliseconds patience = std::chrono::seconds(10));

    /// The first instance begins to answer; what was asked since acquire() comes now. Needs the event loop.
    void answer();

    /// The path that all instances of the user share: in XDG_RUNTIME_DIR, else in a folder of the user's own in /tmp.
    static QString defaultSocketPath();

Q_SIGNALS:
    /// Another start asked for something; its activation token is in the environment already.
    void requested(const QByteArray& request);

private:
    class Listener;
    QString m_path;
    std::unique_ptr<Listener> m_listener;
};

} // namespace tunedeck
