#pragma once

#include <QByteArray>
#include <QObject>
#include <QString>

namespace tunedeck {

/// One running application per user: a second start hands its wish to the first and goes.
class SingleInstance : public QObject {
    Q_OBJECT
public:
    /// `socketPath`: in the user's runtime folder.
    explicit SingleInstance(QString socketPath, QObject* parent = nullptr);
    ~SingleInstance() override;

    /// Becomes the one instance, or hands the request (a word such as "show" or "quit") to the one that runs. True when
    /// this process is the one; false when the request was taken by another.
    bool acquire(const QByteArray& request);

    /// The path that all instances of the user share.
    static QString defaultSocketPath();

Q_SIGNALS:
    /// Another start asked for something.
    void requested(const QByteArray& request);

private:
    class Listener;
    QString m_path;
    Listener* m_listener = nullptr;
};

} // namespace tunedeck
