#include "TunedeckCore/Support/Text/Text.h"
#include "TunedeckMenu/Panel/Panel.h"

namespace tunedeck {

QString expiryNote(const AssistantLink& link, const QDateTime& now) {
    const auto expiry = link.expires();
    if (!expiry || *expiry <= now) {
        return {};
    }
    const qint64 milliseconds = now.msecsTo(*expiry);
    const qint64 minutes = (milliseconds + 59'999) / 60'000;
    return minutes > 1 ? QStringLiteral("Expires in %1 min").arg(minutes) : QStringLiteral("Expires in under a minute");
}

TelegramPairingView telegramPairing(const AssistantLink& link, bool busy, const QDateTime& now) {
    TelegramPairingView block{.shown = !link.isConnected(), .busy = busy};
    if (!block.shown) {
        return block;
    }
    block.newCodeButton = QStringLiteral("New Code");
    block.newCodeHelp = block.newCodeDescription = busy ? QStringLiteral("Another link is being changed.") : QString();
    block.startUrl = link.url.value_or(QString());
    if (block.startUrl.isEmpty()) {
        block.text = QStringLiteral("Paired from another Mac or before a reinstall.");
        return block;
    }
    block.qrName = QStringLiteral("QR code to pair Telegram");
    block.expired = link.pairingExpired(now);
    if (block.expired) {
        block.text = QStringLiteral("This code has expired.");
        block.newCodeButton = QStringLiteral("Get a New Code");
        return block;
    }
    block.text = QStringLiteral("Scan with your phone's camera, then tap Start in Telegram.");
    block.openButton = QStringLiteral("Open Telegram");
    block.openHelp = block.openDescription = QStringLiteral("Opens the Tunedeck bot in Telegram on this Mac");
    block.expiryNote = expiryNote(link, now);
    return block;
}

} // namespace tunedeck
