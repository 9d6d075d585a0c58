#include "settings/Settings.h"
#include "settings/files/OwnTextFile.h"
#include "settings/registry/MemoryRegistry.h"
#include "support/ScriptedPrompts.h"
#include "widgets/RowInput.h"
#include "workspace/files/FolderFixture.h"
#include "workspace/files/SlowDisk.h"
#include "workspace/files/ucFileExplorer.h"
#include "workspace/host/NotedHost.h"

#include <QApplication>
#include <QContextMenuEvent>
#include <QDialog>
#include <QHeaderView>
#include <QLabel>
#include <QMenu>
#include <QScrollBar>
#include <QSignalSpy>
#include <QSplitter>
#include <QTest>
#include <QTimer>
#include <QTreeView>

#include <memory>

namespace {

/// The folder of the test is a removable volume.
class FileExplorer : public FolderFixture {
 protected:
    void SetUp() override {
        forgetLists();
        m_disk->volumeList.volumes.append({root(), false});
        make();
    }
    void TearDown() override {
        m_disk->release();
        m_explorer.reset();
        forgetLists();
    }
    /// By the key for menus.
    static void askForMenu(QWidget& view) {
        const QPoint middle = view.rect().center();
        QContextMenuEvent event(QContextMenuEvent::Keyboard, middle, view.mapToGlobal(middle));
        QCoreApplication::sendEvent(&view, &event);
    }
    static void forgetLists() {
        QFile::remove(OwnTextFile::path(u"FavoriteDir.idx"_qs));
        QFile::remove(OwnTextFile::path(u"RecentDir.idx"_qs));
    }
    void make() {
        m_explorer =
            std::make_unique<ucFileExplorer>(WorkspaceServices{m_prompts, m_settings, m_host}, m_disk, nullptr);
        m_tree = m_explorer->findChild<QTreeView*>(u"t1"_qs);
        m_list = m_explorer->findChild<QTreeView*>(u"lvOpen"_qs);
        ASSERT_TRUE(m_tree && m_list);
    }

    QString rootKey() const { return u"REMOVABLE"_qs + root(); }
    QString keyOf(const QString& name) const { return u"FOLDER"_qs + in(name); }
    /// Shows the files of the test's folder.
    void gotoRoot() { m_explorer->GotoPath(rootKey()); }
    QStringList column(int number = 0) const {
        QStringList texts;
        for (int row = 0; row < m_list->model()->rowCount(); ++row)
            texts.append(m_list->model()->index(row, number).data().toString());
        return texts;
    }
    void select(const QStringList& names) {
        m_list->clearSelection();
        for (const QString& name : names) {
            const QModelIndex index = m_list->model()->index(static_cast<int>(column().indexOf(name)), 0);
            ASSERT_TRUE(index.isValid());
            m_list->selectionModel()->select(index, QItemSelectionModel::Select | QItemSelectionModel::Rows);
            m_list->selectionModel()->setCurrentIndex(index, QItemSelectionModel::NoUpdate);
        }
    }
    QModelIndex node(const QString& key) const {
        const QModelIndexList found = m_tree->model()->match(m_tree->model()->index(0, 0), Qt::UserRole, key, 1,
                                                             Qt::MatchExactly | Qt::MatchRecursive);
        return found.value(0);
    }
    QMenu* menu(const char* name) const { return m_explorer->findChild<QMenu*>(QString::fromLatin1(name)); }
    QAction* entry(const char* menuName, const QString& name) const {
        return menu(menuName)->findChild<QAction*>(name);
    }
    void choose(const char* menuName, const char* name) {
        QAction* action = entry(menuName, QString::fromLatin1(name));
        ASSERT_NE(action, nullptr) << name;
        action->trigger();
    }
    static QStringList namesOf(const QMenu& menu) {
        QStringList names;
        for (const QAction* action : menu.actions())
            names.append(action->isSeparator() ? u"-"_qs : action->objectName() + u'=' + action->text());
        return names;
    }
    static QByteArray listFile(const QString& name) { return bytesOf(OwnTextFile::path(name)); }

