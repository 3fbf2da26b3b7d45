#pragma once

#include "TunedeckCore/Service/AssistantLink.h"

#include <QDateTime>
#include <QObject>
#include <QString>

namespace tunedeck {

/// The pairing block of an unpaired Telegram link.
struct TelegramPairingView {
    Q_GADGET
    Q_PROPERTY(bool shown MEMBER shown)
    Q_PROPERTY(QString startUrl MEMBER startUrl)
    Q_PROPERTY(bool expired MEMBER expired)
    Q_PROPERTY(QString text MEMBER text)
    Q_PROPERTY(QString openButton MEMBER openButton)
    Q_PROPERTY(QString openHelp MEMBER openHelp)
    Q_PROPERTY(QString openDescription MEMBER openDescription)
    Q_PROPERTY(QString newCodeButton MEMBER newCodeButton)
    Q_PROPERTY(QString newCodeHelp MEMBER newCodeHelp)
    Q_PROPERTY(QString newCodeDescription MEMBER newCodeDescription)
    Q_PROPERTY(QString expiryNote MEMBER expiryNote)
    Q_PROPERTY(QString qrName MEMBER qrName)
    Q_PROPERTY(bool busy MEMBER busy)
public:
    bool shown = false;
    QString startUrl; ///< empty when the link was made elsewhere
    bool expired = false;
    QString text;
    QString openButton; ///< empty when there is nothing to open
    QString openHelp;
    QString openDescription; ///< the help, and what tells the button from its equals
    QString newCodeButton;
    QString newCodeHelp;        ///< why it can't be pressed; empty when it can
    QString newCodeDescription; ///< whose code, and why it can't be pressed
    QString expiryNote;         ///< empty when there is none
    QString qrName;
    bool busy = false;
    bool operator==(const TelegramPairingView&) const = default;
};

/// The pairing block of a Telegram link; not shown for a paired one.
TelegramPairingView telegramPairing(const AssistantLink& link, bool busy, const QDateTime& now);
/// When the pairing code ends, in words; empty when it has ended or there is no time.
QString expiryNote(const AssistantLink& link, const QDateTime& now);

} // namespace tunedeck
