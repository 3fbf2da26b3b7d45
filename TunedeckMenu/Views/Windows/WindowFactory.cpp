#include "TunedeckMenu/Views/Windows/WindowFactory.h"

#include "TunedeckMenu/Views/Windows/WindowSize.h"

#include <QCoreApplication>
#include <QFileInfo>
#include <QQmlComponent>
#include <QUrl>
#include <QtQuick/private/qquickwindow_p.h>

using namespace Qt::StringLiterals;

namespace tunedeck {

namespace {

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

} // namespace

WindowFactory::WindowFactory(QQmlEngine& engine) : m_engine(engine), m_icon(appIcon()) {}

std::unique_ptr<QQuickWindow> WindowFactory::create(const QString& file, const QVariantMap& properties) const {
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
    // Lay out the items, which Qt does with the first frame: the window must have its size before that.
    window->contentItem()->setWidth(wantedSize(*window).width());
    QQuickWindowPrivate::get(window)->polishItems();
    return std::unique_ptr<QQuickWindow>(window);
}

} // namespace tunedeck
