#include "workspace/files/ucFileExplorer.h"
#include "workspace/panel/PanelFixture.h"
#include "workspace/panel/ucExplorer.h"
#include "workspace/panel/ucOpen.h"
#include "workspace/project/ucProject.h"

#include <QAbstractItemView>
#include <QDir>
#include <QLabel>
#include <QTemporaryDir>
#include <QTest>
#include <QToolButton>

class SidePanelOfThreeTabs : public PanelFixture {
 protected:
    void open(const QList<bool>& tabs) {
        for (int tab = 0; tab < 3; ++tab)
            tabs.at(tab) ? m_panel->OpenTab(tab) : m_panel->CloseTab(tab);
    }
    void expectButtonsOfClosedTabs() {
        QCoreApplication::processEvents();  // a tool bar shows and hides its buttons from the event loop
        const char* const keys[] = {"project", "explorer", "open"};
        for (int tab = 0; tab < 3; ++tab) {
            EXPECT_EQ(button(keys[tab]).isVisibleTo(m_panel.get()), !openTabs().at(tab)) << keys[tab];
        }
    }
    void press(QWidget& widget) { QTest::mouseClick(&widget, Qt::LeftButton); }
    /// Drags from a place in a widget by that many pixels.
    void drag(QWidget& widget, const QPoint& from, int by) {
        QTest::mousePress(&widget, Qt::LeftButton, {}, from);
        EXPECT_EQ(band(2).property("Tag"), u"1"_qs);
        QMouseEvent move(QEvent::MouseMove, from + QPoint(0, by), widget.mapToGlobal(from + QPoint(0, by)),
                         Qt::NoButton, Qt::LeftButton, {});
        QCoreApplication::sendEvent(&widget, &move);
        // The widget has moved along with the pointer.
        QTest::mouseRelease(&widget, Qt::LeftButton, {}, from);
        EXPECT_EQ(band(2).property("Tag"), QString());
    }
};

TEST_F(SidePanelOfThreeTabs, TheFirstCallAloneOpensTheListOfOpenFiles) {
    EXPECT_FALSE(m_panel->property("Initialised").toBool());
    m_panel->InitObjects();
    EXPECT_TRUE(m_panel->property("Initialised").toBool());
    EXPECT_EQ(openTabs(), QList<bool>({false, false, true}));
    m_panel->CloseTab(2);
    m_panel->InitObjects();
    EXPECT_EQ(openTabs(), QList<bool>({false, false, false}));
    EXPECT_EQ(m_panel->property("TabCount"), 3);
}

TEST_F(SidePanelOfThreeTabs, TheToolBarHasItsButtonsWithTheirToolTips) {
    const std::pair<const char*, const char*> expected[] = {{"close", "Close Quillmark Explorer"},
                                                            {"resize", "Open all tabs"},
                                                            {"project", "Open project tab"},
                                                            {"explorer", "Open file explorer tab"},
                                                            {"open", "Open file tab"}};
    for (const auto& [key, tip] : expected) {
        EXPECT_EQ(button(key).toolTip(), QLatin1String(tip));
        EXPECT_FALSE(static_cast<QToolButton&>(button(key)).icon().isNull()) << key;
    }
}

TEST_F(SidePanelOfThreeTabs, ATabsButtonIsShownExactlyWhileTheTabIsClosed) {
    showPanel();
    for (const QList<bool>& tabs : {QList<bool>{false, false, false}, {true, false, true}, {true, true, true}}) {
        open(tabs);
        EXPECT_EQ(openTabs(), tabs);
        expectButtonsOfClosedTabs();
    }
    m_panel->RestoreItem(u"False\t0\tTrue\t0\tFalse\t0\t"_qs);
    expectButtonsOfClosedTabs();
    m_panel->OpenAllTabs();
    expectButtonsOfClosedTabs();
    m_panel->SetTab(u"1\tFalse\t0"_qs);
    expectButtonsOfClosedTabs();
}

TEST_F(SidePanelOfThreeTabs, ClosingAllTabsLeavesTheToolBarWithTheirButtons) {
    showPanel();
    m_panel->OpenAllTabs();
    m_panel->RestoreItem(u"False\t0\tFalse\t0\tFalse\t0\t"_qs);
    for (const char* key : {"close", "resize", "project", "explorer", "open"}) {
        EXPECT_TRUE(button(key).isVisible()) << key;
    }
}

