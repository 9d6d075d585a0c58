#include "settings/Settings.h"
#include "settings/registry/MemoryRegistry.h"
#include "support/ScriptedPrompts.h"
#include "workspace/host/NotedHost.h"
#include "workspace/project/ucProject.h"

#include <QDir>
#include <QFile>
#include <QMenu>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>
#include <QTreeView>

#include <gtest/gtest.h>

namespace {

class TheProjectList : public ::testing::Test {
 protected:
    TheProjectList() {
        project.resize(200, 300);
        project.show();
    }

    QString makeFile(const QString& name) {
        QFile file(folder.filePath(name));
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        return file.fileName();
    }
    QModelIndex row(int number) const { return list.model()->index(number, 0); }
    QStringList texts() const {
        QStringList all;
        for (int i = 0; i < list.model()->rowCount(); ++i)
            all.append(row(i).data().toString());
        return all;
    }
    QAction* entry(const char* key) const { return project.findChild<QAction*>(QString::fromLatin1(key)); }
    QMenu* menu() const { return project.findChild<QMenu*>(u"Project"_qs); }
    void choose(const char* key) {
        list.setCurrentIndex(row(0));
        entry(key)->trigger();
    }

    QTemporaryDir folder;
    ScriptedPrompts prompts;
    MemoryRegistry registry;
    Settings settings{registry};
    NotedHost host;
    ucProject project{WorkspaceServices{prompts, settings, host}};
    QTreeView& list = *project.findChild<QTreeView*>(u"lvProject"_qs);
    QSignalSpy opened{&project, &ucProject::openFile};
    QSignalSpy folders{&project, &ucProject::gotoFolder};
    QSignalSpy files{&project, &ucProject::gotoFile};
};

}  // namespace

TEST_F(TheProjectList, HasOneColumnOfItsName) {
    EXPECT_EQ(list.model()->columnCount(), 1);
    EXPECT_EQ(list.model()->headerData(0, Qt::Horizontal).toString(), u"Workspace"_qs);
}

TEST_F(TheProjectList, AFileHasItsNameKeyTypeAndPath) {
    const QString path = makeFile(u"main.cpp"_qs);
    project.AddProjectItem(path, u"file"_qs);
    EXPECT_EQ(row(0).data(), u"main.cpp"_qs);
    EXPECT_EQ(row(0).data(Qt::UserRole), path);
    EXPECT_EQ(row(0).data(Qt::UserRole + 1), u"FILE"_qs);
    EXPECT_EQ(row(0).data(Qt::ToolTipRole), path);
    EXPECT_FALSE(row(0).data(Qt::ForegroundRole).isValid());
}

TEST_F(TheProjectList, AFolderStandsInBracketsWithItsLastElement) {
    project.AddProjectItem(u"FOLDER"_qs + folder.path(), u"Folder"_qs);
    EXPECT_EQ(row(0).data().toString(), u'[' + QDir(folder.path()).dirName() + u']');
    EXPECT_EQ(row(0).data(Qt::UserRole + 1), u"FOLDER"_qs);
    EXPECT_EQ(row(0).data(Qt::ToolTipRole), folder.path());
}

TEST_F(TheProjectList, AVolumeStandsInBracketsWithItsMountPoint) {
    project.AddProjectItem(u"DRIVE/"_qs, u"FOLDER"_qs);
    project.AddProjectItem(u"REMOVABLE/media/u/STICK"_qs, u"FOLDER"_qs);
    EXPECT_EQ(texts(), (QStringList{u"[/]"_qs, u"[/media/u/STICK]"_qs}));
}

TEST_F(TheProjectList, ATypeThatIsNeitherAddsNothing) {
    project.AddProjectItem(makeFile(u"a"_qs), u"LINK"_qs);
    EXPECT_EQ(project.PjtItemCount(), 0);
}

