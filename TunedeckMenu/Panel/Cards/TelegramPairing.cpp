#include "TunedeckMenu/Panel/Cards/TelegramPairing.h"

using namespace Qt::StringLiterals;

namespace tunedeck {

namespace {

/// "Expires in 5 min"; empty when the code has expired or has no expiry time.
QString expiryNote(const AssistantLink& link, const QDateTime& now) {
    const auto expiry = link.expires();
    if (!expiry || *expiry <= now) {
        return {};
    }
    const qint64 minutes = (now.msecsTo(*expiry) + 59'999) / 60'000;
    return minutes > 1 ? u"Expires in %1 min"_s.arg(minutes) : u"Expires in under a minute"_s;
}

} // namespace

TelegramPairingView telegramPairing(const AssistantLink& link, bool busy, const QDateTime& now) {
    TelegramPairingView block{.shown = !link.isConnected(), .busy = busy};
    if (!block.shown) {
        return block;
    }
    block.startUrl = link.url.value_or(QString());
    block.expired = !block.startUrl.isEmpty() && link.pairingExpired(now);
    block.newCodeButton = block.newCodeName = block.expired ? u"Get a New Code"_s : u"New Code"_s;
    block.newCodeHelp = busy ? u"Another link is being changed."_s : QString();
    if (block.startUrl.isEmpty()) {
        block.text = u"Paired from another Mac or before a reinstall."_s;
        return block;
    }
    block.qrName = u"QR code to pair Telegram"_s;
    if (block.expired) {
        block.text = u"This code has expired."_s;
        return block;
    }
    block.text = u"Scan with your phone's camera, then tap Start in Telegram."_s;
    block.openButton = block.openName = u"Open Telegram"_s;
    block.openHelp = u"Opens the Tunedeck bot in Telegram on this Mac"_s;
    block.expiryNote = expiryNote(link, now);
    return block;
}

} // namespace tunedeck
