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

/// An icon in a StatusNotifierItem host, else in an X11 tray. The first tray that is found decides which, for the life
/// of the process. When a tray of that kind restarts, it gets the icon again.
class LinuxStatusItem final : public StatusItem {
    Q_OBJECT
public:
    LinuxStatusItem(SessionBus& bus, AppearanceSource& appearance, QObject* parent = nullptr);
    ~LinuxStatusItem() override;

    void install() override;
    [[nodiscard]] bool isAvailable() const override;
    [[nodiscard]] bool needsTray() const override { return true; }
    void setSymbol(const QString& symbol, const QString& toolTip) override;
    void setMenu(const TrayMenu& menu) override;
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
    void fillMenu();
    void checkSoon();
    void check();
    [[nodiscard]] bool isDocked() const;
    [[nodiscard]] GlyphTone tone() const;

    AppearanceSource& m_appearance;
    TrayWatch m_trays;
    TrayWatch::Tray m_kind = TrayWatch::Tray::None;
    TrayMenu m_entries;
    std::unique_ptr<QMenu> m_menu; ///< made when the icon needs it
    std::unique_ptr<QSystemTrayIcon> m_icon;
    QPointer<QWidget> m_dock; ///< Qt's widget in an X11 tray
    QTimer m_check;
    int m_iconsMade = 0;
    QString m_symbol;
    QString m_toolTip;
    QString m_drawnSymbol;
    GlyphTone m_drawnTone = GlyphTone::Dark;
    bool m_wasAvailable = false; ///< as last notified
};

} // namespace tunedeck