TEST_F(SidePanelOfThreeTabs, TheButtonsOpenTheirTabsAndGiveThemTheKeyboard) {
    showPanel();
    const std::pair<const char*, const char*> buttons[] = {
        {"project", "ucProject1"}, {"explorer", "ucFileExplorer1"}, {"open", "ucOpen1"}};
    for (int tab = 0; tab < 3; ++tab) {
        press(button(buttons[tab].first));
        EXPECT_TRUE(openTabs().at(tab));
        const QWidget& content = part(QLatin1String(buttons[tab].second));
        EXPECT_TRUE(content.isAncestorOf(m_panel->focusWidget()) || m_panel->focusWidget() == &content)
            << buttons[tab].first;
    }
}

TEST_F(SidePanelOfThreeTabs, TheResizeButtonOpensAllTabsWithAThirdEach) {
    showPanel();
    press(button("resize"));
    EXPECT_EQ(openTabs(), QList<bool>({true, true, true}));
    const int height = band(0).parentWidget()->height() * 15;
    EXPECT_EQ(tops(), QList<int>({0, height / 3, 2 * height / 3}));
}

TEST_F(SidePanelOfThreeTabs, TabsOpenedBeforeThePanelIsShownHaveAThirdEachToo) {
    m_panel->resize(240, 40);
    m_panel->OpenAllTabs();
    m_panel->resize(Size);
    showPanel();
    const int height = band(0).parentWidget()->height() * 15;
    EXPECT_EQ(tops(), QList<int>({0, height / 3, 2 * height / 3}));
}

TEST_F(SidePanelOfThreeTabs, TheCloseButtonAsksTheFrameToHideThePanel) {
    showPanel();
    press(button("close"));
    EXPECT_EQ(m_host.take(), QStringList(u"hide"_qs));
    EXPECT_TRUE(m_panel->isVisible());
}

TEST_F(SidePanelOfThreeTabs, OpeningATabAgainDoesNoHarm) {
    showPanel();
    m_panel->OpenAllTabs();
    const QList<int> before = tops();
    m_panel->OpenTab(1);
    EXPECT_EQ(openTabs(), QList<bool>({true, true, true}));
    EXPECT_EQ(tops(), before);
    EXPECT_LT(band(0).geometry().bottom(), band(1).y());
    EXPECT_LT(band(1).geometry().bottom(), band(2).y());
    expectButtonsOfClosedTabs();
}

TEST_F(SidePanelOfThreeTabs, TheTitlesHaveTwoButtonsThatEnlargeAndClose) {
    showPanel();
    m_panel->OpenAllTabs();
    press(part(u"imgUp(0)"_qs));
    EXPECT_GT(band(0).height(), band(1).height() + band(2).height());
    press(part(u"imgCenter(1)"_qs));
    EXPECT_EQ(openTabs(), QList<bool>({true, false, true}));
}

TEST_F(SidePanelOfThreeTabs, BandsFillThePanelWithAGapBetweenThem) {
    showPanel();
    m_panel->OpenAllTabs();
    m_panel->resize(300, 500);
    QCoreApplication::processEvents();
    for (int tab = 0; tab < 3; ++tab) {
        EXPECT_EQ(band(tab).width(), 300);
    }
    for (int tab = 1; tab < 3; ++tab) {
        const int gap = band(tab).y() - band(tab - 1).geometry().bottom() - 1;
        EXPECT_GE(gap, 1);
        EXPECT_LE(gap, 2);
    }
    EXPECT_EQ(band(2).geometry().bottom() + 1, band(2).parentWidget()->height());
}

TEST_F(SidePanelOfThreeTabs, ABarIsDraggedAtItsTitleItsTextOrItsPicture) {
    showPanel();
    m_panel->OpenAllTabs();
    for (const auto& [name, place] : {std::pair{u"picTitle(2)"_qs, QPoint(60, 4)},
                                      {u"lbTitle(2)"_qs, QPoint(5, 5)},
                                      {u"imgIcon(2)"_qs, QPoint(5, 5)}}) {
        const int before = band(2).y();
        drag(part(name), place, -40);
        EXPECT_EQ(band(2).y(), before - 40) << name.toStdString();
    }
}

