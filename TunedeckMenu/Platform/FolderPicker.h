#pragma once

#include <QString>

#include <functional>
#include <optional>

namespace tunedeck {

/// Asks the user for a folder.
class FolderPicker {
public:
    virtual ~FolderPicker() = default;
    /// Shows a folder picker that starts at `start`; `prompt` is the label of its confirming button. Calls `done` once,
    /// with the chosen path or, when the user cancels, nothing. While a picker is open, brings that one to the front
    /// instead, and drops `done`.
    virtual void choose(const QString& title, const QString& prompt, const QString& start,
                        std::function<void(std::optional<QString>)> done) = 0;
};

} // namespace tunedeck
