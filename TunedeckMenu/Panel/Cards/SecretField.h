#pragma once

#include <QObject>
#include <QString>

namespace tunedeck {

/// A value that can be copied: an assistant's URL or key.
struct SecretFieldView {
    Q_GADGET
    Q_PROPERTY(QString label MEMBER label)
    Q_PROPERTY(QString shownValue MEMBER shownValue)
    Q_PROPERTY(QString key MEMBER key)
    Q_PROPERTY(QString help MEMBER help)
    Q_PROPERTY(QString description MEMBER description)
    Q_PROPERTY(QString button MEMBER button)
    Q_PROPERTY(QString buttonSymbol MEMBER buttonSymbol)
public:
    QString label;      ///< "URL", "Key"; empty for the single URL of a ChatGPT or Claude link
    QString shownValue; ///< masked while secrets are hidden
    QString key;        ///< what the model copies it under
    QString help;
    QString description; ///< the help, and what tells the button from its equals
    QString button;      ///< "Copy" or "Copied"
    QString buttonSymbol;
    bool operator==(const SecretFieldView&) const = default;
};

/// A private URL that can be copied under `key`. `copied`: it was, a moment ago.
SecretFieldView privateUrlField(const QString& key, const QString& shown, bool copied);
/// What a Shortcut is built with: its "URL" or its "Key"; otherwise as privateUrlField.
SecretFieldView shortcutField(const QString& label, const QString& key, const QString& shown, bool copied);

} // namespace tunedeck
