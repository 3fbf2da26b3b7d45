#include "TunedeckMenu/Views/Edge/QuickViews.h"

#include "TunedeckMenu/Views/Edge/PopoverPlace.h"
#include "TunedeckMenu/Views/Items/Pressable.h"

#include <QCursor>
#include <QFileInfo>
#include <QGuiApplication>
#include <QMouseEvent>
#include <QQmlComponent>
#include <QScreen>
#include <QtMath>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace tunedeck {

namespace {

QSize wantedSize(const QQuickWindow& window) {
    const auto points = [&](const char* wanted) { return qCeil(window.property(wanted).toDouble()); };
    return {points("wantedWidth"), steadyHeight(points("wantedHeight"), window.effectiveDevicePixelRatio())};
}

bool seen(const QQuickWindow* window) {
    return window != nullptr && window->isVisible() && window->visibility() != QWindow::Minimized;
}

/// The application's mark, for the desktop's lists of windows.
QIcon appIcon() {
    QIcon icon;
    for (const int size : {16, 32, 48, 64, 128}) {
        const QString file = u"%1/../Resources/tunedeck-%2.png"_s.arg(QCoreApplication::applicationDirPath()).arg(size);
        if (QFileInfo::exists(file)) {
            icon.addFile(file, {size, size});
        }
    }
    return icon;
}

void centre(QQuickWindow& window) {
    if (const QScreen* screen = window.screen()) {
        QRect place(QPoint(), window.size());
        place.moveCenter(screen->availableGeometry().center());
        window.setPosition(place.topLeft());
    }
}

void bringToFront(QQuickWindow& window) {
    if (window.visibility() == QWindow::Minimized) {
        window.showNormal();
    } else {
        window.show();
    }
    window.raise();
    window.requestActivate();
}

} // namespace

QuickViews::QuickViews(PanelHost& host, const Appearance& appearance)
    : m_host(host)
    , m_surroundings(*new Surroundings(m_engine))
    , m_panelAdapter(*new PanelAdapter(host.actions(), m_engine))
    , m_onboardingAdapter(*new OnboardingAdapter(m_engine))
    , m_icon(appIcon()) {
    m_engine.addImportPath(u"qrc:/tunedeck/qml"_s);
    static const bool once = [] {
        QQuickWindow::setGraphicsApi(QSGRendererInterface::Software);
        QQuickWindow::setTextRenderType(QQuickWindow::NativeTextRendering);
        Pressable::installAccessibility();
        return true;
    }();
    Q_UNUSED(once)
    m_surroundings.setAppearance(appearance);
    m_surroundings.setFileIcons([this](const QString& path) { return m_host.fileIcon(path); });

    m_grabIfUnfocused.setSingleShot(true);
    m_grabIfUnfocused.setInterval(400);
    connect(&m_grabIfUnfocused, &QTimer::timeout, this, [this] {
        // The desktop gave us no keyboard, so it won't tell when the user turns elsewhere: watch the pointer instead.
        if (isPopoverShown() && !m_popover->isActive()) {
            m_popover->setMouseGrabEnabled(true);
        }
    });
    // A window manager may take the keyboard away and give it back while it puts a new window on the screen.
    m_dismissIfUnfocused.setSingleShot(true);
    m_dismissIfUnfocused.setInterval(120);
    connect(&m_dismissIfUnfocused, &QTimer::timeout, this, [this] {
        if (isPopoverShown() && !m_popover->isActive() && QGuiApplication::modalWindow() == nullptr) {
            dismissPopover();
        }
    });
    m_resize.setSingleShot(true);
    m_resize.setInterval(40);
    connect(&m_resize, &QTimer::timeout, this, &QuickViews::sizeWindow);
}

QuickViews::~QuickViews() = default;

std::unique_ptr<QQuickWindow> QuickViews::make(const QString& file, const QVariantMap& properties) {
    QQmlComponent component(&m_engine, QUrl(u"qrc:/tunedeck/qml/Tunedeck/Views/"_s + file));
    if (component.isError()) {
        qFatal("%s", qPrintable(component.errorString()));
    }
    std::unique_ptr<QObject> object(component.createWithInitialProperties(properties));
    auto* const window = qobject_cast<QQuickWindow*>(object.get());
    if (window == nullptr) {
        qFatal("%s", qPrintable(component.errorString()));
    }
    object.release();
    window->setIcon(m_icon);
    return std::unique_ptr<QQuickWindow>(window);
}

