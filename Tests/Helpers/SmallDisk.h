#pragma once

#include <QString>
#include <QTemporaryDir>

#include <string>

namespace tunedeck::test {

/// A small file system that a test can fill, visible only to this process. Needs mount namespaces;
/// without them isThere() is false and the test skips with reason().
class SmallDisk {
public:
    explicit SmallDisk(int kilobytes);
    ~SmallDisk();
    SmallDisk(const SmallDisk&) = delete;
    SmallDisk& operator=(const SmallDisk&) = delete;

    [[nodiscard]] bool isThere() const { return m_reason.empty(); }
    [[nodiscard]] const std::string& reason() const { return m_reason; }

    /// The mount point, or a path in it.
    [[nodiscard]] QString path(const QString& relative = {}) const;

    /// Uses up the free space.
    void fill() const;

private:
    [[nodiscard]] std::string folder() const;

    QTemporaryDir m_folder;
    std::string m_reason;
};

} // namespace tunedeck::test
