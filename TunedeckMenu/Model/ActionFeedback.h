#pragma once

#include <QString>

#include <optional>

namespace tunedeck {

/// Where an action reports its outcome: the panel, or the first-run window.
class ActionFeedback {
public:
    virtual ~ActionFeedback() = default;
    /// Shows an error instead of the current error or note.
    virtual void showError(QString error) = 0;
    /// Shows a note instead of the current error or note.
    virtual void showNote(QString note) = 0;
    virtual void clearError() = 0;
    /// Marks the value with that key as copied, and no other.
    virtual void setCopied(std::optional<QString> key) = 0;
};

} // namespace tunedeck
