// A program with windows, as a host of the scanners is one. Its first argument says what it shows;
// it tells on standard output what is done to it, and ends with its window.

#include "common/NSAlert_Addition.h"
#include "common/views/NSTextField_copypast.h"
#include "common/views/NSView_BackgroudColor.h"
#include "diagnosis/views/WindowHost.h"
#include "platform/MainQueue.h"
#include "scanner/NSButton_service.h"
#include "support/views/Responder.h"

#include <QApplication>
#include <QDialog>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTimer>
#include <QVBoxLayout>

#include <cstdio>
#include <thread>

namespace
{

using namespace velq;
using velq::testing::Responder;

void tell(const QString &line)
{
    std::puts(line.toUtf8().constData());
    (void)std::fflush(stdout);
}

// Where somebody would click, in the window's own coordinates.
void tellButtons(const QWidget &window)
{
    for (const auto *button : window.findChildren<QPushButton *>()) {
        const QPoint middle = button->mapTo(&window, button->rect().center());
        tell(QStringLiteral("%1 at %2 %3")
                 .arg(button->accessibleName())
                 .arg(middle.x())
                 .arg(middle.y()));
    }
}

// Asked for on another thread, as by a scan.
int showAlert()
{
    WindowHost host;
    std::thread scan([&host] {
        MainQueue::sync([&host] {
            const auto alert = NSAlert_Addition::alertWithMessage(
                QStringLiteral("The IP address of router is abnormal."),
                QStringLiteral("Please check the settings of your router or contact ISP."),
                QStringLiteral("OK"), [](qint64 tag) { tell(QString::number(tag)); },
                {QStringLiteral("Feedback")});
            QTimer::singleShot(0, QCoreApplication::instance(),
                               [] { tellButtons(*QApplication::activeModalWidget()); });
            host.runModal(*alert);
        });
        MainQueue::async([] { QCoreApplication::quit(); });
    });
    const int status = QCoreApplication::exec();
    scan.join();
    return status;
}

ProxyServer proxy(const char *type)
{
    ProxyServer made;
    made.proxyType = QString::fromLatin1(type);
    return made;
}

// A scan's thread makes the views, and lets go of them.
int showViews()
{
    QWidget window;
    window.setWindowTitle(QStringLiteral("views"));
    auto *const rows = new QVBoxLayout(&window);
    rows->setContentsMargins({});
    rows->setSpacing(0);
    WindowHost host(&window);
    std::shared_ptr<QWidget> error;
    std::shared_ptr<QWidget> proxies;
    std::thread([&] {
        MainQueue::async([&] {
            error = host.createIPErrorView(QStringLiteral("Ethernet"));
            proxies = host.createProxyControlView(
                {proxy("HTTP"), proxy("HTTPS"), proxy("Socks")}, [](const QObject &sender) {
                    tell(QStringLiteral("%1 %2")
                             .arg(getIndex(sender))
                             .arg(sender.property("checked").toBool() ? QStringLiteral("on")
                                                                      : QStringLiteral("off")));
                });
            rows->addWidget(error.get());
            rows->addWidget(proxies.get());
            window.show();
        });
    }).join();
    const int status = QCoreApplication::exec();
    std::thread([&] {
        error.reset();
        proxies.reset();
    }).join();
    QCoreApplication::processEvents();
    tell(QStringLiteral("%1 views left").arg(rows->count()));
    return status;
}

int showFields()
{
    offerKeyEquivalents();
    QWidget window;
    window.setWindowTitle(QStringLiteral("fields"));
    auto *const rows = new QVBoxLayout(&window);
    auto *const field = new QLineEdit;
    auto *const responder = new Responder(tell);
    QObject::connect(field, &QLineEdit::textChanged, &window,
                     [](const QString &text) { tell(QStringLiteral("text ") + text); });
    rows->addWidget(field);
    rows->addWidget(responder);
    responder->setMinimumHeight(20);
    window.show();
    return QCoreApplication::exec();
}

int showFills()
{
    QWidget window;
    window.setWindowTitle(QStringLiteral("fills"));
    window.resize(300, 200);
    setBackgroundColor(window, Qt::red);
    auto *const below = new QWidget(&window);
    below->setGeometry(100, 0, 200, 200);
    setGradientColor(*below, {{0, Qt::black}, {1, Qt::white}});
    auto *const text = new QLabel(QStringLiteral("text"), &window);
    text->setGeometry(10, 10, 80, 30);
    auto *const button = new QPushButton(QStringLiteral("Blue"), &window);
    button->setAccessibleName(button->text());
    button->setGeometry(10, 150, 80, 30);
    QObject::connect(button, &QPushButton::clicked, &window, [&window] {
        setBackgroundColor(window, Qt::blue);
        tell(QStringLiteral("blue"));
    });
    window.show();
    tellButtons(window);
    return QCoreApplication::exec();
}

} // namespace

int main(int argc, char **argv)
{
    const QApplication application(argc, argv);
    const QString shown = QApplication::arguments().value(1);
    if (shown == QStringLiteral("alert"))
        return showAlert();
    if (shown == QStringLiteral("views"))
        return showViews();
    if (shown == QStringLiteral("fields"))
        return showFields();
    return showFills();
}