void QuickViews::followPresence(QQuickWindow& window) {
    // Said once for each coming and each going, whatever the desktop reports in between.
    connect(&window, &QWindow::visibilityChanged, this, [this, &window, present = false]() mutable {
        if (seen(&window) != present) {
            present = !present;
            present ? m_host.actions().panelAppeared() : m_host.actions().panelDisappeared();
        }
    });
}

void QuickViews::showPopover(const QRect& anchor) {
    // The click on the icon that has just closed the panel doesn't open it again.
    constexpr int oneClick = 300;
    const bool sameClick = m_dismissed.isValid() && m_dismissed.elapsed() < oneClick &&
                           (anchor.isEmpty() || anchor.adjusted(-2, -2, 2, 2).contains(QCursor::pos()));
    m_dismissed.invalidate();
    if (sameClick) {
        return;
    }
    if (m_popover == nullptr) {
        m_popover = make(u"Frames/Popover.qml"_s, {});
        followPresence(*m_popover);
        m_popover->installEventFilter(this);
        connect(m_popover.get(), SIGNAL(wantedHeightChanged()), this, SLOT(wantedSizeChanged()));
        connect(m_popover.get(), SIGNAL(wantedWidthChanged()), this, SLOT(wantedSizeChanged()));
        connect(m_popover.get(), SIGNAL(dismissed()), this, SLOT(popoverDismissed()));
        connect(m_popover.get(), &QWindow::activeChanged, this,
                [this] { m_popover->isActive() ? m_dismissIfUnfocused.stop() : m_dismissIfUnfocused.start(); });
    }
    m_anchor = anchor;
    placePopover();
    bringToFront(*m_popover);
    m_grabIfUnfocused.start();
}

void QuickViews::placePopover() {
    const QScreen* screen = m_anchor.isEmpty() ? nullptr : QGuiApplication::screenAt(m_anchor.center());
    if (screen == nullptr) {
        screen = QGuiApplication::primaryScreen();
    }
    if (screen != nullptr) {
        m_popover->setGeometry(
            popoverPlace(m_anchor, wantedSize(*m_popover), screen->geometry(), screen->availableGeometry()));
    }
}

void QuickViews::closePopover() {
    if (m_popover != nullptr) {
        m_grabIfUnfocused.stop();
        m_dismissIfUnfocused.stop();
        m_popover->setMouseGrabEnabled(false);
        m_popover->hide();
    }
}

void QuickViews::dismissPopover() {
    m_dismissed.start();
    closePopover();
}

void QuickViews::popoverDismissed() {
    closePopover();
}

bool QuickViews::isPopoverShown() const {
    return m_popover != nullptr && m_popover->isVisible();
}

void QuickViews::showWindow() {
    if (m_window == nullptr) {
        m_window = make(u"Frames/MainWindow.qml"_s, {});
        followPresence(*m_window);
        connect(m_window.get(), SIGNAL(wantedHeightChanged()), this, SLOT(wantedSizeChanged()));
        connect(m_window.get(), SIGNAL(wantedWidthChanged()), this, SLOT(wantedSizeChanged()));
        sizeWindow();
        centre(*m_window);
    }
    closePopover();
    bringToFront(*m_window);
}

void QuickViews::sizeWindow() {
    if (m_window == nullptr || (m_followedHeight != 0 && m_window->height() != m_followedHeight)) {
        return;
    }
    const QSize wanted = wantedSize(*m_window);
    const QScreen* screen = m_window->screen();
    const double ratio = m_window->effectiveDevicePixelRatio();
    constexpr int titleBarAndAir = 64;
    constexpr int steps = 2; // within which steadyHeight finds one
    const int room = screen != nullptr
                         ? steadyHeight(screen->availableGeometry().height() - titleBarAndAir - steps, ratio)
                         : wanted.height();
    m_followedHeight = std::max(m_window->minimumHeight(), std::min(wanted.height(), room));
    m_window->resize(wanted.width(), m_followedHeight);
    if (screen != nullptr && m_window->isVisible()) {
        // What has grown beyond the lower edge goes up.
        const QRect free = screen->availableGeometry().marginsRemoved(m_window->frameMargins());
        const int lowest = std::max(free.top(), free.bottom() + 1 - m_followedHeight);
        if (m_window->y() > lowest) {
            m_window->setY(lowest);
        }
    }
}

