#pragma once

#include <QString>
#include <QStringList>
#include <QUrl>

#include <array>
#include <optional>

namespace tunedeck {

/// The kinds of assistants, in display order.
enum class Assistant { chatgpt, claude, telegram, iphone };

inline constexpr std::array allAssistants{Assistant::chatgpt, Assistant::claude, Assistant::telegram,
                                          Assistant::iphone};

struct AssistantInfo {
    QString rawValue;       ///< "chatgpt", "claude", "telegram" or "shortcut", as the service spells it
    QString name;           ///< display name
    QString cost;           ///< "Free" or "Paid plan"
    QString systemImage;    ///< symbol name
    QString guide;          ///< last component of the guide's path
    QString example;        ///< a request to try
    QStringList setupSteps; ///< sentences
};

const AssistantInfo& info(Assistant assistant);

std::optional<Assistant> assistantFromRawValue(const QString& rawValue);

/// The setup guide on the product's website.
QUrl guideURL(Assistant assistant);

} // namespace tunedeck
