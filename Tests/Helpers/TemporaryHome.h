#pragma once

#include <QByteArray>
#include <QString>

namespace tunedeck::test {

/// Sets HOME to an empty temporary folder and clears the XDG folders. All tests of a process share one path, emptied
/// each time, because some paths are computed once per process.
class TemporaryHome {
public:
    TemporaryHome();
    ~TemporaryHome();
    TemporaryHome(const TemporaryHome&) = delete;
    TemporaryHome& operator=(const TemporaryHome&) = delete;

    /// The folder, or a path in it.
    [[nodiscard]] QString path(const QString& relative = {}) const;

    /// Writes a file, creating its folders; returns its path.
    QString write(const QString& relative, const QByteArray& bytes) const; // NOLINT(modernize-use-nodiscard)

    /// Writes an executable shell script, creating its folders; returns its path.
    QString writeScript(const QString& relative, const QByteArray& text) const; // NOLINT(modernize-use-nodiscard)

    /// The contents of a file; empty if it doesn't exist.
    [[nodiscard]] QByteArray read(const QString& relative) const;
};

} // namespace tunedeck::test
