#pragma once

#include "TunedeckCore/Service/AssistantLink.h"
#include "TunedeckMenu/Panel/ViewProperty.h"

#include <QDateTime>

namespace tunedeck {

struct TelegramPairingView {
    Q_GADGET
    VIEW_PROPERTY(bool, shown) = false;
    VIEW_PROPERTY(QString, startUrl); ///< empty when the link was made on another computer
    VIEW_PROPERTY(bool, expired) = false;
    VIEW_PROPERTY(QString, text);
    VIEW_PROPERTY(QString, openButton); ///< empty unless there is a valid code
    VIEW_PROPERTY(QString, openHelp);
    VIEW_PROPERTY(QString, openName); ///< for screen readers; unique among the rows
    VIEW_PROPERTY(QString, newCodeButton);
    VIEW_PROPERTY(QString, newCodeHelp); ///< why the button is disabled; empty when it isn't
    VIEW_PROPERTY(QString, newCodeName); ///< for screen readers; unique among the rows
    VIEW_PROPERTY(QString, expiryNote);  ///< may be empty
    VIEW_PROPERTY(QString, qrName);
    VIEW_PROPERTY(bool, busy) = false;
    bool operator==(const TelegramPairingView&) const = default;
};

/// Not shown for a paired link. `busy`: another link is being changed.
TelegramPairingView telegramPairing(const AssistantLink& link, bool busy, const QDateTime& now);

} // namespace tunedeck
