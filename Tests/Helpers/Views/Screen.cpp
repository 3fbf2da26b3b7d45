#include "Tests/Helpers/Views/Screen.h"

#include <QEventLoop>
#include <QGuiApplication>
#include <QPluginLoader>
#include <QTest>
#include <QTimer>

#include <algorithm>
#include <stdexcept>

using namespace Qt::StringLiterals;

namespace tunedeck::test {

namespace {

QStringList warnings; // NOLINT(cppcoreguidelines-avoid-non-const-global-variables): a handler has no object

void recordWarning(QtMsgType type, const QMessageLogContext& context, const QString& message) {
    const QByteArrayView category(context.category);
    const bool isOurs = category == "app" || category == "files"; // the application's own log
    if (type != QtDebugMsg && type != QtInfoMsg && !isOurs && !message.contains(u"XDG_RUNTIME_DIR"_s) &&
        !message.contains(u"does not support"_s)) {
        warnings.append(message);
    }
}

} // namespace

Screen::Screen() {
    warnings.clear();
    qInstallMessageHandler(recordWarning);
}

Screen::~Screen() {
    views.reset();
    qInstallMessageHandler(nullptr);
}

void Screen::TearDown() {
    views.reset();
    wait(1);
    EXPECT_EQ(warnings.join(u'\n').toStdString(), "");
}

PanelViews& Screen::createdViews() {
    if (views == nullptr) {
        views = module().createViews(host, appearance);
    }
    return *views;
}

QQuickWindow& Screen::activeWindow() {
    runUntil([this] { return front().isActive() && front().isExposed(); }, 3s);
    wait(220);
    return front();
}

QQuickWindow& Screen::popover(const PanelContent& content) {
    createdViews().setContent(content);
    views->showPopover({400, 2, 24, 24});
    return activeWindow();
}

QQuickWindow& Screen::mainWindow(const PanelContent& content) {
    createdViews().setContent(content);
    views->showWindow();
    return activeWindow();
}

QQuickWindow& Screen::onboarding(const OnboardingContent& content) {
    createdViews().setOnboardingContent(content);
    views->showOnboarding(host);
    return activeWindow();
}

void Screen::setContent(const PanelContent& content) {
    views->setContent(content);
    wait(1);
}

QQuickWindow& Screen::front() const {
    const auto windows = openWindows();
    if (windows.isEmpty()) {
        throw std::runtime_error("no window is open");
    }
    const auto active = std::ranges::find_if(windows, &QWindow::isActive);
    return active != windows.end() ? **active : *windows.last();
}

QStringList Screen::texts() const {
    QStringList found;
    for (const Element& element : elements()) {
        found.append(element.name);
    }
    return found;
}

QList<Element> Screen::controls(const QString& name) const {
    QList<Element> found = elements();
    found.removeIf([&](const Element& element) {
        const bool isNamed = name.isEmpty() || element.name == name || element.name.startsWith(name + u", "_s);
        return !element.isControl() || !isNamed;
    });
    return found;
}

Element Screen::control(const QString& name, const QString& which) const {
    QList<Element> found = controls(name);
    found.removeIf(
        [&](const Element& element) { return !element.description.contains(which) && !element.name.contains(which); });
    if (found.size() != 1) {
        throw std::runtime_error(QString(u"%1 controls are called “%2” (%3) among: %4"_s)
                                     .arg(found.size())
                                     .arg(name, which, texts().join(u" | "_s))
                                     .toStdString());
    }
    return found.first();
}

void Screen::press(const QString& name, const QString& which) const {
    EXPECT_TRUE(control(name, which).press()) << qPrintable(name);
    wait(1);
}

void Screen::click(const Element& control) const {
    const QPoint centre = control.geometry.center() - front().position();
    QTest::mouseMove(&front(), centre);
    QTest::mouseClick(&front(), Qt::LeftButton, {}, centre);
    wait(1);
}

void Screen::key(Qt::Key key, Qt::KeyboardModifiers modifiers) const {
    QTest::keyClick(&front(), key, modifiers);
    wait(1);
}

QString Screen::focusName(QAccessible::Text text) const {
    QAccessibleInterface* const access = QAccessible::queryAccessibleInterface(focus());
    return access != nullptr ? access->text(text) : QString();
}

void Screen::wait(int milliseconds) {
    QEventLoop loop;
    QTimer::singleShot(milliseconds, Qt::PreciseTimer, &loop, &QEventLoop::quit);
    loop.exec();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
}

PanelModule& Screen::module() {
    static PanelModule* const loaded = [] {
        auto* const loader = new QPluginLoader(QString::fromUtf8(TUNEDECK_MODULE), qApp);
        return qobject_cast<PanelModule*>(loader->instance());
    }();
    return *loaded;
}

} // namespace tunedeck::test
