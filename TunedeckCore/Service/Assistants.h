#pragma once

#include <QString>
#include <QStringList>
#include <QUrl>

#include <array>
#include <optional>

namespace tunedeck {

/// A kind of assistant connection, in the order in which they are listed.
enum class Assistant { chatgpt, claude, telegram, iphone };

/// All kinds in order.
inline constexpr std::array allAssistants{Assistant::chatgpt, Assistant::claude, Assistant::telegram,
                                          Assistant::iphone};

/// What is known of a kind of assistant.
struct AssistantInfo {
    QString rawValue;       ///< "chatgpt", "claude", "telegram", "shortcut": its identity
    QString name;           ///< display name
    QString cost;           ///< plan, "Free" or "Paid plan"
    QString systemImage;    ///< symbol name
    QString guide;          ///< last component of its guide's path
    QString example;        ///< a request to try
    QStringList setupSteps; ///< sentences
};

/// What is known of an assistant.
const AssistantInfo& info(Assistant assistant);

/// The kind with exactly that raw value.
std::optional<Assistant> assistantFromRawValue(const QString& rawValue);

/// Its setup guide on the product's web endpoint.
QUrl guideURL(Assistant assistant);

} // namespace tunedeck
