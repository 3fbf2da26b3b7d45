#pragma once

#include "TunedeckMenu/Panel/Cards/ConnectRow.h"
#include "TunedeckMenu/Panel/Cards/LinkRow.h"
#include "TunedeckMenu/Panel/RowSlice.h"
#include "TunedeckMenu/Panel/ViewProperty.h"

#include <QDateTime>
#include <QList>

namespace tunedeck {

struct AssistantsView {
    Q_GADGET
    VIEW_PROPERTY(QString, title) = u"Assistants"_s;
    VIEW_PROPERTY(QString, revealSymbol);
    VIEW_PROPERTY(QString, revealLabel); ///< empty when there is nothing to reveal
    VIEW_PROPERTY(QString, emptyText);   ///< empty when there are links
    VIEW_PROPERTY(bool, busy) = false;
    RowSlice<LinkRowView> links;
    QList<ConnectRowView> connect;
    VIEW_PROPERTY(QString, cloudText); ///< empty when there is no cloud line
    VIEW_PROPERTY(tunedeck::look::Tone, cloudTone) = look::Tone::Secondary;
    bool operator==(const AssistantsView&) const = default;
};

AssistantsView assistantsCard(const PanelState& state, const QDateTime& now, RowRange links = {});

} // namespace tunedeck