TEST_F(SidePanelOfThreeTabs, ABarIsCaughtInTheGapAboveItsTitleToo) {
    showPanel();
    m_panel->OpenAllTabs();
    QWidget& area = *band(0).parentWidget();
    const int before = band(2).y();
    QTest::mousePress(&area, Qt::LeftButton, {}, QPoint(50, before - 1));
    QTest::mouseMove(&area, QPoint(50, before + 29));
    QTest::mouseRelease(&area, Qt::LeftButton, {}, QPoint(50, before + 29));
    EXPECT_EQ(band(2).y(), before + 30);
}

TEST_F(SidePanelOfThreeTabs, OtherPressesDragNothing) {
    showPanel();
    m_panel->OpenAllTabs();
    const QList<int> before = tops();
    QTest::mousePress(&band(2), Qt::LeftButton, {}, QPoint(60, band(2).height() - 3));
    EXPECT_EQ(band(2).property("Tag"), QString());
    QTest::mouseRelease(&band(2), Qt::LeftButton, {}, QPoint(60, band(2).height() - 3));
    QTest::mousePress(&band(2), Qt::RightButton, {}, QPoint(60, 4));
    EXPECT_EQ(band(2).property("Tag"), QString());
    QTest::mouseRelease(&band(2), Qt::RightButton, {}, QPoint(60, 4));
    QTest::mouseMove(&band(2), QPoint(60, 90));
    EXPECT_EQ(tops(), before);
}

TEST_F(SidePanelOfThreeTabs, BarsAreMovedAndTabsClosedByKeys) {
    showPanel();
    m_panel->OpenAllTabs();
    QWidget& title = *part(u"lbTitle(1)"_qs).parentWidget();
    EXPECT_TRUE(title.focusPolicy() & Qt::TabFocus);
    title.setFocus();
    const int before = tops().at(1);
    QTest::keyClick(&title, Qt::Key_Down);
    const int step = tops().at(1) - before;
    EXPECT_GT(step, 0);
    QTest::keyClick(&title, Qt::Key_Up);
    EXPECT_EQ(tops().at(1), before);
    QTest::keyClick(&title, Qt::Key_PageDown);
    EXPECT_GT(tops().at(1), before + step);
    const QList<int> moved = tops();
    for (const auto modifier : {Qt::ControlModifier, Qt::ShiftModifier, Qt::AltModifier, Qt::MetaModifier}) {
        for (const auto key : {Qt::Key_Up, Qt::Key_PageDown, Qt::Key_Return, Qt::Key_Delete})
            QTest::keyClick(&title, key, modifier);
    }
    EXPECT_EQ(tops(), moved);
    EXPECT_EQ(openTabs(), QList<bool>({true, true, true}));
    QTest::keyClick(&title, Qt::Key_Return);
    EXPECT_GT(band(1).height(), band(0).height() + band(2).height());
    QTest::keyClick(&title, Qt::Key_Delete);
    EXPECT_EQ(openTabs(), QList<bool>({true, false, true}));
}

TEST_F(SidePanelOfThreeTabs, TitlesAndButtonsHaveNamesForScreenReaders) {
    m_panel->SetProjectName(u"/home/u/work.qmp"_qs, u"work"_qs);
    const char* const names[] = {"work", "File Explorer", "Open Files"};
    for (int tab = 0; tab < 3; ++tab) {
        const QString name = QLatin1String(names[tab]);
        QWidget& label = part(u"lbTitle(%1)"_qs.arg(tab));
        EXPECT_EQ(static_cast<QLabel&>(label).text(), name);
        EXPECT_EQ(label.parentWidget()->accessibleName(), name);
        EXPECT_EQ(part(u"imgUp(%1)"_qs.arg(tab)).accessibleName(), u"Enlarge "_qs + name);
        EXPECT_EQ(part(u"imgCenter(%1)"_qs.arg(tab)).accessibleName(), u"Close "_qs + name);
    }
}

