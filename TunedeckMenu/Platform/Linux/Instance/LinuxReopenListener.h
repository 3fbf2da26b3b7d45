#pragma once

#include "TunedeckMenu/Platform/ReopenListener.h"

#include <QString>
#include <QStringList>
#include <QVariantList>
#include <QVariantMap>

namespace tunedeck {

class SessionBus;

/// Owns the application's name on the session bus and implements org.freedesktop.Application there.
class LinuxReopenListener final : public ReopenListener {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.freedesktop.Application")
public:
    explicit LinuxReopenListener(SessionBus& bus, QObject* parent = nullptr);
    void start() override;

public Q_SLOTS:
    Q_SCRIPTABLE void Activate(const QVariantMap& platformData);
    /// Shows the window: there is nothing to open.
    Q_SCRIPTABLE void Open(const QStringList& urls, const QVariantMap& platformData);
    /// Shows the window: the desktop entry has no actions.
    Q_SCRIPTABLE void ActivateAction(const QString& action, const QVariantList& parameter,
                                     const QVariantMap& platformData);

private:
    void publish();

    SessionBus& m_bus;
};

} // namespace tunedeck
