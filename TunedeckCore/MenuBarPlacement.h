#pragma once

#include <QDateTime>
#include <QRectF>
#include <QString>

#include <expected>
#include <optional>

namespace tunedeck {

/// Whether the user can see the menu-bar icon.
struct MenuBarIconVisibility {
    enum class Kind { hidden, unknown, visible };

    Kind kind = Kind::unknown; ///< unknown before the first measurement
    QString reason = {};       ///< why it is hidden, for the user

    static MenuBarIconVisibility hidden(QString reason) { return {Kind::hidden, std::move(reason)}; }
    static MenuBarIconVisibility visible() { return {Kind::visible, {}}; }

    /// "visible", "unknown" or "hidden: " and the reason.
    [[nodiscard]] QString description() const;
    bool operator==(const MenuBarIconVisibility&) const = default;
};

/// The measured position of the icon, in points of its screen.
struct MenuBarPlacement {
    double itemMinX = 0;
    double itemWidth = 0;
    double screenWidth = 0;
    std::optional<double> leftAreaWidth;  ///< left of the notch; absent without one
    std::optional<double> rightAreaWidth; ///< right of the notch; absent without one
    bool occluded = false;
    bool userHidden = false;

    /// Measures an item's frame in the frame of its screen. The last two are the parts of that screen beside its notch,
    /// empty without one. All are in points from the same, arbitrary origin.
    static MenuBarPlacement measured(const QRectF& item, const QRectF& screen, const QRectF& leftOfNotch = {},
                                     const QRectF& rightOfNotch = {});

    [[nodiscard]] bool underNotch() const;
    [[nodiscard]] bool offScreen() const;
    [[nodiscard]] MenuBarIconVisibility visibility() const;
    /// Writes the measurement as JSON, atomically, and creates the folder. Errors are described by the platform.
    [[nodiscard]] std::expected<void, QString> write(const QString& path, const QDateTime& now) const;
    bool operator==(const MenuBarPlacement&) const = default;
};

} // namespace tunedeck
