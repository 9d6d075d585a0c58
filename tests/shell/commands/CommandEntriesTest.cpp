#include "shell/FrameFixture.h"
#include "shell/bars/CoolBar.h"
#include "shell/bars/SearchPanel.h"
#include "shell/bars/SidePanel.h"
#include "shell/commands/CommandTable.h"
#include "shell/commands/ExpectedCommands.h"
#include "shell/commands/MenuText.h"
#include "shell/commands/ToolTable.h"
#include "shell/commands/ViewToggles.h"

#include <QApplication>
#include <QCheckBox>
#include <QClipboard>
#include <QComboBox>
#include <QDialog>
#include <QLineEdit>
#include <QMenu>
#include <QMenuBar>
#include <QSignalSpy>
#include <QTimer>
#include <QToolBar>
#include <QToolButton>

class CommandsOfTheFrame : public FrameFixture {
 protected:
    QStringList marked() {
        QStringList names;
        for (const CommandRow& row : commandTable()) {
            if (entry(row.name)->isChecked())
                names << QString::fromLatin1(row.name);
        }
        return names;
    }
    void press(Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
        textWidget().setFocus();
        QTest::keyClick(&textWidget(), key, modifiers);
    }
    void expectEnabled(char state) {
        for (const ExpectedCommand& expected : ExpectedCommands) {
            if (QLatin1String(expected.enabled) == QLatin1String("TLHX"))
                continue;
            EXPECT_EQ(entry(expected.name)->isEnabled(), strchr(expected.enabled, state) != nullptr) << expected.name;
        }
        for (const ExpectedButton& expected : ExpectedButtons) {
            EXPECT_EQ(button(expected.key)->isEnabled(), strchr(expected.enabled, state) != nullptr) << expected.key;
        }
    }
};

TEST_F(CommandsOfTheFrame, EveryRowIsAnEntryOfItsMenu) {
    start();
    for (const CommandRow& row : commandTable()) {
        QAction* action = entry(row.name);
        ASSERT_NE(action, nullptr) << row.name;
        EXPECT_EQ(action->objectName(), QString::fromLatin1(row.name));
        EXPECT_EQ(MenuText::captionOf(*action), QString::fromLatin1(row.caption)) << row.name;
        EXPECT_EQ(action->shortcut().toString(), QString::fromLatin1(row.key)) << row.name;
        EXPECT_EQ(action->icon().isNull(), *row.icon == '\0') << row.name;
        EXPECT_EQ(action->isVisible(), row.visible) << row.name;
        const QMenu* menu = house().entries.menu(row.parent);
        const QList<QAction*> neighbours = menu == nullptr ? m_frame->menuBar()->actions() : menu->actions();
        EXPECT_TRUE(neighbours.contains(action)) << row.name;
    }
}

TEST_F(CommandsOfTheFrame, EveryEntryIsEnabledByTheStateOfItsDocument) {
    start();
    expectEnabled('T');
    run("mnuReadonly");
    expectEnabled('L');
    run("mnuReadonly");
    expectEnabled('T');
}

TEST_F(CommandsOfTheFrame, AfterTheLastDocumentSaveStaysEnabledAndDoesNothing) {
    start();
    run("mnuReadonly");
    run("mnuReadonly");
    run("mnuFileClose");
    ASSERT_EQ(active(), nullptr);
    expectEnabled('T');
    run("mnuFileSave");
    EXPECT_TRUE(m_prompts.fileDialogs.empty());
    EXPECT_TRUE(m_prompts.messages.isEmpty());
}

TEST_F(CommandsOfTheFrame, WithoutADocumentNoCommandDoesAnything) {
    start();
    run("mnuFileClose");
    const QStringList before = marked();
    for (const CommandRow& row : commandTable()) {
        if (row.target.document != nullptr)
            run(row.name);
    }
    for (const ViewToggle& option : viewToggles())
        run(option.entry);
    for (const char* name : {"mnuFindNext", "mnuFindPrevious", "mnuToggleHex", "mnuReadonly"})
        run(name);
    EXPECT_EQ(marked(), before);
    EXPECT_TRUE(m_prompts.messages.isEmpty());
}

