#include "TunedeckMenu/Views/Edge/QuickViews.h"

#include "TunedeckMenu/Views/Edge/PopoverPlace.h"
#include "TunedeckMenu/Views/Items/PressableAccess.h"

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

bool isOnScreen(const QQuickWindow* window) {
    return window != nullptr && window->isVisible() && window->visibility() != QWindow::Minimized;
}

/// The application's icon, for task bars and window lists.
QIcon appIcon() {
    QIcon icon;
    for (const int size : {16, 32, 48, 64, 128}) {
        const QString file =
            u"%1/../Resources/tunedeck-%2.png"_s.arg(QCoreApplication::applicationDirPath(), QString::number(size));
        if (QFileInfo::exists(file)) {
            icon.addFile(file, {size, size});
        }
    }
    return icon;
}

void setFixedSize(QQuickWindow& window) {
    const QSize size = wantedSize(window);
    window.setMinimumSize(size);
    window.setMaximumSize(size);
    window.resize(size);
}

/// Centres a window over another, or on its screen.
void centre(QQuickWindow& window, const QWindow* over = nullptr) {
    if (const QScreen* screen = window.screen()) {
        QRect place(QPoint(), window.size());
        place.moveCenter((over != nullptr ? over->geometry() : screen->availableGeometry()).center());
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
    , m_style(*new SystemStyle(m_engine))
    , m_panelAdapter(*new PanelAdapter(host, m_engine))
    , m_onboardingAdapter(*new OnboardingAdapter(host, m_engine))
    , m_icon(appIcon()) {
    m_engine.addImportPath(u"qrc:/tunedeck/qml"_s);
    [[maybe_unused]] static const bool once = [] {
        QQuickWindow::setGraphicsApi(QSGRendererInterface::Software);
        QQuickWindow::setTextRenderType(QQuickWindow::NativeTextRendering);
        installPressableAccess();
        return true;
    }();
    m_style.setAppearance(appearance);
    m_style.setFileIcons([this](const QString& path) { return m_host.fileIcon(path); });

    m_grabIfUnfocused.setSingleShot(true);
    m_grabIfUnfocused.setInterval(400);
    connect(&m_grabIfUnfocused, &QTimer::timeout, this, [this] {
        // Without the focus there is no focus-out event to close it: grab the mouse to see clicks outside instead.
        if (isPopoverShown() && !m_popover->isActive()) {
            m_popover->setMouseGrabEnabled(true);
        }
    });
    // Delayed: window managers may take the focus away for a moment while they map a new window.
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

std::unique_ptr<QQuickWindow> QuickViews::createWindow(const QString& file, const QVariantMap& properties) {
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

void QuickViews::followPanel(QQuickWindow& window) {
    connect(&window, SIGNAL(wantedHeightChanged()), this, SLOT(wantedSizeChanged()));
    connect(&window, SIGNAL(wantedWidthChanged()), this, SLOT(wantedSizeChanged()));
    // Once per change, whatever visibilities the window system reports in between.
    connect(&window, &QWindow::visibilityChanged, this, [this, &window, present = false]() mutable {
        if (isOnScreen(&window) != present) {
            present = !present;
            present ? m_host.actions().panelAppeared() : m_host.actions().panelDisappeared();
        }
    });
}

void QuickViews::showPopover(const QRect& anchor) {
    // A click on the icon of the open popover first dismisses it by taking the focus: don't reopen it.
    constexpr int clickMilliseconds = 300;
    const bool sameClick = m_dismissed.isValid() && m_dismissed.elapsed() < clickMilliseconds &&
                           (anchor.isEmpty() || anchor.adjusted(-2, -2, 2, 2).contains(QCursor::pos()));
    m_dismissed.invalidate();
    if (sameClick) {
        return;
    }
    if (m_popover == nullptr) {
        m_popover = createWindow(u"Frames/Popover.qml"_s, {});
        followPanel(*m_popover);
        m_popover->installEventFilter(this);
        connect(m_popover.get(), SIGNAL(dismissed()), this, SLOT(closePopover()));
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

bool QuickViews::isPopoverShown() const {
    return m_popover != nullptr && m_popover->isVisible();
}

void QuickViews::showWindow() {
    if (m_window == nullptr) {
        m_window = createWindow(u"Frames/MainWindow.qml"_s, {});
        followPanel(*m_window);
        sizeWindow();
        centre(*m_window);
    }
    closePopover();
    bringToFront(*m_window);
}

void QuickViews::sizeWindow() {
    if (m_window == nullptr || (m_autoHeight != 0 && m_window->height() != m_autoHeight)) {
        return;
    }
    const QSize wanted = wantedSize(*m_window);
    const QScreen* screen = m_window->screen();
    const double ratio = m_window->effectiveDevicePixelRatio();
    constexpr int titleBarAndGap = 64;
    constexpr int maxRounding = 2; // added by steadyHeight
    const int room = screen != nullptr
                         ? steadyHeight(screen->availableGeometry().height() - titleBarAndGap - maxRounding, ratio)
                         : wanted.height();
    m_autoHeight = std::max(m_window->minimumHeight(), std::min(wanted.height(), room));
    m_window->resize(wanted.width(), m_autoHeight);
    if (screen != nullptr && m_window->isVisible()) {
        // Move a window up that has grown beyond the lower edge.
        const QRect free = screen->availableGeometry().marginsRemoved(m_window->frameMargins());
        const int lowest = std::max(free.top(), free.bottom() + 1 - m_autoHeight);
        if (m_window->y() > lowest) {
            m_window->setY(lowest);
        }
    }
}

bool QuickViews::isWindowShown() const {
    return isOnScreen(m_window.get());
}

void QuickViews::wantedSizeChanged() {
    if (sender() == m_popover.get() && isPopoverShown()) {
        placePopover();
    } else if (sender() == m_window.get()) {
        // Delayed until the height is stable: an expanding group animates it.
        m_resize.start();
    }
}

void QuickViews::showOnboarding(OnboardingActions& actions) {
    m_onboardingAdapter.setActions(&actions);
    if (m_onboarding == nullptr) {
        m_onboarding = createWindow(u"FirstRun/OnboardingWindow.qml"_s, {});
        setFixedSize(*m_onboarding);
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
        // Delete later: a button of this window may be the caller.
        window->hide();
        window->deleteLater();
        m_onboardingAdapter.setActions(nullptr);
    }
}

void QuickViews::confirm(const Confirmation& question, std::function<void(bool confirmed)> answer) {
    // A repeated press of the same control: assistive technology isn't blocked by the modal dialog.
    if (std::ranges::any_of(m_questions, [&](const Question& asked) { return asked.confirmation == question; })) {
        answer(false);
        return;
    }
    m_questions.push_back({question, std::move(answer)});
    if (m_dialog == nullptr) {
        askNextQuestion();
    }
}

void QuickViews::askNextQuestion() {
    if (m_questions.empty()) {
        return;
    }
    const Confirmation& question = m_questions.front().confirmation;
    m_dialog = createWindow(u"Frames/ConfirmDialog.qml"_s, {{u"message"_s, question.message},
                                                            {u"informativeText"_s, question.informativeText},
                                                            {u"confirmLabel"_s, question.confirmButton},
                                                            {u"cancelLabel"_s, question.cancelButton},
                                                            {u"warning"_s, question.warning}});
    connect(m_dialog.get(), SIGNAL(answered(bool)), this, SLOT(answered(bool)));
    QQuickWindow* const over = isPopoverShown()             ? m_popover.get()
                               : isOnScreen(m_window.get()) ? m_window.get()
                                                            : nullptr;
    setFixedSize(*m_dialog);
    m_dialog->setTransientParent(over);
    centre(*m_dialog, over);
    bringToFront(*m_dialog);
}

void QuickViews::answered(bool confirmed) {
    QQuickWindow* const asked = m_dialog.release();
    asked->disconnect(this); // a second press would answer the next question
    QWindow* const over = asked->transientParent();
    asked->hide();
    asked->deleteLater();
    const auto answer = std::move(m_questions.front().answer);
    m_questions.pop_front();
    if (over != nullptr && over->isVisible()) {
        over->requestActivate();
    }
    askNextQuestion();
    answer(confirmed);
}

void QuickViews::setAppearance(const Appearance& appearance) {
    m_style.setAppearance(appearance);
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
