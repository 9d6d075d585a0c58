#include "document/ContextMenus.h"
#include "document/DocumentFixture.h"
#include "widgets/MenuStyle.h"

#include <QAbstractScrollArea>
#include <QAction>
#include <QMenu>
#include <QTest>

class ContextMenusOfADocument : public DocumentFixture {
 protected:
    QMenu& menu(const char* key) { return *m_document.findChild<QMenu*>(QString::fromLatin1(key)); }
    QAction& entry(const char* key, const char* name) {
        return *menu(key).findChild<QAction*>(QString::fromLatin1(name));
    }
    QAction& text(const char* name) { return entry("EditText", name); }
    QAction& hex(const char* name) { return entry("HEX", name); }
    /// Names and captions in their order, sub-menus in brackets behind their entry.
    static QStringList listOf(const QMenu& menu) {
        QStringList list;
        for (const QAction* action : menu.actions()) {
            if (action->isSeparator()) {
                list << u"-"_qs;
                continue;
            }
            list << action->objectName() + u' ' + action->text();
            if (action->menu() != nullptr)
                list << u"("_qs << listOf(*action->menu()) << u")"_qs;
        }
        return list;
    }
    void ask() {
        Q_EMIT view().ShowMenu(3, 4);
        EXPECT_TRUE(menu("EditText").isVisible());
        menu("EditText").close();
    }
    QStringList unlockedOnly() {
        QStringList names;
        for (const char* name : {"mnuCut", "mnuPaste", "mnuChangeCase", "mnuUndo", "mnuRedo", "mnuUnindent",
                                 "mnuIndent", "mnuLineDelete"}) {
            if (text(name).isEnabled())
                names << QString::fromLatin1(name);
        }
        return names;
    }
};

TEST_F(ContextMenusOfADocument, AllHaveTheStyleOfTheMenus) {
    for (const char* key : {"EditText", "HEX", "BOOK", "mnuChangeCase", "mnuLineDelete"}) {
        EXPECT_NE(qobject_cast<MenuStyle*>(menu(key).style()), nullptr) << key;
    }
}

TEST_F(ContextMenusOfADocument, TheTextMenuHasItsEntriesInTheirOrder) {
    EXPECT_EQ(listOf(menu("EditText")), QStringList({"mnuCopy Copy",
                                                     "mnuPaste Paste",
                                                     "mnuCut Cut",
                                                     "-",
                                                     "mnuUndo Undo",
                                                     "mnuRedo Redo",
                                                     "-",
                                                     "mnuFind Find...",
                                                     "mnuReplace Replace...",
                                                     "mnuIncSearch Incremental Search",
                                                     "mnuRevIncSearch Reverse Incremental Search",
                                                     "mnuGoto Go to...",
                                                     "-",
                                                     "mnuSelectWord Select Word",
                                                     "mnuSelectLine Select Line",
                                                     "mnuSelectPara Select Paragraph",
                                                     "mnuSelectAll Select All",
                                                     "-",
                                                     "mnuIndent Indent",
                                                     "mnuUnindent Unindent",
                                                     "mnuChangeCase Change Case",
                                                     "(",
                                                     "mnuToUpper Change to upper case",
                                                     "mnuToLower Change to lower case",
                                                     ")",
                                                     "mnuLineDelete Line Delete",
                                                     "(",
                                                     "mnuCutLine Cut Line",
                                                     "mnuDeleteLine Delete Line",
                                                     "mnuDeleteToStart Delete to Start of Line",
                                                     "mnuDeleteToEnd Delete to End of Line",
                                                     ")",
                                                     "-",
                                                     "mnuToggleBookmark Toggle Bookmark",
                                                     "mnuFirstBookmark First Bookmark",
                                                     "mnuLastBookmark Last Bookmark",
                                                     "-",
                                                     "mnuReadonly ReadOnly",
                                                     "mnuProp Properties..."}));
}

TEST_F(ContextMenusOfADocument, TheHexMenuHasItsEntriesInTheirOrder) {
    QStringList entries = listOf(menu("HEX"));
    entries.removeAll(u"-"_qs);
    EXPECT_EQ(entries,
              QStringList({"mnuHexCopy Copy", "mnuHexUndo Undo", "mnuHexFind Find...", "mnuHexReplace Replace...",
                           "mnuHexGotoPage Goto Page...", "mnuHexGotoOffset Goto Offset...",
                           "mnuHexToggleBookmark Toggle Bookmark", "mnuHexDelBookmark Delete Selected Bookmark",
                           "mnuHexDelAllBookmark Bookmark Clear", "mnuHexReadonly ReadOnly"}));
}

TEST_F(ContextMenusOfADocument, EntriesWithAPictureHaveIt) {
    for (const char* name :
         {"mnuCopy", "mnuPaste", "mnuCut", "mnuUndo", "mnuRedo", "mnuFind", "mnuSelectLine", "mnuSelectAll",
          "mnuIndent", "mnuUnindent", "mnuToUpper", "mnuToLower", "mnuToggleBookmark", "mnuReadonly", "mnuProp"}) {
        EXPECT_FALSE(text(name).icon().isNull()) << name;
    }
    EXPECT_TRUE(text("mnuGoto").icon().isNull());
}

