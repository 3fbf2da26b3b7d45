#pragma once

#include "TunedeckMenu/Panel/Cards/ConnectRow.h"
#include "TunedeckMenu/Panel/Cards/LinkRow.h"

#include <QDateTime>
#include <QList>
#include <QObject>
#include <QString>

namespace tunedeck {

struct AssistantsView {
    Q_GADGET
    Q_PROPERTY(QString title MEMBER title)
    Q_PROPERTY(QString symbol MEMBER symbol)
    Q_PROPERTY(bool canReveal MEMBER canReveal)
    Q_PROPERTY(QString revealSymbol MEMBER revealSymbol)
    Q_PROPERTY(QString revealLabel MEMBER revealLabel)
    Q_PROPERTY(QString emptyText MEMBER emptyText)
    Q_PROPERTY(bool busy MEMBER busy)
    Q_PROPERTY(QString cloudText MEMBER cloudText)
    Q_PROPERTY(tunedeck::look::Tone cloudTone MEMBER cloudTone)
public:
    QString title;
    QString symbol;
    bool canReveal = false;
    QString revealSymbol;
    QString revealLabel;
    QString emptyText; ///< empty when there are links
    bool busy = false;
    QList<LinkRowView> links;
    QList<ConnectRowView> connect;
    QString cloudText; ///< empty when there is no cloud line
    look::Tone cloudTone = look::Tone::Secondary;
    bool operator==(const AssistantsView&) const = default;
};

AssistantsView assistantsCard(const PanelState& state, const QDateTime& now);

} // namespace tunedeck
