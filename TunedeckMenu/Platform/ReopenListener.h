#pragma once

#include <QObject>

#include <chrono>

namespace tunedeck {

/// Receives the requests of later starts to show this application's window.
class ReopenListener : public QObject {
    Q_OBJECT
public:
    using QObject::QObject;
    virtual void start() = 0;

Q_SIGNALS:
    void reopenRequested();
};

/// How the running application replied to requestReopen(). None: it isn't listening, or didn't reply in time.
enum class ReopenReply { Accepted, None, NoBus };

/// Asks the running application once to show its window and passes on this start's activation token. Blocks for up to
/// `timeout`. Needs no application object.
ReopenReply requestReopen(std::chrono::milliseconds timeout);

} // namespace tunedeck
