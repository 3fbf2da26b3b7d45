#pragma once

#include <QString>

#include <expected>

namespace tunedeck {

/// Whether the application is started when the user logs in.
class LoginItem {
public:
    virtual ~LoginItem() = default;
    [[nodiscard]] virtual bool isEnabled() const = 0;
    /// Failures are the platform's description.
    virtual std::expected<void, QString> setEnabled(bool enabled) = 0;
};

} // namespace tunedeck
