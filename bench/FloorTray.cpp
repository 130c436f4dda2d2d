// The least that a Qt program with a tray icon, a menu and a two-second timer can be: what is used
// above it is the monitor's own.

#include <QApplication>
#include <QMenu>
#include <QPixmap>
#include <QSystemTrayIcon>
#include <QTimer>

namespace
{

QIcon icon()
{
    constexpr int side = 22;
    QPixmap pixmap(side, side);
    pixmap.fill(Qt::green);
    return {pixmap};
}

} // namespace

int main(int argc, char **argv)
{
    using namespace std::chrono_literals;
    const QApplication application(argc, argv);
    QApplication::setQuitOnLastWindowClosed(false);

    QMenu menu;
    menu.addAction(QStringLiteral("Quit"), &QCoreApplication::quit);
    QSystemTrayIcon tray(icon());
    tray.setContextMenu(&menu);
    tray.show();

    QTimer timer;
    QObject::connect(&timer, &QTimer::timeout, &application, [] {});
    timer.start(2s);
    return QApplication::exec();
}
