#include "common/views/AlertWindow.h"

#include "common/NSAlert_Addition.h"

#include <QApplication>
#include <QDialog>
#include <QKeyEvent>
#include <QLabel>
#include <QPointer>
#include <QPushButton>
#include <QTimer>
#include <gtest/gtest.h>

#include <algorithm>
#include <optional>

namespace
{

using namespace velq;

QDialog *shownDialog()
{
    const auto windows = QApplication::topLevelWidgets();
    const auto found = std::ranges::find_if(windows, [](const QWidget *window) {
        return window->isVisible() && qobject_cast<const QDialog *>(window) != nullptr;
    });
    return found == windows.end() ? nullptr : qobject_cast<QDialog *>(*found);
}

// From left to right.
QList<QPushButton *> buttonsOf(const QDialog &dialog)
{
    auto buttons = dialog.findChildren<QPushButton *>();
    std::ranges::sort(buttons, std::less(), &QPushButton::x);
    return buttons;
}

void press(QWidget &widget, int key)
{
    for (const auto type : {QEvent::KeyPress, QEvent::KeyRelease}) {
        QKeyEvent event(type, key, Qt::NoModifier);
        QApplication::sendEvent(&widget, &event);
    }
}

class AlertWindowTest : public ::testing::Test
{
protected:
    // Shows an alert to somebody who looks at its dialog and does something; the tags told.
    QList<qint64> answers(const std::function<void(QDialog &)> &somebody)
    {
        QList<qint64> tags;
        const auto alert = NSAlert_Addition::alertWithMessage(
            QStringLiteral("The <b>router</b>"), QStringLiteral("Check it & wait."),
            QStringLiteral("OK"),
            [&](qint64 tag) {
                tags.append(tag);
                visibleWhenTold = shownDialog() != nullptr;
            },
            {QStringLiteral("This & that"), QStringLiteral("Last")});
        QTimer::singleShot(0, QCoreApplication::instance(), [&] {
            QDialog *const dialog = shownDialog();
            ASSERT_NE(dialog, nullptr);
            somebody(*dialog);
        });
        AlertWindow panel(parent);
        alert->runModal(panel);
        return tags;
    }

    QWidget *parent = nullptr;
    std::optional<bool> visibleWhenTold;
};

TEST_F(AlertWindowTest, ShowsTheTextsAsTheyAre)
{
    (void)answers([](QDialog &dialog) {
        QStringList texts;
        for (const QLabel *label : dialog.findChildren<QLabel *>())
            if (!label->text().isEmpty()) {
                EXPECT_EQ(label->textFormat(), Qt::PlainText);
                texts.append(label->text());
            }
        EXPECT_EQ(
            texts,
            (QStringList{QStringLiteral("The <b>router</b>"), QStringLiteral("Check it & wait.")}));
        dialog.reject();
    });
}

TEST_F(AlertWindowTest, HasTheButtonsInOrderTheFirstOnesTheDefault)
{
    (void)answers([](QDialog &dialog) {
        const auto buttons = buttonsOf(dialog);
        QStringList titles;
        for (const QPushButton *button : buttons)
            titles.append(button->text());
        EXPECT_EQ(titles,
                  (QStringList{QStringLiteral("OK"), QStringLiteral("This && that"),
                               QStringLiteral("Last")}));
        EXPECT_TRUE(buttons.value(0)->isDefault());
        EXPECT_FALSE(buttons.value(1)->isDefault());
        dialog.reject();
    });
}

TEST_F(AlertWindowTest, SaysWhatItIsToThoseWhoDoNotSeeIt)
{
    (void)answers([](QDialog &dialog) {
        EXPECT_EQ(dialog.accessibleName(), QStringLiteral("The <b>router</b>"));
        EXPECT_EQ(dialog.accessibleDescription(), QStringLiteral("Check it & wait."));
        EXPECT_EQ(buttonsOf(dialog).value(1)->accessibleName(), QStringLiteral("This & that"));
        dialog.reject();
    });
}

TEST_F(AlertWindowTest, AClickTellsTheButtonsTagWhenTheWindowHasGone)
{
    for (qsizetype button = 0; button < 3; ++button) {
        EXPECT_EQ(answers([=](QDialog &dialog) { buttonsOf(dialog).value(button)->click(); }),
                  QList<qint64>{1000 + button});
        EXPECT_EQ(visibleWhenTold, false);
    }
}

TEST_F(AlertWindowTest, ReturnPressesTheFirstButton)
{
    EXPECT_EQ(answers([](QDialog &dialog) { press(dialog, Qt::Key_Return); }), QList<qint64>{1000});
}

TEST_F(AlertWindowTest, EscapeAndClosingAnswerLikeTheFirstButton)
{
    EXPECT_EQ(answers([](QDialog &dialog) { press(dialog, Qt::Key_Escape); }), QList<qint64>{1000});
    EXPECT_EQ(answers([](QDialog &dialog) { dialog.close(); }), QList<qint64>{1000});
}

// In a loop of the application's own, or the next alert would find it quitting still.
TEST_F(AlertWindowTest, AnApplicationThatQuitsAnswersLikeTheFirstButton)
{
    QList<qint64> tags;
    QTimer::singleShot(0, QCoreApplication::instance(),
                       [&] { tags = answers([](QDialog &) { QCoreApplication::quit(); }); });
    QCoreApplication::exec();
    EXPECT_EQ(tags, QList<qint64>{1000});
}

TEST_F(AlertWindowTest, AParentThatEndsAnswersLikeTheFirstButton)
{
    parent = new QWidget;
    EXPECT_EQ(answers([this](QDialog &) { delete parent; }), QList<qint64>{1000});
}

TEST_F(AlertWindowTest, BelongsToItsParentAndLeavesNothingBehind)
{
    QWidget window;
    parent = &window;
    QPointer<QDialog> shown;
    (void)answers([&](QDialog &dialog) {
        shown = &dialog;
        EXPECT_EQ(dialog.parent(), &window);
        EXPECT_EQ(dialog.windowModality(), Qt::ApplicationModal);
        dialog.close();
    });
    EXPECT_EQ(shown, nullptr);
}

TEST_F(AlertWindowTest, TheMainThreadGoesOnMeanwhile)
{
    int turns = 0;
    QTimer timer;
    EXPECT_EQ(answers([&](QDialog &dialog) {
                  QObject::connect(&timer, &QTimer::timeout, &dialog, [&] {
                      if (++turns == 3)
                          buttonsOf(dialog).value(1)->click();
                  });
                  timer.start(1);
              }),
              QList<qint64>{1001});
    EXPECT_EQ(turns, 3);
}

} // namespace