bool QuickViews::isWindowShown() const {
    return seen(m_window.get());
}

void QuickViews::wantedSizeChanged() {
    if (sender() == m_popover.get() && isPopoverShown()) {
        placePopover();
    } else if (sender() == m_window.get()) {
        // Once a height comes to rest; an opening group passes through many.
        m_resize.start();
    }
}

void QuickViews::showOnboarding(OnboardingActions& actions) {
    m_onboardingAdapter.setActions(&actions);
    if (m_onboarding == nullptr) {
        m_onboarding = make(u"FirstRun/OnboardingWindow.qml"_s, {});
        const QSize size = wantedSize(*m_onboarding);
        m_onboarding->setMinimumSize(size);
        m_onboarding->setMaximumSize(size);
        m_onboarding->resize(size);
        centre(*m_onboarding);
        connect(m_onboarding.get(), &QWindow::visibleChanged, this, [this](bool visible) {
            auto& shown = *m_onboardingAdapter.actions();
            visible ? shown.windowAppeared() : shown.windowClosed();
        });
    }
    bringToFront(*m_onboarding);
}

void QuickViews::closeOnboarding() {
    if (QQuickWindow* const window = m_onboarding.release()) {
        // Often asked for by a button of that very window.
        window->hide();
        window->deleteLater();
        m_onboardingAdapter.setActions(nullptr);
    }
}

void QuickViews::confirm(const Confirmation& question, std::function<void(bool confirmed)> answer) {
    // A second press of the same control, by a screen reader that no window can hold back.
    if (std::ranges::any_of(m_questions, [&](const Question& asked) { return asked.words == question; })) {
        answer(false);
        return;
    }
    m_questions.push_back({question, std::move(answer)});
    if (m_dialog == nullptr) {
        askNext();
    }
}

void QuickViews::askNext() {
    if (m_questions.empty()) {
        return;
    }
    const Confirmation& words = m_questions.front().words;
    m_dialog = make(u"Frames/ConfirmDialog.qml"_s, {{u"message"_s, words.message},
                                                    {u"informativeText"_s, words.informativeText},
                                                    {u"confirmLabel"_s, words.confirmButton},
                                                    {u"cancelLabel"_s, words.cancelButton},
                                                    {u"warning"_s, words.warning}});
    connect(m_dialog.get(), SIGNAL(answered(bool)), this, SLOT(answered(bool)));
    QQuickWindow* const over = isPopoverShown() ? m_popover.get() : seen(m_window.get()) ? m_window.get() : nullptr;
    const QSize size = wantedSize(*m_dialog);
    m_dialog->setMinimumSize(size);
    m_dialog->setMaximumSize(size);
    QRect place(QPoint(), size);
    if (over != nullptr) {
        m_dialog->setTransientParent(over);
        place.moveCenter(over->geometry().center());
    } else if (const QScreen* screen = m_dialog->screen()) {
        place.moveCenter(screen->availableGeometry().center());
    }
    m_dialog->setGeometry(place);
    bringToFront(*m_dialog);
}

void QuickViews::answered(bool confirmed) {
    if (m_dialog == nullptr) {
        return;
    }
    QQuickWindow* const asked = m_dialog.release();
    QWindow* const over = asked->transientParent();
    asked->hide();
    asked->deleteLater();
    const auto answer = std::move(m_questions.front().answer);
    m_questions.pop_front();
    if (over != nullptr && over->isVisible()) {
        over->requestActivate();
    }
    askNext();
    answer(confirmed);
}

void QuickViews::setAppearance(const Appearance& appearance) {
    m_surroundings.setAppearance(appearance);
}

bool QuickViews::eventFilter(QObject* watched, QEvent* event) {
    if (watched == m_popover.get() && event->type() == QEvent::MouseButtonPress) {
        const QPointF at = static_cast<QMouseEvent*>(event)->position();
        if (!QRectF(QPointF(), m_popover->size()).contains(at)) {
            dismissPopover();
            return true;
        }
    }
    return QObject::eventFilter(watched, event);
}

} // namespace tunedeck
