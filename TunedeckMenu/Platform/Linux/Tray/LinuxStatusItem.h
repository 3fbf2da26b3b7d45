#pragma once

#include "TunedeckMenu/Platform/Linux/Tray/TrayGlyph.h"
#include "TunedeckMenu/Platform/Linux/Tray/TrayWatch.h"
#include "TunedeckMenu/Platform/StatusItem.h"

#include <QMenu>
#include <QPointer>
#include <QSystemTrayIcon>
#include <QTimer>
#include <QWidget>

#include <memory>

namespace tunedeck {

class AppearanceSource;
class SessionBus;

/// The icon in the desktop's tray: StatusNotifierItem where a host of it is registered, else an X11 tray.
///
/// Which of the two is settled with the first tray that shows up, for the life of the process; a tray of that kind that
/// goes and comes back gets the icon again.
class LinuxStatusItem final : public StatusItem {
    Q_OBJECT
public:
    LinuxStatusItem(SessionBus& bus, AppearanceSource& appearance, QObject* parent = nullptr);
    ~LinuxStatusItem() override;

    void install() override;
    [[nodiscard]] bool isAvailable() const override;
    void setSymbol(const QString& symbol, const QString& toolTip) override;
    [[nodiscard]] std::optional<QRect> geometry() const override;
    [[nodiscard]] std::optional<MenuBarPlacement> placement() const override;

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void trayChanged();
    void create(TrayWatch::Tray kind);
    void draw();
    void onActivated(QSystemTrayIcon::ActivationReason reason);
    QMenu* menu();
    void checkSoon();
    void check();
    [[nodiscard]] bool isDocked() const;
    [[nodiscard]] GlyphTone tone() const;

    AppearanceSource& m_appearance;
    TrayWatch m_trays;
    TrayWatch::Tray m_kind = TrayWatch::Tray::none;
    std::unique_ptr<QMenu> m_menu;
    std::unique_ptr<QSystemTrayIcon> m_icon;
    QPointer<QWidget> m_dock; ///< the widget that Qt docks in an X11 tray
    QTimer m_check;
    int m_iconsMade = 0;
    QString m_symbol;
    QString m_toolTip;
    QString m_drawnSymbol;
    GlyphTone m_drawnTone = GlyphTone::dark;
    bool m_wasAvailable = false; ///< as it was last told
};

} // namespace tunedeck