TEST_F(TheProjectList, WhatIsMissingIsDimmedAndStays) {
    project.AddProjectItem(u"/nowhere/a"_qs, u"FILE"_qs);
    project.AddProjectItem(u"FOLDER/nowhere/b"_qs, u"FOLDER"_qs);
    for (int number : {0, 1}) {
        EXPECT_TRUE(QTest::qWaitFor([&] { return row(number).data(Qt::ForegroundRole).isValid(); }));
        EXPECT_FALSE(row(number).data(Qt::DecorationRole).value<QIcon>().isNull());
    }
    EXPECT_EQ(project.PjtItemCount(), 2);
}

TEST_F(TheProjectList, AKeyTwiceLeavesOneRowAndGivesAMessage) {
    const QString path = makeFile(u"a"_qs);
    project.AddProjectItem(path, u"FILE"_qs);
    project.AddProjectItem(path, u"FILE"_qs);
    EXPECT_EQ(project.PjtItemCount(), 1);
    EXPECT_EQ(prompts.messages, QStringList{u"Key is not unique in collection"_qs});
}

TEST_F(TheProjectList, RowsStandInAscendingOrderOfTheirText) {
    for (const QString& name : {u"b"_qs, u"C"_qs, u"a"_qs, u"ä"_qs})
        project.AddProjectItem(makeFile(name), u"FILE"_qs);
    EXPECT_EQ(texts(), (QStringList{u"C"_qs, u"a"_qs, u"b"_qs, u"ä"_qs}));
}

TEST_F(TheProjectList, ItemsAreCountedFromOneAndABadNumberIsEmpty) {
    const QString path = makeFile(u"a"_qs);
    project.AddProjectItem(path, u"FILE"_qs);
    QString name = u"before"_qs;
    QString type = u"before"_qs;
    project.PjtItem(1, name, type);
    EXPECT_EQ(name, path);
    EXPECT_EQ(type, u"FILE"_qs);
    for (int bad : {0, 2, -1}) {
        project.PjtItem(bad, name, type);
        EXPECT_TRUE(name.isEmpty() && type.isEmpty());
    }
}

TEST_F(TheProjectList, ADoubleClickOpensAFileAndGoesToAFolder) {
    const QString path = makeFile(u"zz"_qs);
    project.AddProjectItem(path, u"FILE"_qs);
    project.AddProjectItem(u"DRIVE/"_qs, u"FOLDER"_qs);
    emit list.doubleClicked(row(0));
    emit list.doubleClicked(row(1));
    ASSERT_EQ(folders.size(), 1);
    EXPECT_EQ(folders[0][0], u"DRIVE/"_qs);
    ASSERT_EQ(opened.size(), 1);
    EXPECT_EQ(opened[0][0], path);
}

TEST_F(TheProjectList, EnterOpensTheRowAndDeleteAsks) {
    project.AddProjectItem(makeFile(u"a"_qs), u"FILE"_qs);
    list.setCurrentIndex(row(0));
    QTest::keyClick(&list, Qt::Key_Return);
    EXPECT_EQ(opened.size(), 1);
    prompts.answerNo();
    QTest::keyClick(&list, Qt::Key_Delete);
    EXPECT_EQ(project.PjtItemCount(), 1);
    prompts.answerYes();
    QTest::keyClick(&list, Qt::Key_Delete);
    EXPECT_EQ(project.PjtItemCount(), 0);
    EXPECT_EQ(prompts.questions, (QStringList{u"Remove 'a' from project ?"_qs, u"Remove 'a' from project ?"_qs}));
}

TEST_F(TheProjectList, KeysWithModifiersNeitherOpenNorRemove) {
    project.AddProjectItem(makeFile(u"a"_qs), u"FILE"_qs);
    list.setCurrentIndex(row(0));
    for (const Qt::KeyboardModifier with : {Qt::ControlModifier, Qt::AltModifier, Qt::ShiftModifier}) {
        for (const Qt::Key key : {Qt::Key_Delete, Qt::Key_Return, Qt::Key_Enter})
            QTest::keyClick(&list, key, with);
    }
    EXPECT_EQ(opened.size(), 0);
    EXPECT_TRUE(prompts.questions.isEmpty());
    QTest::keyClick(&list, Qt::Key_Enter, Qt::KeypadModifier);
    EXPECT_EQ(opened.size(), 1);
}