TEST_F(CommandsOfTheFrame, AViewOptionTurnsTheSameByEntryAndByButton) {
    start();
    for (const ViewToggle& option : viewToggles()) {
        const bool before = (active()->*option.isOn)();
        EXPECT_EQ(entry(option.entry)->isChecked(), before) << option.entry;
        run(option.entry);
        EXPECT_EQ((active()->*option.isOn)(), !before) << option.entry;
        EXPECT_EQ(entry(option.entry)->isChecked(), !before) << option.entry;
        if (*option.button == '\0')
            continue;
        EXPECT_EQ(button(option.button)->isChecked(), !before) << option.entry;
        button(option.button)->trigger();
        EXPECT_EQ((active()->*option.isOn)(), before) << option.entry;
        EXPECT_EQ(entry(option.entry)->isChecked(), before) << option.entry;
        EXPECT_EQ(button(option.button)->isChecked(), before) << option.entry;
    }
}

TEST_F(CommandsOfTheFrame, ViewOptionsFollowTheActiveDocument) {
    start();
    run("mnuShowTabSpace");
    run("mnuFileNew");
    EXPECT_FALSE(entry("mnuShowTabSpace")->isChecked());
    EXPECT_FALSE(button("ShowSpace")->isChecked());
    strip().setCurrentIndex(0);
    EXPECT_TRUE(entry("mnuShowTabSpace")->isChecked());
    EXPECT_TRUE(button("ShowSpace")->isChecked());
}

TEST_F(CommandsOfTheFrame, ViewOptionsFollowThePropertiesOfTheControl) {
    start();
    active()->Properties();
    auto* dialog = active()->findChild<QDialog*>(u"ControlProperties"_qs);
    ASSERT_NE(dialog, nullptr);
    dialog->findChild<QCheckBox*>(u"chkWhitespace"_qs)->click();
    dialog->accept();
    EXPECT_TRUE(entry("mnuShowTabSpace")->isChecked());
}

TEST_F(CommandsOfTheFrame, EveryButtonRunsItsCommand) {
    start();
    button("New")->trigger();
    EXPECT_EQ(documents().size(), 2);
    type(u"ab"_qs);
    button("Undo")->trigger();
    EXPECT_EQ(active()->GetEditor()->Text(), QString());
    button("Redo")->trigger();
    EXPECT_EQ(active()->GetEditor()->Text(), u"ab"_qs);
    run("mnuSelectAll");
    button("Cut")->trigger();
    EXPECT_EQ(active()->GetEditor()->Text(), QString());
    button("Paste")->trigger();
    EXPECT_EQ(active()->GetEditor()->Text(), u"ab"_qs);
    button("WindowCascade")->trigger();
    EXPECT_FALSE(house().children.windowOf(active())->isMaximized());
}

TEST_F(CommandsOfTheFrame, AButtonTellsItsKey) {
    start();
    EXPECT_EQ(button("Save")->toolTip(), u"Save (Ctrl+S)"_qs);
    EXPECT_EQ(button("FindPrev")->toolTip(), u"Find Previous (Shift+F3)"_qs);
    EXPECT_EQ(button("SaveAs")->toolTip(), u"Save As"_qs);
    for (const ToolRow& row : toolTable()) {
        if (row.isGap())
            continue;
        const QString name = u"tbToolBar."_qs + QLatin1String(row.key);
        EXPECT_NE(m_frame->findChild<QWidget*>(name), nullptr) << row.key;
    }
}

TEST_F(CommandsOfTheFrame, TheBarsPutWhatHasNoRoomIntoAMenu) {
    start();
    auto* bar = m_frame->findChild<QToolBar*>(u"tbToolBar"_qs);
    m_frame->resize(400, 400);
    QCoreApplication::processEvents();
    auto* more = bar->findChild<QWidget*>(u"qt_toolbar_ext_button"_qs);
    ASSERT_NE(more, nullptr);
    EXPECT_TRUE(more->isVisible());
    EXPECT_FALSE(bar->widgetForAction(button("WindowV"))->isVisible());
    m_frame->resize(1000, 700);
    QCoreApplication::processEvents();
    EXPECT_FALSE(more->isVisible());
    EXPECT_TRUE(bar->widgetForAction(button("WindowV"))->isVisible());
}

TEST_F(CommandsOfTheFrame, AKeyOfAnEnabledEntryWinsOverTheControl) {
    start();
    type(u"one\ntwo"_qs);
    press(Qt::Key_L, Qt::ControlModifier);
    EXPECT_EQ(active()->GetEditor()->Text(), u"one\n"_qs);
    press(Qt::Key_A, Qt::ControlModifier);
    EXPECT_EQ(active()->GetEditor()->SelText(), u"one\n"_qs);
    press(Qt::Key_F2, Qt::ControlModifier);
    EXPECT_TRUE(isBookmarked(active()->GetEditor()->CurrentLine()));
}

