#pragma once

#include "TunedeckMenu/Panel/Cards/SecretField.h"
#include "TunedeckMenu/Panel/Cards/TelegramPairing.h"
#include "TunedeckMenu/Panel/Look.h"
#include "TunedeckMenu/Panel/PanelState.h"
#include "TunedeckMenu/Panel/RowSlice.h"
#include "TunedeckMenu/Panel/ViewProperty.h"

#include <QDateTime>

namespace tunedeck {

/// The menu of a link and the button that opens it.
struct LinkMenuView {
    Q_GADGET
    VIEW_PROPERTY(QString, label) = u"More"_s;
    VIEW_PROPERTY(QString, accessibleName); ///< unique among the rows
    VIEW_PROPERTY(QString, description);    ///< the link's state, for screen readers
    VIEW_PROPERTY(QString, renew);          ///< "New URL…", "New Key…"; empty when the menu has no such item
    VIEW_PROPERTY(QString, guide) = u"Setup Guide"_s;
    VIEW_PROPERTY(QString, disconnect) = u"Disconnect"_s;
    bool operator==(const LinkMenuView&) const = default;
};

struct LinkRowView {
    Q_GADGET
    VIEW_PROPERTY(QString, id);
    VIEW_PROPERTY(tunedeck::look::LinkKind, kind) = look::LinkKind::PrivateUrl;
    VIEW_PROPERTY(QString, name);
    VIEW_PROPERTY(QString, detail); ///< "· used yesterday", "· paired", …
    VIEW_PROPERTY(bool, connected) = false;
    VIEW_PROPERTY(tunedeck::LinkMenuView, menu);
    VIEW_PROPERTY(QString, text); ///< above the fields or instead of them
    VIEW_PROPERTY(tunedeck::SecretFieldView, urlField);
    VIEW_PROPERTY(tunedeck::SecretFieldView, keyField);
    VIEW_PROPERTY(tunedeck::TelegramPairingView, pairing);
    VIEW_PROPERTY(QString, guideTitle); ///< of the link below the fields; empty when there is none
    VIEW_PROPERTY(QString, guideHelp);
    VIEW_PROPERTY(QString, guideName); ///< for screen readers; unique among the rows
    bool operator==(const LinkRowView&) const = default;
};

/// One row per link. Accessible names are unique among the rows.
RowSlice<LinkRowView> linkRows(const PanelState& state, const QDateTime& now, RowRange range);
/// Title and help of the link to an assistant's setup guide.
QString guideTitle();
QString guideHelp(Assistant assistant);

} // namespace tunedeck
