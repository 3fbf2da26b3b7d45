#pragma once

#include "TunedeckCore/Service/Assistants.h"
#include "TunedeckCore/Support/Json/Members.h"

#include <QDateTime>
#include <QString>

#include <optional>

namespace tunedeck {

/// A connection between the user's library and an assistant. JSON uses the same member names (json::Keys::AsWritten).
struct AssistantLink {
    QString id;
    QString kind; ///< an assistant's raw value; unknown ones are kept
    std::optional<QString> label;
    std::optional<QString> createdAt;
    std::optional<QString> lastUsedAt;
    std::optional<QString> url; ///< private; absent if the link was created on another computer
    std::optional<QString> apiUrl;
    std::optional<QString> token;
    std::optional<bool> paired;
    std::optional<QString> telegramUsername;
    std::optional<QString> expiresAt;

    [[nodiscard]] std::optional<Assistant> assistant() const;
    /// Telegram: paired; other kinds: used at least once.
    [[nodiscard]] bool isConnected() const;
    [[nodiscard]] std::optional<QDateTime> lastUsed() const;
    [[nodiscard]] std::optional<QDateTime> expires() const;
    [[nodiscard]] QString displayName() const;
    /// Whether the code of an unpaired Telegram link has expired.
    [[nodiscard]] bool pairingExpired(const QDateTime& now) const;
    bool operator==(const AssistantLink&) const = default;

    static constexpr auto members =
        json::members<&AssistantLink::id, &AssistantLink::kind, &AssistantLink::label, &AssistantLink::createdAt,
                      &AssistantLink::lastUsedAt, &AssistantLink::url, &AssistantLink::apiUrl, &AssistantLink::token,
                      &AssistantLink::paired, &AssistantLink::telegramUsername, &AssistantLink::expiresAt>;
};

} // namespace tunedeck