TEST_F(CommandsOfTheFrame, AKeyInADisabledSubMenuIsNotTaken) {
    start();
    type(u"one\ntwo"_qs);
    QSignalSpy chosen(entry("mnuDeleteLine"), &QAction::triggered);
    run("mnuReadonly");
    press(Qt::Key_L, Qt::ControlModifier);
    EXPECT_EQ(chosen.count(), 0);
    EXPECT_EQ(active()->GetEditor()->Text(), u"one\ntwo"_qs);
    run("mnuReadonly");
    press(Qt::Key_L, Qt::ControlModifier);
    EXPECT_EQ(chosen.count(), 1);
}

TEST_F(CommandsOfTheFrame, FindInFilesIsBegunWithAnEmptyText) {
    start();
    QString directory = u"none"_qs;
    QTimer::singleShot(0, m_frame.get(), [&] {
        QWidget* dialog = QApplication::activeModalWidget();
        ASSERT_NE(dialog, nullptr);
        EXPECT_EQ(dialog->objectName(), u"frmSearchInFiles"_qs);
        directory = dialog->findChild<QComboBox*>(u"cmbDir"_qs)->currentText();
        dialog->close();
    });
    run("mnuFindInFiles");
    EXPECT_EQ(directory, QString());
}

TEST_F(CommandsOfTheFrame, TheBottomPanelsMarkFollowsWhetherItIsSeen) {
    start();
    const char* const name = "mnulFindReplacePanel";
    SearchPanel& panel = house().searchPanel;
    EXPECT_FALSE(panel.isShown());
    EXPECT_FALSE(entry(name)->isChecked());
    run(name);
    EXPECT_TRUE(panel.isShown());
    EXPECT_TRUE(entry(name)->isChecked());
    house().entries.CheckMenuItem(name, false);
    m_frame->RefreshCheckedItems();
    EXPECT_TRUE(entry(name)->isChecked());
    run(name);
    EXPECT_FALSE(panel.isShown());
    EXPECT_FALSE(entry(name)->isChecked());
    panel.setShown(true);
    EXPECT_TRUE(entry(name)->isChecked());
    panel.findChild<QToolButton*>(u"imgClose"_qs)->click();
    EXPECT_FALSE(panel.isShown());
    EXPECT_FALSE(entry(name)->isChecked());
}

TEST_F(CommandsOfTheFrame, TheBottomPanelStandsBelowSidePanelAndDocuments) {
    start();
    run("mnulFindReplacePanel");
    QWidget& side = house().sidePanel;
    SearchPanel& panel = house().searchPanel;
    const auto expectPlaces = [&] {
        EXPECT_EQ(side.geometry().bottom() + 1, panel.y());
        EXPECT_EQ(panel.x(), 0);
        EXPECT_EQ(panel.width(), m_frame->width());
        EXPECT_EQ(panel.geometry().bottom(), m_frame->centralWidget()->height() - 1);
        EXPECT_GE(panel.height(), 33);
    };
    expectPlaces();
    panel.findChild<QToolButton*>(u"imgMax"_qs)->click();
    EXPECT_EQ(panel.height(), m_frame->height() * 2 / 3);
    expectPlaces();
    m_frame->resize(700, 260);
    expectPlaces();
    m_frame->resize(300, 10);
    expectPlaces();
    EXPECT_EQ(panel.height(), 33);
    m_frame->resize(900, 900);
    EXPECT_EQ(panel.height(), 400);
    expectPlaces();
}

TEST_F(CommandsOfTheFrame, TheRoundOfF6EntersTheBottomPanelWhileItIsShown) {
    start();
    auto* results = new QLineEdit;
    house().searchPanel.hold(results);
    textWidget().setFocus();
    QTest::keyClick(m_frame.get(), Qt::Key_F6, Qt::ShiftModifier);
    EXPECT_NE(m_frame->focusWidget(), results);
    run("mnulFindReplacePanel");
    textWidget().setFocus();
    QTest::keyClick(m_frame.get(), Qt::Key_F6, Qt::ShiftModifier);
    EXPECT_EQ(m_frame->focusWidget(), results);
    QTest::keyClick(m_frame.get(), Qt::Key_F6);
    EXPECT_EQ(m_frame->focusWidget(), &textWidget());
}

