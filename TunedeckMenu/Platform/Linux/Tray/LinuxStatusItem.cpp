#include "TunedeckMenu/Platform/Linux/Tray/LinuxStatusItem.h"

#include "TunedeckMenu/Platform/AppearanceSource.h"
#include "TunedeckMenu/Platform/Linux/Desktop/SessionBus.h"
#include "TunedeckMenu/Platform/Linux/Tray/X11Window.h"

#include <QApplication>
#include <QCursor>
#include <QDBusConnection>
#include <QEvent>
#include <QScreen>

#include <algorithm>

namespace tunedeck {

LinuxStatusItem::LinuxStatusItem(SessionBus& bus, AppearanceSource& appearance, QObject* parent)
    : m_appearance(appearance), m_trays(bus) {
    setParent(parent);
    m_check.setSingleShot(true);
    m_check.setInterval(0);
    connect(&m_check, &QTimer::timeout, this, &LinuxStatusItem::check);
    connect(&m_trays, &TrayWatch::changed, this, &LinuxStatusItem::trayChanged);
    connect(&m_trays, &TrayWatch::xembedChanged, this, &LinuxStatusItem::checkSoon);
    connect(&bus, &SessionBus::reconnected, this, [this] {
        if (m_kind == TrayWatch::Tray::statusNotifier) {
            m_icon.reset(); // it spoke on a connection that is gone
            // Qt keeps a tray icon's connection for good when it has died before the icon; it is named after the icon.
            QDBusConnection::disconnectFromBus(QStringLiteral("org.kde.StatusNotifierItem-%1-%2")
                                                   .arg(QCoreApplication::applicationPid())
                                                   .arg(m_iconsMade));
        }
    });
}

LinuxStatusItem::~LinuxStatusItem() {
    if (m_dock) {
        m_dock->removeEventFilter(this);
    }
}

void LinuxStatusItem::install() {
    connect(&m_appearance, &AppearanceSource::changed, this, &LinuxStatusItem::draw);
    m_trays.start();
}

void LinuxStatusItem::trayChanged() {
    const auto tray = m_trays.tray();
    if (!m_icon && tray != TrayWatch::Tray::none) {
        create(m_kind == TrayWatch::Tray::none ? tray : m_kind);
    }
    check();
}

void LinuxStatusItem::create(TrayWatch::Tray kind) {
    m_kind = kind;
    m_icon = std::make_unique<QSystemTrayIcon>();
    ++m_iconsMade;
    connect(m_icon.get(), &QSystemTrayIcon::activated, this, &LinuxStatusItem::onActivated);
    m_drawnSymbol.clear();
    draw();
    m_icon->setToolTip(m_toolTip);
    if (m_kind == TrayWatch::Tray::statusNotifier) {
        m_icon->setContextMenu(menu()); // the host shows it, so it has to be there before it is asked for
    }
    m_icon->show();
}

void LinuxStatusItem::setSymbol(const QString& symbol, const QString& toolTip) {
    m_symbol = symbol;
    draw();
    if (toolTip != m_toolTip) {
        m_toolTip = toolTip;
        if (m_icon) {
            m_icon->setToolTip(m_toolTip);
        }
    }
}

void LinuxStatusItem::draw() {
    if (!m_icon || m_symbol.isEmpty()) {
        return;
    }
    const auto wanted = tone();
    if (m_symbol != m_drawnSymbol || wanted != m_drawnTone) {
        m_drawnSymbol = m_symbol;
        m_drawnTone = wanted;
        m_icon->setIcon(trayGlyph(m_symbol, wanted));
    }
}

GlyphTone LinuxStatusItem::tone() const {
    bool light = m_appearance.current().dark;
    if (m_kind == TrayWatch::Tray::xembed) {
        light = wantsLightSymbols(TrayWatch::xembedWindow()).value_or(light);
    } else if (qEnvironmentVariable("XDG_CURRENT_DESKTOP").split(u':').contains(QStringLiteral("GNOME"))) {
        light = true; // its bar is black in either appearance
    }
    return light ? GlyphTone::light : GlyphTone::dark;
}

void LinuxStatusItem::onActivated(QSystemTrayIcon::ActivationReason reason) {
    // The second press of a double click is none: it would close what the first has opened.
    if (reason == QSystemTrayIcon::Trigger) {
        Q_EMIT activated();
    } else if (reason == QSystemTrayIcon::Context && !m_icon->contextMenu()) {
        menu()->popup(QCursor::pos());
    }
}

QMenu* LinuxStatusItem::menu() {
    if (!m_menu) {
        m_menu = std::make_unique<QMenu>();
        connect(m_menu->addAction(QStringLiteral("Open Tunedeck")), &QAction::triggered, this,
                &LinuxStatusItem::openRequested);
        connect(m_menu->addAction(QStringLiteral("Quit Tunedeck")), &QAction::triggered, this,
                &LinuxStatusItem::quitRequested);
    }
    return m_menu.get();
}

bool LinuxStatusItem::eventFilter(QObject* watched, QEvent* event) {
    switch (event->type()) {
    case QEvent::Show:
    case QEvent::Hide:
    case QEvent::Paint:
    case QEvent::Move:
    case QEvent::Resize:
        if (watched == m_dock && !(m_wasAvailable && event->type() == QEvent::Paint)) {
            checkSoon();
        }
        break;
    default:
        break;
    }
    return StatusItem::eventFilter(watched, event);
}

void LinuxStatusItem::checkSoon() {
    m_check.start();
}

void LinuxStatusItem::check() {
    if (m_kind == TrayWatch::Tray::xembed && !m_dock) {
        const auto widgets = QApplication::topLevelWidgets();
        const auto dock = std::ranges::find_if(widgets, [](QWidget* w) { return w->inherits("QSystemTrayIconSys"); });
        if (dock != widgets.end()) {
            m_dock = *dock;
            m_dock->setAccessibleName(QStringLiteral("Tunedeck"));
            m_dock->installEventFilter(this);
            draw(); // another tray may have another colour
        }
    }
    const bool isNowAvailable = isAvailable();
    if (isNowAvailable != m_wasAvailable) {
        m_wasAvailable = isNowAvailable;
        Q_EMIT availabilityChanged();
    }
}

bool LinuxStatusItem::isAvailable() const {
    return m_kind == TrayWatch::Tray::xembed ? isDocked() : m_icon && m_trays.tray() == TrayWatch::Tray::statusNotifier;
}

bool LinuxStatusItem::isDocked() const {
    return m_dock && m_dock->testAttribute(Qt::WA_WState_Created) &&
           isShownBy(static_cast<quint32>(m_dock->internalWinId()), TrayWatch::xembedWindow());
}

std::optional<QRect> LinuxStatusItem::geometry() const {
    const auto rectangle = m_icon && isAvailable() ? m_icon->geometry() : QRect();
    return rectangle.isEmpty() ? std::nullopt : std::optional(rectangle);
}

std::optional<MenuBarPlacement> LinuxStatusItem::placement() const {
    const auto rectangle = geometry();
    const auto* screen = rectangle ? QGuiApplication::screenAt(rectangle->center()) : nullptr;
    if (!screen) {
        screen = QGuiApplication::primaryScreen();
    }
    if (!rectangle || !screen) {
        return std::nullopt;
    }
    return MenuBarPlacement{.itemMinX = static_cast<double>(rectangle->x() - screen->geometry().x()),
                            .itemWidth = static_cast<double>(rectangle->width()),
                            .screenWidth = static_cast<double>(screen->geometry().width())};
}

} // namespace tunedeck
