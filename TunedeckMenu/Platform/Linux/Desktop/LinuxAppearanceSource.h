#pragma once

#include "TunedeckMenu/Platform/AppearanceSource.h"

#include <QDBusMessage>
#include <QDBusServiceWatcher>
#include <QVariant>

#include <memory>
#include <optional>

namespace tunedeck {

class SessionBus;

/// The appearance by the desktop portal's settings; what the portal doesn't say, or where there is none, by the
/// palette. The portal is asked at the first need, without waiting: until it answers the palette counts.
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
    /// What the portal said.
    struct Settings {
        std::optional<bool> dark;
        bool preferredReduced = false; ///< the desktop-neutral setting
        bool animationsOff = false;    ///< GNOME's
        bool noDuration = false;       ///< KDE's
    };

    void follow();
    void ask();
    void take(const QString& group, const QString& key, const QVariant& value);
    void tellChange();

    SessionBus& m_bus;
    std::unique_ptr<QDBusServiceWatcher> m_watcher;
    Settings m_settings;
    Appearance m_told;
};

} // namespace tunedeck