TEST_F(ContextMenusOfADocument, WhatWouldChangeTheTextIsOffForAReadOnlyDocument) {
    ask();
    EXPECT_EQ(unlockedOnly().size(), 8);
    EXPECT_FALSE(text("mnuReadonly").isChecked());
    m_document.ChangeToReadOnly();
    ask();
    EXPECT_TRUE(unlockedOnly().isEmpty());
    EXPECT_TRUE(text("mnuReadonly").isChecked());
    EXPECT_TRUE(text("mnuCopy").isEnabled());
    EXPECT_TRUE(text("mnuSelectAll").isEnabled());
    m_document.ChangeToReadOnly();
    ask();
    EXPECT_EQ(unlockedOnly().size(), 8);
    EXPECT_FALSE(text("mnuReadonly").isChecked());
}

TEST_F(ContextMenusOfADocument, TheHexMenuFollowsTheLock) {
    ContextMenus menus(m_document);
    const QList<QMenu*> built = m_document.findChildren<QMenu*>(u"HEX"_qs);
    ASSERT_EQ(built.size(), 2);
    auto* undo = built.last()->findChild<QAction*>(u"mnuHexUndo"_qs);
    auto* readOnly = built.last()->findChild<QAction*>(u"mnuHexReadonly"_qs);
    m_document.ChangeToReadOnly();
    menus.show(u"HEX"_qs, QPoint(1, 1));
    EXPECT_FALSE(undo->isEnabled());
    EXPECT_TRUE(readOnly->isChecked());
    m_document.ChangeToReadOnly();
    menus.show(u"HEX"_qs, QPoint(1, 1));
    EXPECT_TRUE(undo->isEnabled());
    EXPECT_FALSE(readOnly->isChecked());
    built.last()->close();
}

TEST_F(ContextMenusOfADocument, AnEntryRunsTheOperationOfItsName) {
    insert(u"one two"_qs);
    text("mnuSelectAll").trigger();
    EXPECT_EQ(view().SelText(), u"one two"_qs);
    text("mnuToUpper").trigger();
    EXPECT_EQ(view().Text(), u"ONE TWO"_qs);
    text("mnuUndo").trigger();
    EXPECT_EQ(view().Text(), u"one two"_qs);
    text("mnuRedo").trigger();
    EXPECT_EQ(view().Text(), u"ONE TWO"_qs);
    text("mnuSelectAll").trigger();
    text("mnuToLower").trigger();
    EXPECT_EQ(view().Text(), u"one two"_qs);
    select(7, 7);
    text("mnuSelectWord").trigger();
    EXPECT_EQ(view().SelText(), u"two"_qs);
    text("mnuCut").trigger();
    EXPECT_EQ(view().Text(), u"one "_qs);
    text("mnuPaste").trigger();
    text("mnuPaste").trigger();
    EXPECT_EQ(view().Text(), u"one twotwo"_qs);
    select(3, 3);
    text("mnuDeleteToEnd").trigger();
    EXPECT_EQ(view().Text(), u"one"_qs);
    text("mnuDeleteLine").trigger();
    EXPECT_EQ(view().Text(), QString());
}

TEST_F(ContextMenusOfADocument, BookmarksAreSetAndWalked) {
    insert(u"1\n2\n3"_qs);
    for (const int line : {2, 0}) {
        view().GotoTextLine(line);
        text("mnuToggleBookmark").trigger();
        EXPECT_TRUE(isBookmarked(line));
    }
    text("mnuLastBookmark").trigger();
    EXPECT_EQ(view().CurrentLine(), 2);
    text("mnuFirstBookmark").trigger();
    EXPECT_EQ(view().CurrentLine(), 0);
}

TEST_F(ContextMenusOfADocument, ReadOnlyIsAskedOfTheFrame) {
    m_host.take();
    text("mnuReadonly").trigger();
    hex("mnuHexReadonly").trigger();
    EXPECT_EQ(m_host.take(), QStringList({u"ChangeReadOnly"_qs, u"ChangeReadOnly"_qs}));
}

TEST_F(ContextMenusOfADocument, TheRightButtonBringsTheMenuUpWhenItIsReleased) {
    m_document.resize(300, 200);
    m_document.show();
    QWidget* viewport = view().findChild<QAbstractScrollArea*>(u"TextControl1"_qs)->viewport();
    QTest::mousePress(viewport, Qt::RightButton, Qt::NoModifier, QPoint(40, 10));
    EXPECT_FALSE(menu("EditText").isVisible());
    QTest::mouseRelease(viewport, Qt::RightButton, Qt::NoModifier, QPoint(40, 10));
    EXPECT_TRUE(menu("EditText").isVisible());
    menu("EditText").close();
}
