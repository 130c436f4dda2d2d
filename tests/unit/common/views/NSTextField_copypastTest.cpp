#include "common/views/NSTextField_copypast.h"

#include <QApplication>
#include <QClipboard>
#include <QKeyEvent>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <gtest/gtest.h>

namespace
{

using namespace velq;

class ShortcutTest : public ::testing::Test
{
protected:
    void SetUp() override
    {
        QGuiApplication::clipboard()->setText(QStringLiteral("old"));
        window.show();
        field.setFocus();
        field.selectAll();
    }

    bool press(int key, Qt::KeyboardModifiers modifiers = Qt::ControlModifier) const
    {
        return performKeyEquivalent(field, QKeyEvent(QEvent::KeyPress, key, modifiers));
    }
    static QString clipboard() { return QGuiApplication::clipboard()->text(); }

    QWidget window;
    QLineEdit field{QStringLiteral("text"), &window};
};

TEST_F(ShortcutTest, CommandXCuts)
{
    EXPECT_TRUE(press(Qt::Key_X));
    EXPECT_EQ(clipboard(), QStringLiteral("text"));
    EXPECT_EQ(field.text(), QString());
}

TEST_F(ShortcutTest, CommandCCopies)
{
    EXPECT_TRUE(press(Qt::Key_C));
    EXPECT_EQ(clipboard(), QStringLiteral("text"));
    EXPECT_EQ(field.text(), QStringLiteral("text"));
}

TEST_F(ShortcutTest, CommandVPastes)
{
    EXPECT_TRUE(press(Qt::Key_V));
    EXPECT_EQ(field.text(), QStringLiteral("old"));
}

TEST_F(ShortcutTest, CommandASelectsAll)
{
    field.deselect();
    EXPECT_TRUE(press(Qt::Key_A));
    EXPECT_EQ(field.selectedText(), QStringLiteral("text"));
}

TEST_F(ShortcutTest, AnyOtherCombinationIsTheBaseClasss)
{
    EXPECT_FALSE(press(Qt::Key_V, Qt::ControlModifier | Qt::ShiftModifier));
    EXPECT_FALSE(press(Qt::Key_X, Qt::ControlModifier | Qt::AltModifier));
    EXPECT_FALSE(press(Qt::Key_X, Qt::NoModifier));
    EXPECT_FALSE(press(Qt::Key_X, Qt::MetaModifier));
    EXPECT_FALSE(press(Qt::Key_Z));
    EXPECT_EQ(field.text(), QStringLiteral("text"));
    EXPECT_EQ(clipboard(), QStringLiteral("old"));
}

TEST_F(ShortcutTest, WhatIsReadOnlyIsOnlyCopiedFrom)
{
    field.setReadOnly(true);
    EXPECT_TRUE(press(Qt::Key_X));
    EXPECT_TRUE(press(Qt::Key_V));
    EXPECT_EQ(field.text(), QStringLiteral("text"));
    EXPECT_EQ(clipboard(), QStringLiteral("old"));
    EXPECT_TRUE(press(Qt::Key_C));
    EXPECT_EQ(clipboard(), QStringLiteral("text"));
}

TEST_F(ShortcutTest, TheActionGoesToTheWidgetWithTheFocus)
{
    QPlainTextEdit edit(QStringLiteral("other"), &window);
    edit.show();
    edit.setFocus();
    edit.selectAll();
    EXPECT_TRUE(press(Qt::Key_X));
    EXPECT_EQ(clipboard(), QStringLiteral("other"));
    EXPECT_EQ(edit.toPlainText(), QString());
    EXPECT_EQ(field.text(), QStringLiteral("text"));
}

TEST_F(ShortcutTest, AWidgetWithoutTheActionDoesNotHandleIt)
{
    QPushButton button(&window);
    button.show();
    button.setFocus();
    EXPECT_FALSE(press(Qt::Key_C));
    EXPECT_EQ(clipboard(), QStringLiteral("old"));
}

TEST_F(ShortcutTest, AWindowWithoutFocusDoesNotHandleIt)
{
    field.clearFocus();
    EXPECT_FALSE(press(Qt::Key_C));
    EXPECT_EQ(clipboard(), QStringLiteral("old"));
}

} // namespace
