#pragma once

#include <QString>

#include <utility>

namespace tunedeck {

/// What the application remembers for itself, in an INI file. Each call reads the file, which is ignored and not
/// replaced if it isn't a readable document.
class UserDefaults {
public:
    explicit UserDefaults(QString path = standardPath()) : m_path(std::move(path)) {}

    /// `~/.config/Brightfold/Tunedeck.conf`, with the names that main() sets.
    static QString standardPath();

    /// Empty if the key isn't there.
    [[nodiscard]] QString value(const QString& key) const;
    /// Logs a failure.
    void setValue(const QString& key, const QString& value) const;

private:
    QString m_path;
};

} // namespace tunedeck
