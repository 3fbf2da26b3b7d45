#pragma once

#include "TunedeckMenu/Platform/Workspace.h"

#include <QObject>

namespace tunedeck {

class SessionBus;

/// Opens through the desktop's own opener, shows files through org.freedesktop.FileManager1.
class LinuxWorkspace final : public QObject, public Workspace {
    Q_OBJECT
public:
    explicit LinuxWorkspace(SessionBus& bus, QObject* parent = nullptr);

    bool open(const QUrl& url) override;
    /// Where no file manager can select the file its folder is opened.
    void reveal(const QString& path) override;
    /// From the icon theme, else from the widget style.
    QIcon icon(const QString& path) override;

private:
    SessionBus& m_bus;
};

} // namespace tunedeck
