#include "Tests/Helpers/Views/Screen.h"

#include <QDeadlineTimer>
#include <QEventLoop>
#include <QGuiApplication>
#include <QPluginLoader>
#include <QTest>
#include <QTimer>

using namespace Qt::StringLiterals;

namespace tunedeck::test {

namespace {

QStringList complaints; // NOLINT(cppcoreguidelines-avoid-non-const-global-variables): a handler has no object

void hear(QtMsgType type, const QMessageLogContext&, const QString& message) {
    if (type != QtDebugMsg && type != QtInfoMsg && !message.contains(u"XDG_RUNTIME_DIR"_s) &&
        !message.contains(u"does not support"_s)) {
        complaints.append(message);
    }
}

void gather(QAccessibleInterface* access, QList<Seen>& into) {
    if (access == nullptr || !access->isValid() || access->rect().isEmpty()) {
        return;
    }
    if (qobject_cast<QWindow*>(access->object()) == nullptr) {
        into.append({.access = access,
                     .name = access->text(QAccessible::Name),
                     .description = access->text(QAccessible::Description),
                     .role = access->role(),
                     .place = access->rect()});
    }
    for (int i = 0; i < access->childCount(); ++i) {
        gather(access->child(i), into);
    }
}

} // namespace

bool Seen::isControl() const {
    return role == QAccessible::Button || role == QAccessible::CheckBox || role == QAccessible::MenuItem ||
           role == QAccessible::Link || role == QAccessible::ButtonMenu;
}

bool Seen::press() const {
    QAccessibleActionInterface* const actions = access->actionInterface();
    for (const QString& action :
         {QAccessibleActionInterface::pressAction(), QAccessibleActionInterface::toggleAction()}) {
        if (actions != nullptr && actions->actionNames().contains(action)) {
            actions->doAction(action);
            return true;
        }
    }
    return false;
}

Screen::Screen() {
    complaints.clear();
    qInstallMessageHandler(hear);
}

Screen::~Screen() {
    views.reset();
    qInstallMessageHandler(nullptr);
}

void Screen::TearDown() {
    views.reset();
    pass(1);
    EXPECT_EQ(complaints.join(u'\n').toStdString(), "");
}

void Screen::start() {
    if (views == nullptr) {
        views = module().createViews(host, appearance);
    }
}

QQuickWindow& Screen::popover(const PanelContent& content) {
    start();
    views->setContent(content);
    views->showPopover({400, 2, 24, 24});
    until([this] { return front().isActive() && front().isExposed(); });
    pass(220);
    return front();
}

QQuickWindow& Screen::mainWindow(const PanelContent& content) {
    start();
    views->setContent(content);
    views->showWindow();
    until([this] { return front().isActive() && front().isExposed(); });
    pass(220);
    return front();
}

QQuickWindow& Screen::onboarding(const OnboardingContent& content) {
    start();
    views->setOnboardingContent(content);
    views->showOnboarding(host.onboarding);
    until([this] { return front().isActive() && front().isExposed(); });
    pass(50);
    return front();
}

void Screen::become(const PanelContent& content) {
    views->setContent(content);
    pass(1);
}

QQuickWindow& Screen::front() const {
    QQuickWindow* found = nullptr;
    for (QWindow* window : QGuiApplication::topLevelWindows()) {
        auto* const quick = qobject_cast<QQuickWindow*>(window);
        if (quick != nullptr && quick->isVisible() &&
            (found == nullptr || quick->modality() == Qt::ApplicationModal || quick->isActive())) {
            found = quick;
        }
    }
    if (found == nullptr) {
        throw std::runtime_error("no window is on the screen");
    }
    return *found;
}

QList<Seen> Screen::all() const {
    QList<Seen> found;
    gather(QAccessible::queryAccessibleInterface(&front()), found);
    return found;
}

QStringList Screen::texts() const {
    QStringList found;
    for (const Seen& seen : all()) {
        found.append(seen.name);
    }
    return found;
}

QList<Seen> Screen::controls(const QString& name) const {
    QList<Seen> found = all();
    found.removeIf([&](const Seen& seen) { return !seen.isControl() || (!name.isEmpty() && seen.name != name); });
    return found;
}

Seen Screen::control(const QString& name, const QString& which) const {
    QList<Seen> found = controls(name);
    found.removeIf([&](const Seen& seen) { return !seen.description.contains(which); });
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
    pass(1);
}

void Screen::click(const Seen& control) const {
    const QPoint centre = control.place.center() - front().position();
    QTest::mouseMove(&front(), centre);
    QTest::mouseClick(&front(), Qt::LeftButton, {}, centre);
    pass(1);
}

void Screen::key(Qt::Key key, Qt::KeyboardModifiers modifiers) const {
    QTest::keyClick(&front(), key, modifiers);
    pass(1);
}

QString Screen::focusName() const {
    QAccessibleInterface* const access = QAccessible::queryAccessibleInterface(focus());
    return access != nullptr ? access->text(QAccessible::Name) : QString();
}

void Screen::pass(int milliseconds) {
    QEventLoop loop;
    QTimer::singleShot(milliseconds, Qt::PreciseTimer, &loop, &QEventLoop::quit);
    loop.exec();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
}

bool Screen::until(const std::function<bool()>& condition) {
    const QDeadlineTimer end(3000);
    while (!condition()) {
        if (end.hasExpired()) {
            return false;
        }
        pass(5);
    }
    return true;
}

PanelModule& Screen::module() {
    static PanelModule* const loaded = [] {
        auto* const loader = new QPluginLoader(QStringLiteral(TUNEDECK_MODULE), qApp);
        return qobject_cast<PanelModule*>(loader->instance());
    }();
    return *loaded;
}

} // namespace tunedeck::test