TEST_F(SidePanelOfThreeTabs, TheProjectsTabBearsItsNameAndPath) {
    auto& label = part<QLabel>(u"lbTitle(0)"_qs);
    EXPECT_EQ(label.text(), u"Project"_qs);
    m_panel->SetProjectName(u"/home/u/a <b> & c.qmp"_qs, u"a <b> & c"_qs);
    EXPECT_EQ(label.text(), u"a <b> & c"_qs);
    EXPECT_EQ(label.toolTip(), u"/home/u/a <b> & c.qmp"_qs);
    m_panel->SetProjectName({}, u"[New Project]"_qs);
    EXPECT_EQ(label.toolTip(), QString());
}

TEST_F(SidePanelOfThreeTabs, TheFocusOfABandIsThatOfItsContent) {
    showPanel();
    m_panel->OpenAllTabs();
    band(2).setFocus();
    EXPECT_TRUE(part(u"ucOpen1"_qs).isAncestorOf(m_panel->focusWidget()));
}

TEST_F(SidePanelOfThreeTabs, TheFocusOfThePanelIsThatOfTheFirstOpenTab) {
    showPanel();
    m_panel->OpenTab(2);
    m_panel->setFocus();
    EXPECT_TRUE(part(u"ucOpen1"_qs).isAncestorOf(m_panel->focusWidget()));
    m_panel->CloseTab(2);
    m_panel->setFocus();
    EXPECT_EQ(m_panel->focusWidget(), &button("close"));
}

TEST_F(SidePanelOfThreeTabs, TheEventsOfTheTabsReachTheFrame) {
    Q_EMIT part<ucProject>(u"ucProject1"_qs).openFile(u"/a"_qs);
    Q_EMIT part<ucFileExplorer>(u"ucFileExplorer1"_qs).openFile(u"/b"_qs);
    auto& open = part<ucOpen>(u"ucOpen1"_qs);
    Q_EMIT open.activateFile(u"F7"_qs);
    Q_EMIT open.closeFile(u"F7"_qs);
    Q_EMIT open.saveFile(u"F7"_qs);
    EXPECT_EQ(m_host.take(), QStringList({u"open /a"_qs, u"open /b"_qs, u"select F7"_qs, u"close"_qs, u"save"_qs}));
}

TEST_F(SidePanelOfThreeTabs, ThePanelIsBusyWhileRowsAreDraggedOut) {
    auto& files = part<ucFileExplorer>(u"ucFileExplorer1"_qs);
    EXPECT_EQ(m_panel->property("Busy"), 0);
    Q_EMIT files.dragStarted();
    EXPECT_EQ(m_panel->property("Busy"), 1);
    EXPECT_TRUE(m_panel->Busy());
    Q_EMIT files.dragEnded();
    EXPECT_EQ(m_panel->property("Busy"), 0);
    EXPECT_EQ(m_host.take(), QStringList({u"drag starts"_qs, u"drag ends"_qs}));
}

TEST_F(SidePanelOfThreeTabs, GoingToAFolderOpensTheFileExplorer) {
    Q_EMIT part<ucOpen>(u"ucOpen1"_qs).gotoFolder(u"/etc/hosts"_qs);
    EXPECT_EQ(openTabs(), QList<bool>({false, true, false}));
    m_panel->CloseTab(1);
    m_panel->GotoPath(u"FOLDER/etc"_qs);
    EXPECT_EQ(openTabs(), QList<bool>({false, true, false}));
}

TEST_F(SidePanelOfThreeTabs, AnOpenFileExplorerStaysAsItIsWhenItGoesToAFolder) {
    m_panel->OpenAllTabs();
    const QList<int> before = tops();
    m_panel->GotoPath(u"FOLDER/etc"_qs);
    EXPECT_EQ(tops(), before);
}

TEST_F(SidePanelOfThreeTabs, OpenFilesArePassedOnToTheirList) {
    m_panel->AddFile(u"Document1"_qs, u"F1"_qs);
    m_panel->AddFile(u"Document2"_qs, u"F2"_qs);
    m_panel->SetFile(u"/home/u/a.txt"_qs, u"F1"_qs, 2);
    m_panel->FileSelected(u"F2"_qs);
    auto& list = *part(u"ucOpen1"_qs).findChild<QAbstractItemView*>(u"lvOpen"_qs);
    // The list of the file explorer has the same name.
    ASSERT_EQ(list.model()->rowCount(), 2);
    EXPECT_EQ(list.model()->index(0, 0).data(), u"a.txt"_qs);
    EXPECT_EQ(list.currentIndex().data(Qt::UserRole), u"F2"_qs);
    m_panel->RemoveFile(u"F2"_qs);
    EXPECT_EQ(list.model()->rowCount(), 1);
    m_panel->ClearExplorer();
    EXPECT_EQ(list.model()->rowCount(), 0);
}

