#include "common/views/AlertWindow.h"

#include "common/NSAlert_Addition.h"

#include <QAccessible>
#include <QDialog>
#include <QEventLoop>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QStyle>

#include <memory>

namespace velq
{

namespace
{

constexpr int textWidth = 340;

QLabel *makeText(const QString &text)
{
    auto *const label = new QLabel(text);
    label->setTextFormat(Qt::PlainText);
    label->setWordWrap(true);
    label->setMinimumWidth(textWidth);
    return label;
}

QLabel *makeMessage(const QString &text)
{
    QLabel *const label = makeText(text);
    QFont bold = label->font();
    bold.setBold(true);
    label->setFont(bold);
    return label;
}

QLabel *makeIcon(const QDialog &dialog)
{
    auto *const label = new QLabel;
    const int size = dialog.style()->pixelMetric(QStyle::PM_MessageBoxIconSize);
    const QIcon icon = dialog.style()->standardIcon(QStyle::SP_MessageBoxWarning);
    label->setPixmap(icon.pixmap(size));
    return label;
}

QPushButton *makeButton(const NSAlert_Addition::Button &button, NSAlert_Addition &alert)
{
    // An ampersand would underline the letter behind it.
    QString shown = button.title;
    shown.replace(QLatin1Char('&'), QLatin1String("&&"));
    auto *const made = new QPushButton(shown);
    made->setAccessibleName(button.title);
    QObject::connect(made, &QPushButton::clicked, made,
                     [&alert, tag = button.tag] { alert.buttonPressed(tag); });
    return made;
}

QHBoxLayout *makeButtons(NSAlert_Addition &alert)
{
    auto *const row = new QHBoxLayout;
    row->addStretch();
    for (const NSAlert_Addition::Button &button : alert.buttons()) {
        QPushButton *const made = makeButton(button, alert);
        made->setDefault(button.tag == NSAlert_Addition::cancelTag);
        row->addWidget(made);
    }
    return row;
}

QDialog *makeDialog(NSAlert_Addition &alert, QWidget *parent)
{
    auto *const dialog = new QDialog(parent);
    dialog->setAccessibleName(alert.message());
    dialog->setAccessibleDescription(alert.description());
    // An alert is not what keeps an application open.
    dialog->setAttribute(Qt::WA_QuitOnClose, false);
    dialog->setWindowModality(Qt::ApplicationModal);
    auto *const grid = new QGridLayout(dialog);
    grid->setSizeConstraint(QLayout::SetFixedSize);
    grid->setSpacing(12);
    grid->addWidget(makeIcon(*dialog), 0, 0, 2, 1, Qt::AlignTop);
    grid->addWidget(makeMessage(alert.message()), 0, 1);
    grid->addWidget(makeText(alert.description()), 1, 1);
    grid->addLayout(makeButtons(alert), 2, 0, 1, 2);
    return dialog;
}

void announce(QDialog &dialog)
{
    QAccessibleEvent event(&dialog, QAccessible::Alert);
    QAccessible::updateAccessibility(&event);
}

} // namespace

AlertWindow::AlertWindow(QWidget *parent)
    : m_parent(parent)
{
}

void AlertWindow::runModal(NSAlert_Addition &alert)
{
    QEventLoop loop;
    m_loop = &loop;
    m_dialog = makeDialog(alert, m_parent);
    QObject::connect(m_dialog, &QDialog::rejected, &loop,
                     [&alert] { alert.buttonPressed(NSAlert_Addition::cancelTag); });
    QObject::connect(m_dialog, &QObject::destroyed, &loop, &QEventLoop::quit);
    m_dialog->show();
    announce(*m_dialog);
    loop.exec();
    // Nobody has stopped it: there will be no answer any more.
    if (m_loop != nullptr)
        alert.buttonPressed(NSAlert_Addition::cancelTag);
    delete m_dialog;
}

void AlertWindow::closeWindow()
{
    if (m_dialog != nullptr)
        m_dialog->hide();
}

void AlertWindow::stopModal()
{
    if (m_loop != nullptr)
        m_loop->quit();
    m_loop = nullptr;
}

} // namespace velq
