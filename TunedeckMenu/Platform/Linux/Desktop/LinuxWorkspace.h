#pragma once

#include "TunedeckMenu/Platform/Workspace.h"

#include <QObject>

namespace tunedeck {

class SessionBus;

/// Opens files with xdg-open or the like and shows them through org.freedesktop.FileManager1.
class LinuxWorkspace final : public QObject, public Workspace {
    Q_OBJECT
public:
    explicit LinuxWorkspace(SessionBus& bus, QObject* parent = nullptr);

    bool open(const QUrl& url) override;
    /// Opens the folder when no file manager can select the file.
    void reveal(const QString& path) override;
    /// Falls back from the icon theme to the widget style.
    QIcon icon(const QString& path) override;

private:
    SessionBus& m_bus;
};

} // namespace tunedeck
