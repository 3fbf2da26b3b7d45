#pragma once

#include <QString>

#include <expected>

namespace tunedeck {

/// Starts the application when the user logs in.
class LoginItem {
public:
    virtual ~LoginItem() = default;
    [[nodiscard]] virtual bool isEnabled() const = 0;
    /// Fails with the system's description of the error.
    virtual std::expected<void, QString> setEnabled(bool enabled) = 0;
};

} // namespace tunedeck
