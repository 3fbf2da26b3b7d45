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

using namespace Qt::StringLiterals;

namespace {

/// Escapes the characters that would mark a mnemonic. In a menu that a host draws the mark is "_"; Qt replaces by it
/// the first "&" and no other.
QString escapedLabel(QString text, TrayWatch::Tray kind) {
    if (kind == TrayWatch::Tray::XEmbed) {
        return text.replace(u'&', u"&&"_s);
    }
    text.replace(u'_', u"__"_s);
    const auto first = text.indexOf(u'&');
    return first < 0 ? text : text.insert(first, u'&');
}

} // namespace

LinuxStatusItem::LinuxStatusItem(SessionBus& bus, AppearanceSource& appearance, QObject* parent)
    : m_appearance(appearance), m_trays(bus) {
    setParent(parent);
    m_check.setSingleShot(true);
    m_check.setInterval(0);
    connect(&m_check, &QTimer::timeout, this, &LinuxStatusItem::check);
    connect(&m_trays, &TrayWatch::changed, this, &LinuxStatusItem::trayChanged);
    connect(&m_trays, &TrayWatch::xembedChanged, this, &LinuxStatusItem::checkSoon);
    connect(&m_trays, &TrayWatch::watcherReplaced, this, [this] {
        if (m_kind == TrayWatch::Tray::StatusNotifier) {
            m_icon.reset();
            create(m_kind); // registers with the new watcher
        }
    });
    connect(&bus, &SessionBus::reconnected, this, [this] {
        if (m_kind == TrayWatch::Tray::StatusNotifier) {
            m_icon.reset(); // its connection is lost
            // Qt never closes the connection of a tray icon, named after the icon, when it was lost before the icon.
            QDBusConnection::disconnectFromBus(
                u"org.kde.StatusNotifierItem-%1-%2"_s.arg(QCoreApplication::applicationPid()).arg(m_iconsMade));
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
    if (!m_icon && tray != TrayWatch::Tray::None) {
        create(m_kind == TrayWatch::Tray::None ? tray : m_kind);
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
    if (m_kind == TrayWatch::Tray::StatusNotifier) {
        m_icon->setContextMenu(menu()); // the host shows it, and may request it at once
    }
    m_icon->show();
}

void LinuxStatusItem::setSymbol(const QString& symbol, const QString& toolTip) {
    if (symbol != m_symbol) {
        m_symbol = symbol;
        draw();
    }
    if (toolTip != m_toolTip) {
        m_toolTip = toolTip;
        if (m_icon) {
            m_icon->setToolTip(m_toolTip);
        }
        if (m_dock) {
            m_dock->setAccessibleDescription(m_toolTip);
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
    if (m_kind == TrayWatch::Tray::XEmbed) {
        light = wantsLightSymbols(TrayWatch::xembedWindow()).value_or(light);
    } else if (qEnvironmentVariable("XDG_CURRENT_DESKTOP").split(u':').contains(u"GNOME"_s)) {
        light = true; // its top bar is always black
    }
    return light ? GlyphTone::Light : GlyphTone::Dark;
}

void LinuxStatusItem::onActivated(QSystemTrayIcon::ActivationReason reason) {
    // Ignore DoubleClick: its second press would close what the first has opened.
    if (reason == QSystemTrayIcon::Trigger) {
        Q_EMIT activated();
    } else if (reason == QSystemTrayIcon::Context && !m_icon->contextMenu()) {
        menu()->popup(QCursor::pos());
    }
}

QMenu* LinuxStatusItem::menu() {
    if (!m_menu) {
        m_menu = std::make_unique<QMenu>();
        connect(m_menu.get(), &QMenu::aboutToShow, this, &LinuxStatusItem::menuOpening);
        for (const auto& entry : m_entries) {
            auto* action = m_menu->addAction(QString());
            action->setSeparator(entry.kind == TrayMenuEntry::Kind::Separator);
            connect(action, &QAction::triggered, this, [this, kind = entry.kind] { Q_EMIT selected(kind); });
        }
        fillMenu();
    }
    return m_menu.get();
}

void LinuxStatusItem::setMenu(const TrayMenu& menu) {
    if (menu != m_entries) {
        m_entries = menu;
        if (m_menu) {
            fillMenu();
        }
    }
}

void LinuxStatusItem::fillMenu() {
    const auto actions = m_menu->actions();
    for (qsizetype i = 0; i < actions.size(); ++i) {
        const auto& entry = m_entries[i];
        actions[i]->setText(escapedLabel(entry.text, m_kind));
        actions[i]->setEnabled(entry.enabled);
        actions[i]->setVisible(entry.isShown());
    }
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
    if (m_kind == TrayWatch::Tray::XEmbed && !m_dock) {
        const auto widgets = QApplication::topLevelWidgets();
        const auto dock = std::ranges::find_if(widgets, [](QWidget* w) { return w->inherits("QSystemTrayIconSys"); });
        if (dock != widgets.end()) {
            m_dock = *dock;
            m_dock->setAccessibleName(u"Tunedeck"_s);
            m_dock->setAccessibleDescription(m_toolTip);
            m_dock->installEventFilter(this);
        }
    }
    const bool isNowAvailable = isAvailable();
    if (isNowAvailable != m_wasAvailable) {
        m_wasAvailable = isNowAvailable;
        draw(); // another tray may have another colour
        Q_EMIT availabilityChanged();
    }
}

bool LinuxStatusItem::isAvailable() const {
    return m_kind == TrayWatch::Tray::XEmbed ? isDocked() : m_icon && m_trays.tray() == TrayWatch::Tray::StatusNotifier;
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
    return MenuBarPlacement::measured(*rectangle, screen->geometry());
}

} // namespace tunedeck
