// A bare Qt Quick window of rows with the software scene graph, behind a bare tray icon: the floor of the open panel.
#include <QApplication>
#include <QIcon>
#include <QPixmap>
#include <QQmlComponent>
#include <QQmlEngine>
#include <QQuickWindow>
#include <QSystemTrayIcon>

#include <memory>

static constexpr const char* rows = R"(
import QtQuick
Window {
    width: 360; height: 560; visible: true
    Column {
        Repeater {
            model: 20
            Rectangle {
                required property int index
                width: 360; height: 28
                color: index % 2 ? "white" : "whitesmoke"
                Text { anchors.centerIn: parent; text: "Row " + parent.index }
            }
        }
    }
})";

int main(int argc, char** argv) {
    QQuickWindow::setGraphicsApi(QSGRendererInterface::Software);
    QApplication application(argc, argv);
    QPixmap pixmap(22, 22);
    pixmap.fill(Qt::white);
    QSystemTrayIcon tray((QIcon(pixmap)));
    tray.show();

    QQmlEngine engine;
    QQmlComponent component(&engine);
    component.setData(rows, QUrl());
    const std::unique_ptr<QObject> window(component.create());
    return window ? QApplication::exec() : 1;
}
