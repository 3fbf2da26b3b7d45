#pragma once

#include <QIcon>
#include <QString>
#include <QUrl>

namespace tunedeck {

/// Opens and shows files with the desktop's programs. Doesn't block.
class Workspace {
public:
    virtual ~Workspace() = default;
    /// Opens a file, folder or web address in the user's program for it. Returns false when none could be started.
    virtual bool open(const QUrl& url) = 0;
    /// Shows a file selected in the file manager.
    virtual void reveal(const QString& path) = 0;
    /// The icon of a file or folder.
    virtual QIcon icon(const QString& path) = 0;
};

} // namespace tunedeck
