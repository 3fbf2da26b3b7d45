#pragma once

#include "TunedeckCore/Service/Assistants.h"

#include <QObject>
#include <QString>

namespace tunedeck {

/// One assistant that isn't connected yet; its identity is `id`, the kind's raw value.
struct ConnectRowView {
    Q_GADGET
    Q_PROPERTY(QString id MEMBER id)
    Q_PROPERTY(QString name MEMBER name)
    Q_PROPERTY(QString plan MEMBER plan)
    Q_PROPERTY(QString accessibleName MEMBER accessibleName)
    Q_PROPERTY(QString help MEMBER help)
    Q_PROPERTY(QString symbol MEMBER symbol)
public:
    QString id;
    QString name;
    QString plan; ///< empty when it is free
    QString accessibleName;
    QString help;
    QString symbol;
    bool operator==(const ConnectRowView&) const = default;
};

/// A button that connects an assistant. `busy`: another link is being changed.
ConnectRowView connectRow(Assistant assistant, const QString& symbol, bool busy);

} // namespace tunedeck
