#pragma once

#include <QByteArray>
#include <QString>

namespace tunedeck::test {

/// An empty home folder of its own for a test, also for HOME and the XDG folders in the environment. Paths that a
/// process computes once stay right: all tests of a process get the same folder, emptied each time.
class TemporaryHome {
public:
    TemporaryHome();
    ~TemporaryHome();
    TemporaryHome(const TemporaryHome&) = delete;
    TemporaryHome& operator=(const TemporaryHome&) = delete;

    /// The folder, or a path in it.
    [[nodiscard]] QString path(const QString& relative = {}) const;

    /// Writes a file below it, with the folders above the file; returns its path.
    QString write(const QString& relative, const QByteArray& bytes) const; // NOLINT(modernize-use-nodiscard)

    /// The bytes of a file below it; empty when there is none.
    [[nodiscard]] QByteArray read(const QString& relative) const;
};

} // namespace tunedeck::test
