#pragma once

#include <QLockFile>
#include <QString>

#include <chrono>
#include <expected>

namespace tunedeck {

/// Lets one application run per user, which holds a lock file while it runs. Needs no application object, so that a
/// second start ends before it connects to the display.
class SingleInstance {
public:
    enum class Start { First, HandedOver };

    explicit SingleInstance(const QString& lockPath = defaultLockPath());

    /// Takes the lock, or asks the running application to show its window. Tries for `patience`, because that one may
    /// still be starting or exiting. Fails with a sentence. When no lock file can be made, logs that and runs anyway.
    std::expected<Start, QString> start(std::chrono::milliseconds patience = std::chrono::seconds(5));

    /// Takes the lock, ending the application that holds it. Returns whether one was running, or why it still is.
    std::expected<bool, QString> takeOver(std::chrono::milliseconds patience = std::chrono::seconds(10));

    /// In XDG_RUNTIME_DIR, else in ~/.tunedeck.
    static QString defaultLockPath();

private:
    QLockFile m_lock;
};

} // namespace tunedeck
