// The least that a tray application can be.
#include <QApplication>
#include <QIcon>
#include <QPixmap>
#include <QSystemTrayIcon>

int main(int argc, char** argv) {
    QApplication application(argc, argv);
    QApplication::setQuitOnLastWindowClosed(false);
    QPixmap pixmap(22, 22);
    pixmap.fill(Qt::white);
    QSystemTrayIcon tray((QIcon(pixmap)));
    tray.show();
    return QApplication::exec();
}