TEST_F(CommandsOfTheFrame, TheSidePanelsMarkFollowsWhetherItIsSeen) {
    start();
    const char* const name = "mnuEditExplorer";
    EXPECT_TRUE(house().sidePanel.isShown());
    EXPECT_TRUE(entry(name)->isChecked());
    run(name);
    EXPECT_FALSE(house().sidePanel.isShown());
    EXPECT_FALSE(entry(name)->isChecked());
    house().entries.CheckMenuItem(name, true);
    m_frame->RefreshCheckedItems();
    EXPECT_FALSE(entry(name)->isChecked());
    run(name);
    EXPECT_TRUE(house().sidePanel.isShown());
    EXPECT_TRUE(entry(name)->isChecked());
}

TEST_F(CommandsOfTheFrame, ButtonsStandInTheirOrder) {
    start();
    QStringList expected;
    for (const ExpectedButton& each : ExpectedButtons) {
        expected << QLatin1String("tbToolBar.") + QLatin1String(each.key);
        if (expected.last() == QLatin1String("tbToolBar.Find"))
            expected << u"tbToolBar.SearchHistory"_qs;
    }
    m_frame->resize(1200, 700);
    QCoreApplication::processEvents();
    auto* bar = m_frame->findChild<QToolBar*>(u"tbToolBar"_qs);
    QStringList names;
    int right = 0;
    for (QAction* action : bar->actions()) {
        if (action->isSeparator())
            continue;
        const QWidget* widget = bar->widgetForAction(action);
        names << widget->objectName();
        EXPECT_GE(widget->x(), right) << widget->objectName().toStdString();
        right = widget->geometry().right();
    }
    EXPECT_EQ(names, expected);
}

TEST_F(CommandsOfTheFrame, ChecksOutliveAMarkThatWasWiped) {
    start();
    run("mnuCaseSensitive");
    house().entries.markOnly(u"nothing"_qs);
    EXPECT_TRUE(marked().isEmpty());
    EXPECT_TRUE(house().entries.isChecked("mnuCaseSensitive"));
    m_frame->RefreshCheckedItems();
    EXPECT_TRUE(entry("mnuCaseSensitive")->isChecked());
    EXPECT_TRUE(entry("mnuShowLineNumber")->isChecked());
    EXPECT_TRUE(entry("mnuShowEditToolbar")->isChecked());
    EXPECT_TRUE(entry("mnuShowFilesTab")->isChecked());
    EXPECT_TRUE(entry("mnuSearchContinue")->isChecked());
    EXPECT_TRUE(entry("mnuEditExplorer")->isChecked());
    EXPECT_FALSE(entry("mnulFindReplacePanel")->isChecked());
}

TEST_F(CommandsOfTheFrame, AProjectEnablesItsEntries) {
    start();
    const auto enabled = [this] {
        QStringList names;
        for (const char* name :
             {"mnuAddFavorite", "mnuCloseProject", "mnuDeleteFavorite", "mnuSaveProject", "mnuSaveProjectAs"}) {
            if (entry(name)->isEnabled())
                names << QString::fromLatin1(name);
        }
        return names;
    };
    EXPECT_TRUE(enabled().isEmpty());
    m_frame->SetProjectMenus(true);
    EXPECT_EQ(enabled(), QStringList({u"mnuSaveProject"_qs, u"mnuSaveProjectAs"_qs}));
    m_frame->ProjectFilename = u"/p.qmp"_qs;
    m_frame->SetProjectMenus(false);
    EXPECT_EQ(enabled().size(), 5);
    EXPECT_TRUE(entry("mnuNewProject")->isEnabled());
}

TEST_F(CommandsOfTheFrame, ASaveBringsTheCommandsUpToDate) {
    start();
    open(fileOf("x"));
    house().entries.markOnly(u"nothing"_qs);
    run("mnuFileSave");
    EXPECT_TRUE(entry("mnuShowLineNumber")->isChecked());
}

TEST_F(CommandsOfTheFrame, EveryMenuCanBeWalkedByKeys) {
    start();
    QMenuBar* bar = m_frame->menuBar();
    bar->setActiveAction(entry("mnuFile"));
    for (const CommandRow& row : commandTable()) {
        if (*row.parent != '\0')
            continue;
        EXPECT_EQ(bar->activeAction()->objectName(), QString::fromLatin1(row.name));
        QTest::keyClick(bar, Qt::Key_Right);
    }
    EXPECT_EQ(bar->activeAction(), entry("mnuFile"));
}
