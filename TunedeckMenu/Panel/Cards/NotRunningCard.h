#pragma once

#include "TunedeckMenu/Panel/ServiceState.h"

#include <QObject>
#include <QString>

namespace tunedeck {

struct NotRunningView {
    Q_GADGET
    Q_PROPERTY(bool shown MEMBER shown)
    Q_PROPERTY(QString title MEMBER title)
    Q_PROPERTY(QString symbol MEMBER symbol)
    Q_PROPERTY(QString text MEMBER text)
    Q_PROPERTY(QString button MEMBER button)
    Q_PROPERTY(bool starting MEMBER starting)
public:
    bool shown = false;
    QString title;
    QString symbol;
    QString text;
    QString button;
    bool starting = false;
    bool operator==(const NotRunningView&) const = default;
};

NotRunningView notRunningCard(const ServiceState& service, bool isStarting);

} // namespace tunedeck
