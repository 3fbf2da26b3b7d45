#pragma once

#include "TunedeckMenu/Platform/AppearanceSource.h"

#include <QDBusMessage>
#include <QDBusServiceWatcher>
#include <QVariant>

#include <memory>
#include <optional>

namespace tunedeck {

class SessionBus;

/// Reads the appearance from the desktop portal's settings. Until the portal replies, and for what it doesn't report,
/// the palette decides.
class LinuxAppearanceSource final : public AppearanceSource {
    Q_OBJECT
public:
    explicit LinuxAppearanceSource(SessionBus& bus, QObject* parent = nullptr);
    ~LinuxAppearanceSource() override;

    [[nodiscard]] Appearance current() const override;

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private Q_SLOTS:
    void onSettingChanged(const QDBusMessage& message);

private:
    /// As reported by the portal.
    struct Settings {
        std::optional<bool> dark;
        bool reducedMotion = false; ///< the setting of all desktops
        bool moreContrast = false;
        bool animationsOff = false; ///< GNOME's setting
        bool noDuration = false;    ///< KDE's setting
    };

    void subscribe();
    void requestSettings();
    void apply(const QString& group, const QString& key, const QVariant& value);
    void notifyIfChanged();

    SessionBus& m_bus;
    std::unique_ptr<QDBusServiceWatcher> m_watcher;
    Settings m_settings;
    Appearance m_notified;
};

} // namespace tunedeck