    std::shared_ptr<SlowDisk> m_disk = std::make_shared<SlowDisk>();
    ScriptedPrompts m_prompts;
    MemoryRegistry m_registry;
    Settings m_settings{m_registry};
    NotedHost m_host;
    std::unique_ptr<ucFileExplorer> m_explorer;
    QTreeView* m_tree = nullptr;
    QTreeView* m_list = nullptr;
};

TEST_F(FileExplorer, ItsPartsBearTheirNamesAndAreReachedByTheKeyboard) {
    EXPECT_EQ(m_explorer->objectName(), u"ucFileExplorer1"_qs);
    const auto* bar = m_explorer->findChild<QSplitterHandle*>(u"Picture2"_qs);
    ASSERT_NE(bar, nullptr);
    for (const QWidget* widget : std::initializer_list<const QWidget*>{m_tree, m_list, bar}) {
        EXPECT_FALSE(widget->accessibleName().isEmpty());
        EXPECT_TRUE(widget->focusPolicy() & Qt::TabFocus);
    }
}

TEST_F(FileExplorer, TheTabKeyComesFromTheTreeToTheBarAndToTheList) {
    QStringList walk;
    for (QWidget* next = m_tree->nextInFocusChain(); next != m_tree; next = next->nextInFocusChain()) {
        if ((next->focusPolicy() & Qt::TabFocus) != 0 && next->isVisibleTo(m_explorer.get()))
            walk.append(next->objectName());
    }
    EXPECT_EQ(walk, QStringList({u"Picture2"_qs, u"lvOpen"_qs}));
}

TEST_F(FileExplorer, TheTreeHasTheFocusThatItIsGiven) {
    m_explorer->show();
    m_explorer->activateWindow();
    QCoreApplication::processEvents();
    m_list->setFocus();
    ASSERT_TRUE(m_list->hasFocus());
    m_explorer->setFocus();
    EXPECT_TRUE(m_tree->hasFocus());
}

TEST_F(FileExplorer, TheTreeMenuHasItsEntriesInOrder) {
    EXPECT_EQ(namesOf(*menu("Folder")),
              QStringList({u"mnuRefresh=Refresh"_qs, u"mnuSetAsRoot=Set Directory as Root"_qs,
                           u"mnuOpenFolder=Open Folder in File Explorer"_qs, u"-"_qs, u"mnuProperties=Properties"_qs,
                           u"mnuShowModifiedDate=Show Modified Date"_qs, u"mnuAddToProject=Add Folder to Project"_qs,
                           u"mnuFavorites=Favorites"_qs, u"mnuRecent=Recent"_qs,
                           u"mnuWndowDirectory=Windows Directory"_qs, u"mnuSystemDirectory=System Directory"_qs,
                           u"mnuDesktop=Desktop"_qs, u"mnuMyDocuments=My Documents"_qs}));
    EXPECT_EQ(namesOf(*menu("mnuFavorites")),
              QStringList({u"mnuAddFavFolders=Add Folder to Favorites"_qs,
                           u"mnuDelFavFolders=Delete Folder from Favorites"_qs, u"mnuFavFolders=Folder(s)"_qs}));
    EXPECT_EQ(namesOf(*menu("mnuRecent")), QStringList(u"mnuRecentFolder=Folder(s)"_qs));
}

TEST_F(FileExplorer, TheListMenuHasItsEntriesInOrder) {
    EXPECT_EQ(namesOf(*menu("File")),
              QStringList({u"mnuOpenFile=Open Selected Files"_qs, u"mnuRenameFile=Rename File"_qs,
                           u"mnuDuplicateFile=Duplicate File"_qs, u"mnuDeleteSelectedFile=Delete Selected File(s)"_qs,
                           u"mnuFileFiltering=File Filtering"_qs, u"mnuAddFileToProject=Add Files(s) to Project"_qs,
                           u"mnuOpenFolder=Open Folder in File Explorer"_qs, u"mnuProperties=Properties"_qs,
                           u"mnuShowModifiedDate=Show Modified Date"_qs, u"mnuWndowDirectory=Windows Directory"_qs,
                           u"mnuSystemDirectory=System Directory"_qs, u"mnuDesktop=Desktop"_qs,
                           u"mnuMyDocuments=My Documents"_qs}));
    EXPECT_EQ(namesOf(*menu("mnuFileFiltering")),
              QStringList({u"mnuSetFilter=Set Filter"_qs, u"mnuClearFilter=Clear Filter"_qs}));
}

TEST_F(FileExplorer, TheMenuKeyOpensTheListMenuAtTheCurrentRow) {
    for (int n = 100; n < 200; ++n)
        makeFile(QString::number(n));
    m_explorer->resize(300, 400);
    m_explorer->show();
    gotoRoot();
    QSignalSpy asked(m_list->findChild<RowInput*>(), &RowInput::menuWanted);
    const auto pressMenuKey = [&] {
        askForMenu(*m_list);
        EXPECT_TRUE(menu("File")->isVisible());
        menu("File")->hide();
        return m_list->viewport()->mapFromGlobal(asked.takeFirst().first().toPoint());
    };
    EXPECT_EQ(pressMenuKey(), QPoint(0, 0));
    for (const QString& name : {u"101"_qs, u"199"_qs}) {
        select({name});
        m_list->verticalScrollBar()->setValue(0);
        const QPoint place = pressMenuKey();
        EXPECT_EQ(place, m_list->visualRect(m_list->currentIndex()).bottomLeft());
        EXPECT_TRUE(m_list->viewport()->rect().contains(place)) << name.toStdString();
    }
    EXPECT_EQ(asked.count(), 0);
}

TEST_F(FileExplorer, TheRightButtonOpensBothMenusWhenItIsReleased) {
    makeFile(u"1"_qs);
    m_explorer->show();
    gotoRoot();
    const QPoint at(30, 5);
    const std::pair<QTreeView*, const char*> views[] = {{m_tree, "Folder"}, {m_list, "File"}};
    for (const auto& [view, name] : views) {
        QTest::mousePress(view->viewport(), Qt::RightButton, {}, at);
        EXPECT_FALSE(menu(name)->isVisible()) << name;
        QTest::mouseRelease(view->viewport(), Qt::RightButton, {}, at);
        EXPECT_TRUE(menu(name)->isVisible()) << name;
        menu(name)->hide();
    }
}

TEST_F(FileExplorer, ItIsFilledWhenItIsFirstShown) {
    EXPECT_EQ(m_tree->model()->rowCount(), 0);
    m_explorer->show();
    EXPECT_TRUE(QTest::qWaitFor([&] { return m_tree->model()->rowCount() == 2; }));
}

TEST_F(FileExplorer, SelectingAFolderShowsItsFilesAndAVolumeThoseOfItsRoot) {
    makeFile(u"top"_qs);
    makeFolder(u"a"_qs);
    makeFile(u"a/inner"_qs);
    m_explorer->RefreshView();
    m_tree->setCurrentIndex(node(rootKey()));
    EXPECT_EQ(column(), QStringList(u"top"_qs));
    m_tree->expand(node(rootKey()));
    m_tree->setCurrentIndex(node(keyOf(u"a"_qs)));
    EXPECT_EQ(column(), QStringList(u"inner"_qs));
    EXPECT_EQ(m_explorer->selectedKey(), keyOf(u"a"_qs));
}

TEST_F(FileExplorer, AVolumeThatHasGoneSaysSoAndTheListStays) {
    makeFile(u"top"_qs);
    const QString stick = makeFolder(u"stick"_qs);
    m_disk->volumeList.volumes.append({stick, false});
    gotoRoot();
    ASSERT_TRUE(QDir().rmdir(stick));
    m_tree->setCurrentIndex(node(u"REMOVABLE"_qs + stick));
    EXPECT_EQ(m_prompts.messages, QStringList(u"Drive is not ready"_qs));
    EXPECT_EQ(m_prompts.titles, QStringList(u"Tesmo Explorer"_qs));
    EXPECT_EQ(column(), QStringList(u"top"_qs));
}

TEST_F(FileExplorer, GoingToAVolumeThatHasGoneSaysSoOnceAndTheListStays) {
    makeFile(u"top"_qs);
    const QString stick = makeFolder(u"stick"_qs);
    m_disk->volumeList.volumes.append({stick, false});
    gotoRoot();
    ASSERT_TRUE(QDir().rmdir(stick));
    m_explorer->GotoPath(u"REMOVABLE"_qs + stick);
    EXPECT_EQ(m_prompts.messages, QStringList(u"Drive is not ready"_qs));
    m_explorer->GotoPath(u"FOLDER"_qs + stick + u"/folder"_qs);
    EXPECT_EQ(m_prompts.messages, QStringList(2, u"Drive is not ready"_qs));
    EXPECT_EQ(m_explorer->selectedKey(), u"REMOVABLE"_qs + stick);
    EXPECT_EQ(column(), QStringList(u"top"_qs));
}

TEST_F(FileExplorer, AVolumeThatGoesAfterItWasReadSaysSoOnceToo) {
    makeFile(u"top"_qs);
    const QString stick = makeFolder(u"stick"_qs);
    m_disk->volumeList.volumes.append({stick, false});
    m_explorer->GotoPath(u"REMOVABLE"_qs + stick);
    gotoRoot();
    ASSERT_TRUE(QDir().rmdir(stick));
    m_explorer->GotoPath(u"REMOVABLE"_qs + stick);
    EXPECT_EQ(m_prompts.messages, QStringList(u"Drive is not ready"_qs));
    EXPECT_EQ(column(), QStringList(u"top"_qs));
}

TEST_F(FileExplorer, TheSelectedFolderIsStoredOnlyWhereTheSettingsWantThat) {
    makeFolder(u"a"_qs);
    gotoRoot();
    m_tree->setCurrentIndex(node(keyOf(u"a"_qs)));
    EXPECT_EQ(m_settings.forFrame(u"LastFolderName"_qs), QString());
    m_settings.write(u"LoadLastFolder"_qs, u"1"_qs);
    m_tree->setCurrentIndex(node(rootKey()));
    EXPECT_EQ(m_settings.forFrame(u"LastFolderName"_qs), rootKey());
}

TEST_F(FileExplorer, TheFolderOfTheLastRunIsSelectedAtTheStart) {
    makeFolder(u"a"_qs);
    m_settings.write(u"LastFolderName"_qs, keyOf(u"a"_qs));
    m_explorer->InitObjects();
    EXPECT_EQ(m_explorer->selectedKey(), QString());
    m_settings.write(u"LoadLastFolder"_qs, u"1"_qs);
    m_explorer->InitObjects();
    EXPECT_EQ(m_explorer->selectedKey(), keyOf(u"a"_qs));
}

TEST_F(FileExplorer, TheFolderOfAFileIsSelected) {
    makeFolder(u"a"_qs);
    makeFile(u"a/file"_qs);
    m_explorer->GotoFilePath(in(u"a/file"_qs));
    EXPECT_EQ(m_explorer->selectedKey(), keyOf(u"a"_qs));
    EXPECT_EQ(column(), QStringList(u"file"_qs));
    m_explorer->GotoFilePath(u"/file"_qs);
    EXPECT_EQ(m_explorer->selectedKey(), u"DRIVE/"_qs);
    m_explorer->GotoFilePath(u"no folder"_qs);
    EXPECT_EQ(m_explorer->selectedKey(), u"DRIVE/"_qs);
    EXPECT_EQ(m_prompts.messages, QStringList());
}

TEST_F(FileExplorer, GoingToAPathGivesTheTreeTheFocus) {
    m_explorer->show();
    m_explorer->activateWindow();
    QCoreApplication::processEvents();
    m_list->setFocus();
    ASSERT_TRUE(m_list->hasFocus());
    gotoRoot();
    EXPECT_TRUE(m_tree->hasFocus());
}

TEST_F(FileExplorer, OpeningFilesReportsEachAndRemembersTheFolder) {
    makeFile(u"a"_qs);
    makeFile(u"b"_qs);
    makeFile(u"c"_qs);
    gotoRoot();
    QSignalSpy opened(m_explorer.get(), &ucFileExplorer::openFile);
    select({u"c"_qs, u"a"_qs});
    choose("File", "mnuOpenFile");
    ASSERT_EQ(opened.count(), 2);
    EXPECT_EQ(opened.at(0).first().toString(), in(u"a"_qs));
    EXPECT_EQ(opened.at(1).first().toString(), in(u"c"_qs));
    EXPECT_EQ(listFile(u"RecentDir.idx"_qs), rootKey().toUtf8() + "\r\n");
    EXPECT_NE(entry("mnuRecent", u'2' + rootKey()), nullptr);
    EXPECT_EQ(entry("mnuRecent", u'2' + rootKey())->text(), root());
}

TEST_F(FileExplorer, ADoubleClickAndEnterOpen) {
    makeFile(u"a"_qs);
    gotoRoot();
    m_explorer->resize(300, 400);
    m_explorer->show();
    QSignalSpy opened(m_explorer.get(), &ucFileExplorer::openFile);
    const QPoint place = m_list->visualRect(m_list->model()->index(0, 0)).center();
    QTest::mouseClick(m_list->viewport(), Qt::LeftButton, {}, place);
    QTest::mouseDClick(m_list->viewport(), Qt::LeftButton, {}, place);
    EXPECT_EQ(opened.count(), 1);
    QTest::keyClick(m_list, Qt::Key_Return);
    QTest::keyClick(m_list, Qt::Key_Enter, Qt::KeypadModifier);
    EXPECT_EQ(opened.count(), 3);
    QTest::keyClick(m_list, Qt::Key_Return, Qt::ControlModifier);
    EXPECT_EQ(opened.count(), 3);
}

TEST_F(FileExplorer, TheRowThatTheFocusComesToIsSelected) {
    makeFile(u"a"_qs);
    makeFile(u"b"_qs);
    m_explorer->resize(300, 400);
    m_explorer->show();
    m_explorer->activateWindow();
    gotoRoot();
    ASSERT_TRUE(m_tree->hasFocus());
    QTest::keyClick(m_tree, Qt::Key_Tab);
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
    ASSERT_TRUE(m_list->hasFocus());
    const QSignalSpy opened(m_explorer.get(), &ucFileExplorer::openFile);
    QTest::keyClick(m_list, Qt::Key_Return);
    ASSERT_EQ(opened.count(), 1);
    EXPECT_EQ(opened.first().first().toString(), in(u"a"_qs));
    QTest::keyClick(m_list, Qt::Key_Down);
    EXPECT_EQ(m_list->selectionModel()->selectedRows(), QModelIndexList{m_list->model()->index(1, 0)});
}

TEST_F(FileExplorer, TheFocusLeavesASelectionAndAnEmptyListAsTheyAre) {
    m_explorer->show();
    m_explorer->activateWindow();
    gotoRoot();
    m_list->setFocus(Qt::TabFocusReason);
    EXPECT_FALSE(m_list->selectionModel()->hasSelection());
    makeFile(u"a"_qs);
    makeFile(u"b"_qs);
    gotoRoot();
    select({u"b"_qs});
    m_list->selectionModel()->setCurrentIndex(m_list->model()->index(0, 0), QItemSelectionModel::NoUpdate);
    m_list->setFocus(Qt::TabFocusReason);
    EXPECT_EQ(m_list->selectionModel()->selectedRows(), QModelIndexList{m_list->model()->index(1, 0)});
    m_list->clearSelection();
    m_tree->setFocus();
    m_list->setFocus(Qt::MouseFocusReason);
    EXPECT_FALSE(m_list->selectionModel()->hasSelection());
}

TEST_F(FileExplorer, WithoutASelectionNothingIsOpenedDeletedOrRenamed) {
    makeFile(u"a"_qs);
    gotoRoot();
    m_list->clearSelection();
    const QSignalSpy opened(m_explorer.get(), &ucFileExplorer::openFile);
    m_explorer->OpenSelectedFiles();
    m_explorer->DeleteSelectedFiles();
    choose("File", "mnuRenameFile");
    choose("File", "mnuDuplicateFile");
    choose("File", "mnuProperties");
    EXPECT_EQ(opened.count(), 0);
    EXPECT_EQ(column(), QStringList(u"a"_qs));
}

TEST_F(FileExplorer, TheListMayBeDestroyedByWhatItOpens) {
    makeFile(u"a"_qs);
    makeFile(u"b"_qs);
    gotoRoot();
    select({u"a"_qs, u"b"_qs});
    int opened = 0;
    QObject::connect(m_explorer.get(), &ucFileExplorer::openFile, m_explorer.get(), [&] {
        ++opened;
        m_explorer.release()->deleteLater();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    });
    auto* explorer = m_explorer.get();
    explorer->OpenSelectedFiles();
    EXPECT_EQ(opened, 1);
}

TEST_F(FileExplorer, ARecentFolderThatIsInTheListKeepsItsPlace) {
    makeFile(u"top"_qs);
    makeFolder(u"a"_qs);
    makeFile(u"a/inner"_qs);
    for (const QString& key : {rootKey(), keyOf(u"a"_qs), rootKey()}) {
        m_explorer->GotoPath(key);
        m_list->selectAll();
        m_explorer->OpenSelectedFiles();
    }
    EXPECT_EQ(listFile(u"RecentDir.idx"_qs), rootKey().toUtf8() + "\r\n" + keyOf(u"a"_qs).toUtf8() + "\r\n");
}

TEST_F(FileExplorer, ChoosingARecentFolderGoesThere) {
    makeFolder(u"a"_qs);
    OwnTextFile::writeLines(OwnTextFile::path(u"RecentDir.idx"_qs), {keyOf(u"a"_qs)});
    m_explorer->LoadRecent();
    entry("mnuRecent", u'2' + keyOf(u"a"_qs))->trigger();
    EXPECT_EQ(m_explorer->selectedKey(), keyOf(u"a"_qs));
}

TEST_F(FileExplorer, FavouritesAreAddedChosenAndDeleted) {
    makeFolder(u"a&b"_qs);
    m_explorer->GotoPath(keyOf(u"a&b"_qs));
    askForMenu(*m_tree);
    EXPECT_TRUE(entry("Folder", u"mnuAddFavFolders"_qs)->isEnabled());
    EXPECT_FALSE(entry("Folder", u"mnuDelFavFolders"_qs)->isEnabled());
    choose("Folder", "mnuAddFavFolders");
    EXPECT_EQ(listFile(u"FavoriteDir.idx"_qs), keyOf(u"a&b"_qs).toUtf8() + "\r\n");
    EXPECT_EQ(entry("mnuFavorites", keyOf(u"a&b"_qs))->text(), in(u"a&&b"_qs));
    askForMenu(*m_tree);
    EXPECT_FALSE(entry("Folder", u"mnuAddFavFolders"_qs)->isEnabled());
    EXPECT_TRUE(entry("Folder", u"mnuDelFavFolders"_qs)->isEnabled());
    gotoRoot();
    askForMenu(*m_tree);
    EXPECT_TRUE(entry("Folder", u"mnuAddFavFolders"_qs)->isEnabled());
    entry("mnuFavorites", keyOf(u"a&b"_qs))->trigger();
    EXPECT_EQ(m_explorer->selectedKey(), keyOf(u"a&b"_qs));
    choose("Folder", "mnuDelFavFolders");
    EXPECT_EQ(listFile(u"FavoriteDir.idx"_qs), "");
    EXPECT_EQ(menu("mnuFavorites")->actions().size(), 3);
    menu("Folder")->hide();
}

TEST_F(FileExplorer, TheTwentySecondFavouriteIsShownButNotKept) {
    for (int n = 1; n <= 22; ++n)
        makeFolder(QString::number(n));
    for (int n = 1; n <= 22; ++n) {
        m_explorer->GotoPath(keyOf(QString::number(n)));
        choose("Folder", "mnuAddFavFolders");
    }
    EXPECT_EQ(menu("mnuFavorites")->actions().size(), 3 + 22);
    make();
    EXPECT_EQ(menu("mnuFavorites")->actions().size(), 3 + 21);
}

TEST_F(FileExplorer, MissingListFilesAreEmptyLists) {
    m_explorer->LoadFavorites();
    m_explorer->LoadRecent();
    EXPECT_EQ(menu("mnuFavorites")->actions().size(), 3);
    EXPECT_EQ(menu("mnuRecent")->actions().size(), 1);
    EXPECT_EQ(m_prompts.messages, QStringList());
}

TEST_F(FileExplorer, AFavouriteOnAVolumeThatIsNotThereIsTold) {
    OwnTextFile::writeLines(OwnTextFile::path(u"FavoriteDir.idx"_qs), {u"REMOVABLE/media/u/STICK"_qs});
    m_explorer->LoadFavorites();
    entry("mnuFavorites", u"REMOVABLE/media/u/STICK"_qs)->trigger();
    EXPECT_EQ(m_prompts.messages, QStringList(u"'/media/u/STICK' not found !"_qs));
}

TEST_F(FileExplorer, RenamingAsksForTheNameAndSelectsTheFile) {
    makeFile(u"a.txt"_qs);
    makeFile(u"z.txt"_qs);
    gotoRoot();
    select({u"a.txt"_qs});
    m_prompts.answerText(u"  m n.txt "_qs);
    QTest::keyClick(m_list, Qt::Key_F2);
    EXPECT_EQ(m_prompts.textBoxes, QStringList(u"Rename\tEnter the new name:\ta.txt"_qs));
    EXPECT_EQ(column(), QStringList({u"m n.txt"_qs, u"z.txt"_qs}));
    EXPECT_EQ(m_list->currentIndex().data().toString(), u"m n.txt"_qs);
}

TEST_F(FileExplorer, AnEmptyNewNameEndsTheCommand) {
    makeFile(u"a"_qs);
    gotoRoot();
    select({u"a"_qs});
    m_prompts.answerText(u"   "_qs);
    choose("File", "mnuRenameFile");
    EXPECT_EQ(column(), QStringList(u"a"_qs));
    EXPECT_EQ(m_prompts.messages, QStringList());
}

TEST_F(FileExplorer, ANameThatIsTakenOrHasASlashIsRefusedWithTheSystemsWords) {
    makeFile(u"a"_qs, "kept");
    makeFile(u"b"_qs, "kept too");
    gotoRoot();
    select({u"a"_qs});
    m_prompts.answerText(u"b"_qs);
    choose("File", "mnuRenameFile");
    m_prompts.answerText(u"x/y"_qs);
    choose("File", "mnuRenameFile");
    EXPECT_EQ(m_prompts.messages, QStringList({u"File exists"_qs, u"Invalid argument"_qs}));
    EXPECT_EQ(bytesOf(in(u"a"_qs)), "kept");
    EXPECT_EQ(bytesOf(in(u"b"_qs)), "kept too");
}

TEST_F(FileExplorer, DuplicatingMakesACopyAndShowsIt) {
    makeFile(u"a"_qs, "bytes");
    gotoRoot();
    select({u"a"_qs});
    choose("File", "mnuDuplicateFile");
    EXPECT_EQ(column(), QStringList({u"Copy - a"_qs, u"a"_qs}));
    choose("File", "mnuDuplicateFile");
    EXPECT_EQ(column(), QStringList({u"Copy - Copy - a"_qs, u"Copy - a"_qs, u"a"_qs}));
    EXPECT_EQ(bytesOf(in(u"Copy - Copy - a"_qs)), "bytes");
}

TEST_F(FileExplorer, AFailedDuplicateIsTold) {
    makeFile(u"a"_qs);
    gotoRoot();
    select({u"a"_qs});
    QFile::remove(in(u"a"_qs));
    choose("File", "mnuDuplicateFile");
    ASSERT_EQ(m_prompts.messages.size(), 1);
    EXPECT_TRUE(m_prompts.messages.first().contains(u"No such file or directory"_qs));
}

TEST_F(FileExplorer, OneFileIsDeletedAfterAQuestionWithItsPath) {
    makeFile(u"a"_qs);
    makeFile(u"b"_qs);
    gotoRoot();
    select({u"a"_qs});
    m_prompts.answerNo();
    m_explorer->DeleteSelectedFiles();
    EXPECT_EQ(column().size(), 2);
    m_prompts.answerYes();
    QTest::keyClick(m_list, Qt::Key_Delete);
    EXPECT_EQ(m_prompts.questions, QStringList(2, u"Delete file %1 ?"_qs.arg(in(u"a"_qs))));
    EXPECT_EQ(column(), QStringList(u"b"_qs));
    EXPECT_FALSE(QFile::exists(in(u"a"_qs)));
}

TEST_F(FileExplorer, SeveralFilesAreDeletedAfterOneQuestion) {
    makeFile(u"a"_qs);
    makeFile(u"b"_qs);
    makeFile(u"c"_qs);
    gotoRoot();
    select({u"a"_qs, u"c"_qs});
    m_prompts.answerYes();
    choose("File", "mnuDeleteSelectedFile");
    EXPECT_EQ(m_prompts.questions, QStringList(u"Delete selected files ?"_qs));
    EXPECT_EQ(column(), QStringList(u"b"_qs));
}

TEST_F(FileExplorer, ADeletionStopsAtTheFirstFailureAndNamesTheFile) {
    makeFile(u"a"_qs);
    makeFile(u"b"_qs);
    makeFile(u"c"_qs);
    gotoRoot();
    m_list->selectAll();
    QFile::remove(in(u"b"_qs));
    makeFolder(u"b"_qs);
    m_prompts.answerYes();
    m_explorer->DeleteSelectedFiles();
    EXPECT_EQ(m_prompts.messages, QStringList(u"'%1' can't be deleted: Is a directory"_qs.arg(in(u"b"_qs))));
    EXPECT_EQ(column(), QStringList({u"b"_qs, u"c"_qs}));
    EXPECT_TRUE(QFile::exists(in(u"c"_qs)));
}

TEST_F(FileExplorer, AFilterShowsWhatMatchesAndIsChecked) {
    makeFile(u"a.txt"_qs);
    makeFile(u"b.c"_qs);
    gotoRoot();
    m_prompts.answerText(u" *.c "_qs);
    choose("File", "mnuSetFilter");
    EXPECT_EQ(column(), QStringList(u"b.c"_qs));
    EXPECT_TRUE(entry("File", u"mnuSetFilter"_qs)->isChecked());
    m_prompts.answerText(u"*.none"_qs);
    choose("File", "mnuSetFilter");
    EXPECT_EQ(m_prompts.textBoxes.last(), u"File Filtering\tEnter Filter:\t*.c"_qs);
    EXPECT_EQ(column(), QStringList());
    EXPECT_EQ(m_prompts.messages, QStringList());
    choose("File", "mnuClearFilter");
    EXPECT_EQ(column().size(), 2);
    EXPECT_FALSE(entry("File", u"mnuSetFilter"_qs)->isChecked());
}

TEST_F(FileExplorer, ACancelledFilterBoxLeavesTheFilterAndAnEmptyAnswerClearsIt) {
    makeFile(u"a.txt"_qs);
    makeFile(u"b.c"_qs);
    gotoRoot();
    m_prompts.cancelText();
    choose("File", "mnuSetFilter");
    EXPECT_EQ(column().size(), 2);
    EXPECT_FALSE(entry("File", u"mnuSetFilter"_qs)->isChecked());
    m_prompts.answerText(u"*.c"_qs);
    choose("File", "mnuSetFilter");
    m_prompts.cancelText();
    choose("File", "mnuSetFilter");
    EXPECT_EQ(column(), QStringList(u"b.c"_qs));
    EXPECT_TRUE(entry("File", u"mnuSetFilter"_qs)->isChecked());
    m_prompts.answerText({});
    choose("File", "mnuSetFilter");
    EXPECT_EQ(column().size(), 2);
    EXPECT_FALSE(entry("File", u"mnuSetFilter"_qs)->isChecked());
}

TEST_F(FileExplorer, ACancelledRenameLeavesTheFile) {
    makeFile(u"a"_qs);
    gotoRoot();
    select({u"a"_qs});
    m_prompts.cancelText();
    choose("File", "mnuRenameFile");
    EXPECT_EQ(column(), QStringList(u"a"_qs));
    EXPECT_EQ(m_prompts.messages, QStringList());
}

TEST_F(FileExplorer, TheModifiedDateIsShownAndHiddenByBothMenus) {
    makeFile(u"a"_qs);
    gotoRoot();
    EXPECT_EQ(m_list->model()->columnCount(), 1);
    choose("Folder", "mnuShowModifiedDate");
    EXPECT_EQ(m_list->model()->columnCount(), 2);
    EXPECT_FALSE(column(1).first().isEmpty());
    EXPECT_TRUE(entry("Folder", u"mnuShowModifiedDate"_qs)->isChecked());
    EXPECT_TRUE(entry("File", u"mnuShowModifiedDate"_qs)->isChecked());
    choose("File", "mnuShowModifiedDate");
    EXPECT_EQ(m_list->model()->columnCount(), 1);
    EXPECT_FALSE(entry("Folder", u"mnuShowModifiedDate"_qs)->isChecked());
    EXPECT_FALSE(entry("File", u"mnuShowModifiedDate"_qs)->isChecked());
}

TEST_F(FileExplorer, ColumnsKeepTheirWidthInTheNextFolder) {
    makeFolder(u"a"_qs);
    gotoRoot();
    choose("File", "mnuShowModifiedDate");
    m_list->header()->resizeSection(0, 77);
    m_explorer->GotoPath(keyOf(u"a"_qs));
    EXPECT_EQ(m_list->header()->sectionSize(0), 77);
    choose("File", "mnuShowModifiedDate");
    choose("File", "mnuShowModifiedDate");
    EXPECT_NE(m_list->header()->sectionSize(0), 0);
}

TEST_F(FileExplorer, AClickOnAHeaderSortsAndTheNextTurnsItRound) {
    makeFile(u"a"_qs);
    makeFile(u"b"_qs);
    setWritten(u"a"_qs, 2'000'000);
    setWritten(u"b"_qs, 1'000'000);
    gotoRoot();
    choose("File", "mnuShowModifiedDate");
    QHeaderView* header = m_list->header();
    Q_EMIT header->sectionClicked(1);
    EXPECT_EQ(column(), QStringList({u"b"_qs, u"a"_qs}));
    EXPECT_EQ(header->sortIndicatorSection(), 1);
    EXPECT_EQ(header->sortIndicatorOrder(), Qt::AscendingOrder);
    Q_EMIT header->sectionClicked(1);
    EXPECT_EQ(column(), QStringList({u"a"_qs, u"b"_qs}));
    Q_EMIT header->sectionClicked(0);
    Q_EMIT header->sectionClicked(0);
    EXPECT_EQ(column(), QStringList({u"b"_qs, u"a"_qs}));
    EXPECT_EQ(header->sortIndicatorSection(), 0);
    EXPECT_EQ(header->sortIndicatorOrder(), Qt::DescendingOrder);
}

TEST_F(FileExplorer, FoldersAndFilesAreAddedToTheProject) {
    makeFile(u"a"_qs);
    makeFile(u"b"_qs);
    gotoRoot();
    QSignalSpy added(m_explorer.get(), &ucFileExplorer::addToProject);
    choose("Folder", "mnuAddToProject");
    m_list->selectAll();
    choose("File", "mnuAddFileToProject");
    ASSERT_EQ(added.count(), 3);
    EXPECT_EQ(added.at(0), QVariantList({rootKey(), u"FOLDER"_qs}));
    EXPECT_EQ(added.at(1), QVariantList({in(u"a"_qs), u"FILE"_qs}));
    EXPECT_EQ(added.at(2), QVariantList({in(u"b"_qs), u"FILE"_qs}));
}

TEST_F(FileExplorer, WithoutASelectedNodeTheCommandsOfTheTreeDoNothing) {
    m_explorer->RefreshView();
    const QSignalSpy added(m_explorer.get(), &ucFileExplorer::addToProject);
    for (const char* name :
         {"mnuSetAsRoot", "mnuOpenFolder", "mnuProperties", "mnuAddToProject", "mnuAddFavFolders", "mnuDelFavFolders"})
        choose("Folder", name);
    EXPECT_EQ(added.count(), 0);
    EXPECT_EQ(m_prompts.messages, QStringList());
    EXPECT_EQ(m_tree->model()->rowCount(), 2);
}

TEST_F(FileExplorer, ASelectedFolderBecomesTheRootUntilTheRefresh) {
    makeFolder(u"a/b"_qs);
    makeFile(u"a/file"_qs);
    m_explorer->GotoPath(keyOf(u"a"_qs));
    choose("Folder", "mnuSetAsRoot");
    EXPECT_EQ(m_tree->model()->rowCount(), 1);
    EXPECT_EQ(column(), QStringList(u"file"_qs));
    choose("Folder", "mnuRefresh");
    EXPECT_EQ(m_tree->model()->rowCount(), 2);
}

TEST_F(FileExplorer, TheSpecialFoldersAreGoneTo) {
    choose("Folder", "mnuWndowDirectory");
    EXPECT_EQ(m_explorer->selectedKey(), u"FOLDER/usr"_qs);
    choose("File", "mnuSystemDirectory");
    EXPECT_EQ(m_explorer->selectedKey(), u"FOLDER/etc"_qs);
}

TEST_F(FileExplorer, PropertiesAreThoseOfTheFolderOrTheFile) {
    makeFile(u"a"_qs);
    gotoRoot();
    select({u"a"_qs});
    choose("File", "mnuProperties");
    const auto* ofFile = m_explorer->findChild<QDialog*>(u"frmFileProperties"_qs);
    ASSERT_NE(ofFile, nullptr);
    EXPECT_EQ(ofFile->windowTitle(), u"Properties of a"_qs);
    delete ofFile;
    choose("Folder", "mnuProperties");
    const auto* ofFolder = m_explorer->findChild<QDialog*>(u"frmFileProperties"_qs);
    ASSERT_NE(ofFolder, nullptr);
    EXPECT_EQ(ofFolder->findChild<QLabel*>(u"lblPath"_qs)->text(), root());
    delete ofFolder;
    QFile::remove(in(u"a"_qs));
    select({u"a"_qs});
    choose("File", "mnuProperties");
    EXPECT_EQ(m_prompts.titles, QStringList(u"Error"_qs));
}

TEST_F(FileExplorer, ClearingEmptiesTheListAndShowsTheVolumesAlone) {
    makeFile(u"a.txt"_qs);
    makeFile(u"b"_qs);
    makeFolder(u"folder"_qs);
    gotoRoot();
    m_prompts.answerText(u"*.txt"_qs);
    choose("File", "mnuSetFilter");
    choose("File", "mnuShowModifiedDate");
    m_explorer->ClearFileExplorer();
    EXPECT_EQ(column(), QStringList());
    EXPECT_EQ(m_tree->model()->rowCount(node(rootKey())), 1);
    EXPECT_EQ(m_explorer->selectedKey(), QString());
    gotoRoot();
    EXPECT_EQ(column(), QStringList(u"a.txt"_qs));
    EXPECT_EQ(m_list->model()->columnCount(), 2);
}

TEST_F(FileExplorer, TypingJumpsToAName) {
    for (const char* name : {"alpha", "beta", "bravo", "gamma"})
        makeFile(QString::fromLatin1(name));
    gotoRoot();
    m_explorer->resize(300, 400);
    m_explorer->show();
    QTest::keyClicks(m_list, u"br"_qs);
    EXPECT_EQ(m_list->currentIndex().data().toString(), u"bravo"_qs);
}

TEST_F(FileExplorer, TheBarIsMovedWithTheArrowKeys) {
    m_explorer->resize(300, 400);
    m_explorer->show();
    auto* bar = m_explorer->findChild<QSplitterHandle*>(u"Picture2"_qs);
    const int before = m_tree->height();
    QTest::keyClick(bar, Qt::Key_Down);
    const int moved = m_tree->height();
    EXPECT_GT(moved, before);
    QTest::keyClick(bar, Qt::Key_Down, Qt::ControlModifier);
    EXPECT_EQ(m_tree->height(), moved);
    QTest::keyClick(bar, Qt::Key_Up);
    QTest::keyClick(bar, Qt::Key_Up);
    EXPECT_LT(m_tree->height(), before);
    m_explorer->ClearFileExplorer();
    EXPECT_EQ(m_tree->height(), before);
}

TEST_F(FileExplorer, AFolderThatAnswersLateFillsTheListThen) {
    makeFolder(u"slow"_qs);
    makeFile(u"slow/late"_qs);
    gotoRoot();
    const QModelIndex slow = node(keyOf(u"slow"_qs));
    m_disk->hold(in(u"slow"_qs));
    m_tree->setCurrentIndex(slow);
    EXPECT_EQ(column(), QStringList());
    m_disk->release();
    EXPECT_TRUE(QTest::qWaitFor([&] { return column() == QStringList(u"late"_qs); }));
}

}  // namespace
