#include "TunedeckCore/Service/AssistantLink.h"

#include "TunedeckCore/Support/Text/Time.h"

#include <unicode/locid.h>
#include <unicode/unistr.h>

namespace tunedeck {

using namespace Qt::StringLiterals;

namespace {

/// Title case.
QString titleCase(const QString& text) {
    icu::UnicodeString words(reinterpret_cast<const char16_t*>(text.utf16()), static_cast<int32_t>(text.size()));
    words.toTitle(nullptr, icu::Locale::getEnglish());
    return QString(reinterpret_cast<const QChar*>(words.getBuffer()), words.length());
}

} // namespace

std::optional<Assistant> AssistantLink::assistant() const {
    return assistantFromRawValue(kind);
}

bool AssistantLink::isConnected() const {
    return assistant() == Assistant::telegram ? paired == true : lastUsedAt.has_value();
}

std::optional<QDateTime> AssistantLink::lastUsed() const {
    return parseTimestamp(lastUsedAt);
}

std::optional<QDateTime> AssistantLink::expires() const {
    return parseTimestamp(expiresAt);
}

QString AssistantLink::displayName() const {
    const auto known = assistant();
    if (known == Assistant::telegram && isConnected() && telegramUsername && !telegramUsername->isEmpty()) {
        return u"Telegram (@%1)"_s.arg(*telegramUsername);
    }
    if (label) {
        return *label;
    }
    return known ? info(*known).name : titleCase(kind);
}

bool AssistantLink::pairingExpired(const QDateTime& now) const {
    const auto end = expires();
    return assistant() == Assistant::telegram && !isConnected() && end && *end <= now;
}

} // namespace tunedeck
