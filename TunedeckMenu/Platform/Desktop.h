#pragma once

#include "TunedeckMenu/Panel/PanelModule.h"

#include <QObject>
#include <QString>

#include <functional>
#include <optional>

namespace tunedeck {

/// The clipboard; what is put there outlives the panel.
class Pasteboard {
public:
    virtual ~Pasteboard() = default;
    virtual void setText(const QString& text) = 0;
};

/// Asks the user for a folder.
class FolderPicker {
public:
    virtual ~FolderPicker() = default;
    /// Shows a picker of folders with that title and confirming button, opened at `start`; `done` is called once, with
    /// the chosen path or nothing.
    virtual void choose(const QString& title, const QString& prompt, const QString& start,
                        std::function<void(std::optional<QString>)> done) = 0;
};

/// Follows the desktop's appearance (light and dark, reduce motion).
class AppearanceSource : public QObject {
    Q_OBJECT
public:
    using QObject::QObject;
    [[nodiscard]] virtual Appearance current() const = 0;

Q_SIGNALS:
    void changed();
};

} // namespace tunedeck
