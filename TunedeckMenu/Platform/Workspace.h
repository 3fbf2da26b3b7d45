#pragma once

#include <QIcon>
#include <QString>
#include <QUrl>

namespace tunedeck {

/// The desktop's way to open and show things; none of it waits.
class Workspace {
public:
    virtual ~Workspace() = default;
    /// Opens a file, folder or web address with what the user has for it. False when nothing could be started.
    virtual bool open(const QUrl& url) = 0;
    /// Shows a file selected in the file manager.
    virtual void reveal(const QString& path) = 0;
    /// The icon of the file or folder at a path.
    virtual QIcon icon(const QString& path) = 0;
};

} // namespace tunedeck
