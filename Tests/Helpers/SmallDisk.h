#pragma once

#include <QString>
#include <QTemporaryDir>

#include <string>

namespace tunedeck::test {

/// A disk of its own for a test of what happens when it is full or can't be written. Nobody but this process sees it.
///
/// Needs mount namespaces, as root or as a user who may make user namespaces; elsewhere isThere() is false and the
/// test skips with reason().
class SmallDisk {
public:
    /// `kilobytes`: its capacity.
    explicit SmallDisk(int kilobytes);
    ~SmallDisk();
    SmallDisk(const SmallDisk&) = delete;
    SmallDisk& operator=(const SmallDisk&) = delete;

    [[nodiscard]] bool isThere() const { return m_reason.empty(); }
    [[nodiscard]] const std::string& reason() const { return m_reason; }

    /// The folder that is the disk, or a path in it.
    [[nodiscard]] QString path(const QString& relative = {}) const;

    /// Takes all the room that is left, and gives it back.
    void fill() const;
    void makeRoom() const;

    /// Lets nothing be written at all, not even by root, or again something.
    void setReadOnly(bool readOnly) const;

private:
    [[nodiscard]] std::string folder() const;

    QTemporaryDir m_folder;
    int m_kilobytes;
    std::string m_reason;
};

} // namespace tunedeck::test