TEST_F(SidePanelOfThreeTabs, TheIconsSettingIsPassedOn) {
    m_panel->setDefaultSysIcon(true);
    EXPECT_TRUE(m_panel->property("DefaultSysIcon").toBool());
    EXPECT_TRUE(part<ucOpen>(u"ucOpen1"_qs).DefaultSysIcon());
    m_panel->setProperty("DefaultSysIcon", false);
    EXPECT_FALSE(part<ucOpen>(u"ucOpen1"_qs).DefaultSysIcon());
}

TEST_F(SidePanelOfThreeTabs, ThePanelIsSavedAsTheLinesOfAProjectFile) {
    showPanel();
    m_panel->RestoreItem(u"True\t0\tFalse\t0\tTrue\t3000\t"_qs);
    const QStringList lines = m_panel->SaveItem();
    ASSERT_EQ(lines.size(), 5);
    EXPECT_EQ(lines.at(0), u"<<PROJECT FILE>>"_qs);
    EXPECT_EQ(lines.at(1), u"<<EXPLORER>>"_qs);
    EXPECT_EQ(lines.at(3), u"<<TAB POSITION>>"_qs);
    EXPECT_TRUE(lines.at(4).startsWith(u"True\t0\tFalse\t"_qs));
    EXPECT_TRUE(lines.at(4).endsWith(u"\tTrue\t3000\t"_qs));
    EXPECT_EQ(m_panel->SaveItem(false), lines.mid(1));

    m_panel->OpenAllTabs();
    m_panel->RestoreItem(lines.at(4));
    EXPECT_EQ(openTabs(), QList<bool>({true, false, true}));
    EXPECT_EQ(m_panel->SaveItem().at(4).split(u'\t').at(5), u"3000"_qs);
}

TEST_F(SidePanelOfThreeTabs, ItemsWhoseNameWouldBreakALineAreLeftOutOfTheProjectFile) {
    for (const char* name : {"/a\tb", "/a\nb", "/a\rb", "/kept"})
        m_panel->AddProjectItem(QLatin1String(name), u"FILE"_qs);
    EXPECT_EQ(m_panel->PjtItemCount(), 4);
    EXPECT_EQ(m_panel->SaveItem().mid(0, 3),
              QStringList({u"<<PROJECT FILE>>"_qs, u"FILE\t/kept"_qs, u"<<EXPLORER>>"_qs}));
}

TEST_F(SidePanelOfThreeTabs, ASelectedFolderWhoseNameWouldBreakALineIsLeftOutOfTheProjectFile) {
    showPanel();
    const QTemporaryDir folder;
    QStringList paths;
    for (const char* name : {"a\tb", "a\nb", "a\rb"}) {
        paths << folder.filePath(QLatin1String(name));
        ASSERT_TRUE(QDir().mkpath(paths.last()));
    }
    for (const QString& path : paths) {
        m_panel->GotoPath(u"FOLDER"_qs + path);
        ASSERT_EQ(part<ucFileExplorer>(u"ucFileExplorer1"_qs).selectedKey(), u"FOLDER"_qs + path);
        const QStringList lines = m_panel->SaveItem();
        ASSERT_EQ(lines.size(), 5);
        EXPECT_EQ(lines.at(1), u"<<EXPLORER>>"_qs);
        EXPECT_EQ(lines.at(2), QString());
        EXPECT_EQ(lines.at(3), u"<<TAB POSITION>>"_qs);
    }
}

TEST_F(SidePanelOfThreeTabs, TabsThatDoNotExistAreIgnored) {
    showPanel();
    m_panel->OpenAllTabs();
    for (const int tab : {-1, 3, 99}) {
        m_panel->OpenTab(tab);
        m_panel->CloseTab(tab);
    }
    m_panel->SetTab(u"3\tFalse\t1"_qs);
    m_panel->SetTab({});
    EXPECT_EQ(openTabs(), QList<bool>({true, true, true}));
}