TEST_F(TheProjectList, WithoutARowKeysDoNothing) {
    QTest::keyClick(&list, Qt::Key_Return);
    QTest::keyClick(&list, Qt::Key_Delete);
    EXPECT_EQ(opened.size() + folders.size(), 0);
}

TEST_F(TheProjectList, TheMenuHasItsEntriesInOrder) {
    QStringList entries;
    for (const QAction* action : menu()->actions())
        entries.append(action->isSeparator() ? u"-"_qs : action->objectName() + u'=' + action->text());
    EXPECT_EQ(entries,
              (QStringList{u"mnuOpen=Open"_qs, u"-"_qs, u"mnuGotoPath=Goto Path"_qs,
                           u"mnuOpenInExplorer=Open Folder in File Explorer"_qs, u"-"_qs,
                           u"mnuRemoveFromProject=Remove From Project"_qs, u"mnuRemoveAll=Remove All Items"_qs}));
}

TEST_F(TheProjectList, TheMenuOpensWhenTheRightButtonIsReleased) {
    project.AddProjectItem(makeFile(u"a"_qs), u"FILE"_qs);
    const QPoint place = list.visualRect(row(0)).center();
    QTest::mousePress(list.viewport(), Qt::RightButton, {}, place);
    EXPECT_FALSE(menu()->isVisible());
    QTest::mouseRelease(list.viewport(), Qt::RightButton, {}, place);
    EXPECT_TRUE(menu()->isVisible());
    menu()->close();
}

TEST_F(TheProjectList, AnEmptyListHasNoMenu) {
    QTest::mouseClick(list.viewport(), Qt::RightButton);
    EXPECT_FALSE(menu()->isVisible());
}

TEST_F(TheProjectList, GotoPathOfAFileIsItsOwnEventAndOfAFolderThatOfOpening) {
    const QString path = makeFile(u"a"_qs);
    project.AddProjectItem(path, u"FILE"_qs);
    choose("mnuGotoPath");
    ASSERT_EQ(files.size(), 1);
    EXPECT_EQ(files[0][0], path);
    project.ClearProject();
    project.AddProjectItem(u"DRIVE/"_qs, u"FOLDER"_qs);
    choose("mnuGotoPath");
    EXPECT_EQ(folders.size(), 1);
}

TEST_F(TheProjectList, RemovingAllAsksFirst) {
    project.AddProjectItem(makeFile(u"a"_qs), u"FILE"_qs);
    project.AddProjectItem(makeFile(u"b"_qs), u"FILE"_qs);
    prompts.answerNo();
    choose("mnuRemoveAll");
    EXPECT_EQ(project.PjtItemCount(), 2);
    prompts.answerYes();
    choose("mnuRemoveAll");
    EXPECT_EQ(project.PjtItemCount(), 0);
    EXPECT_EQ(prompts.questions[0], u"Remove all items from project ?"_qs);
}

TEST_F(TheProjectList, ARowThatGoesWhileTheQuestionStandsIsNotRemovedTwice) {
    project.AddProjectItem(makeFile(u"a"_qs), u"FILE"_qs);
    project.AddProjectItem(makeFile(u"b"_qs), u"FILE"_qs);
    list.setCurrentIndex(row(0));
    prompts.whileShown([this] {
        project.ClearProject();
        project.AddProjectItem(u"DRIVE/"_qs, u"FOLDER"_qs);
    });
    prompts.answerYes();
    QTest::keyClick(&list, Qt::Key_Delete);
    EXPECT_EQ(texts(), QStringList{u"[/]"_qs});
}
