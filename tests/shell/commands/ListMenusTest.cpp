#include "settings/files/OwnTextFile.h"
#include "shell/FrameFixture.h"

#include <QMetaObject>

#include <algorithm>

/// The recent files, recent projects and favourites in their menus.
class ListMenusOfTheFrame : public FrameFixture {
 protected:
    static QStringList numbered(int from, int to) {
        QStringList all;
        for (int i = from; i <= to; ++i)
            all << u"/p/%1.qmp"_qs.arg(i);
        return all;
    }
    static QStringList reversed(QStringList list) {
        std::reverse(list.begin(), list.end());
        return list;
    }
    void put(const char* name, const QStringList& lines) { OwnTextFile::writeLines(ownFile(name), lines); }
    QStringList favoriteTags() {
        QStringList tags;
        for (int i = 1; i <= 30; ++i) {
            if (slot("mnuFavoriteProject", i)->isVisible())
                tags << slot("mnuFavoriteProject", i)->data().toString();
        }
        return tags;
    }
    void haveProject(const QString& path) {
        m_frame->ProjectFilename = path;
        m_frame->SetProjectMenus(false);
    }
    void end() {
        m_frame->close();
        m_frame.reset();
    }
};

TEST_F(ListMenusOfTheFrame, ShowRecentFilesTheNewestFirst) {
    start();
    EXPECT_TRUE(slot("mnuFiles", 0)->isVisible());
    const QString files[] = {fileOf("1", u"1.txt"_qs), fileOf("2", u"a & b.txt"_qs)};
    open(files[0]);
    open(files[1]);
    EXPECT_EQ(recentFiles(), QStringList({files[1], files[0]}));
    EXPECT_FALSE(slot("mnuFiles", 0)->isVisible());
    run("mnuFileClose");
    slot("mnuFiles", 2)->trigger();
    EXPECT_EQ(recentFiles(), QStringList({files[1], files[0]})) << "it is open already";
    slot("mnuFiles", 1)->trigger();
    EXPECT_EQ(active()->filename, files[1]);
}

TEST_F(ListMenusOfTheFrame, ComeBackInTheNextRun) {
    start();
    const QStringList paths = numbered(1, 11);
    for (const QString& path : paths) {
        m_frame->AddLRUFile(path);
        m_frame->AddLRUProject(path);
        m_frame->AddFavProject(path);
    }
    end();
    EXPECT_EQ(bytesOf(ownFile("lastfiles.idx")).count("\r\n"), 10);
    EXPECT_EQ(bytesOf(ownFile("favprojects.idx")).count("\r\n"), 11);
    start();
    EXPECT_EQ(captionsOf("mnuFiles"), reversed(paths.mid(1)));
    EXPECT_EQ(captionsOf("mnuWorkspaces"), reversed(paths.mid(1)));
    EXPECT_EQ(favoriteTags(), reversed(paths));
    EXPECT_EQ(captionsOf("mnuFavoriteProject").first(), u"11"_qs);
    EXPECT_FALSE(slot("mnuFiles", 0)->isVisible());
    EXPECT_FALSE(slot("mnuWorkspaces", 0)->isVisible());
    EXPECT_FALSE(entry("mnuProjects")->isVisible());
    EXPECT_TRUE(entry("mnuFavoritesSep")->isVisible());
}

TEST_F(ListMenusOfTheFrame, ShowTheirPlaceholdersWhileTheyAreEmpty) {
    put("lastfiles.idx", {});
    start();
    EXPECT_TRUE(slot("mnuFiles", 0)->isVisible());
    EXPECT_EQ(slot("mnuFiles", 0)->text(), u"Files(s)"_qs);
    EXPECT_TRUE(slot("mnuWorkspaces", 0)->isVisible());
    EXPECT_TRUE(entry("mnuProjects")->isVisible());
    m_frame->AddLRUProject(u"/a.qmp"_qs);
    EXPECT_FALSE(slot("mnuWorkspaces", 0)->isVisible());
    EXPECT_TRUE(slot("mnuFiles", 0)->isVisible());
    m_frame->AddFavProject(u"/a.qmp"_qs);
    EXPECT_FALSE(entry("mnuProjects")->isVisible());
    m_frame->DeleteFavProject(u"/a.qmp"_qs);
    EXPECT_TRUE(captionsOf("mnuFavoriteProject").isEmpty());
    EXPECT_FALSE(entry("mnuProjects")->isVisible()) << "it does not come back";
}

TEST_F(ListMenusOfTheFrame, KeepAFileThatHasGone) {
    const QString gone = path(u"gone.txt"_qs);
    put("lastfiles.idx", {gone});
    start();
    EXPECT_EQ(recentFiles(), QStringList(gone));
    slot("mnuFiles", 1)->trigger();
    EXPECT_EQ(m_prompts.messages, QStringList(gone + QLatin1String("\nFile not found!")));
    EXPECT_EQ(recentFiles(), QStringList(gone));
}

TEST_F(ListMenusOfTheFrame, OpenAFavouriteByItsTag) {
    start();
    m_frame->AddFavProject(u" /a/x & y.QMP "_qs);
    EXPECT_EQ(captionsOf("mnuFavoriteProject"), QStringList(u"x & y"_qs));
    m_prompts.answerNo();
    slot("mnuFavoriteProject", 1)->trigger();
    EXPECT_EQ(missingProject(), u"/a/x & y.QMP"_qs);
    m_frame->AddLRUProject(u"/b.qmp"_qs);
    m_prompts.answerNo();
    slot("mnuWorkspaces", 1)->trigger();
    EXPECT_EQ(missingProject(), u"/b.qmp"_qs);
}

TEST_F(ListMenusOfTheFrame, ShowTheLastOfAFullListOfFavouritesTwiceAfterARemoval) {
    start();
    for (const QString& path : numbered(1, 31))
        m_frame->AddFavProject(path);
    EXPECT_EQ(favoriteTags(), reversed(numbered(2, 31)));
    m_frame->DeleteFavProject(u"/p/31.qmp"_qs);
    EXPECT_EQ(favoriteTags(), reversed(numbered(2, 30)) + QStringList(u"/p/2.qmp"_qs));
    EXPECT_EQ(captionsOf("mnuFavoriteProject").last(), u"2"_qs);
    end();
    EXPECT_TRUE(bytesOf(ownFile("favprojects.idx")).startsWith("/p/2.qmp\r\n/p/2.qmp\r\n/p/3.qmp\r\n"));
}

TEST_F(ListMenusOfTheFrame, AddTheOpenProjectToTheFavourites) {
    start();
    EXPECT_FALSE(entry("mnuAddFavorite")->isEnabled());
    house().favoriteCommands.AddFavorite();
    EXPECT_EQ(m_prompts.messages, QStringList(u"Please save the current project before adding to the favorites."_qs));
    EXPECT_TRUE(favoriteTags().isEmpty());
    for (const char* name : {"/a/work.qmp", "[New Project]"}) {
        haveProject(QString::fromLatin1(name));
        run("mnuAddFavorite");
        EXPECT_EQ(favoriteTags().first(), QString::fromLatin1(name));
    }
    EXPECT_EQ(captionsOf("mnuFavoriteProject"), QStringList({u"[New Project]"_qs, u"work"_qs}));
    EXPECT_EQ(m_prompts.messages.size(), 1);
}

TEST_F(ListMenusOfTheFrame, RemoveTheOpenProjectFromTheFavouritesWhenToldSo) {
    start();
    house().favoriteCommands.DeleteFavorite();
    EXPECT_TRUE(m_prompts.questions.isEmpty());
    for (const QString& path : numbered(1, 3))
        m_frame->AddFavProject(path);
    haveProject(u"/p/2.qmp"_qs);
    m_prompts.answerNo();
    run("mnuDeleteFavorite");
    EXPECT_EQ(favoriteTags(), reversed(numbered(1, 3)));
    m_prompts.answerYes();
    run("mnuDeleteFavorite");
    EXPECT_EQ(favoriteTags(), QStringList({u"/p/3.qmp"_qs, u"/p/1.qmp"_qs}));
    EXPECT_EQ(m_prompts.questions, QStringList(2, u"Delete project \"2 \" from favorites ?"_qs));
}

TEST_F(ListMenusOfTheFrame, AreWrittenInTheirFilesAtTheEndAlone) {
    start();
    m_frame->AddLRUFile(u"/a"_qs);
    m_frame->AddLRUProject(u"/a"_qs);
    m_frame->AddFavProject(u"/a"_qs);
    for (const char* name : {"lastfiles.idx", "lastprojects.idx", "favprojects.idx", "lastopen.idx"}) {
        EXPECT_FALSE(QFile::exists(ownFile(name))) << name;
    }
    end();
    for (const char* name : {"lastfiles.idx", "lastprojects.idx", "favprojects.idx"}) {
        EXPECT_EQ(bytesOf(ownFile(name)), "/a\r\n") << name;
    }
}

TEST_F(ListMenusOfTheFrame, AreFilledAndWrittenByProceduresWithTheirNames) {
    start();
    for (const char* signature :
         {"AddLRUFile(QString)", "AddLRUProject(QString)", "AddFavProject(QString)", "DeleteFavProject(QString)",
          "ProjectDisplayName(QString)", "LoadRecentFiles()", "LoadRecentProjects()", "LoadFavProjects()",
          "LoadSearchKeys()", "SaveRecentFiles()", "SaveRecentProjects()", "SaveFavProjects()", "SaveSearchKeys()",
          "SaveSession()", "RestoreSession()", "WriteDocRecord(frmDocument*)", "RestoreDocRecord(QString)"}) {
        EXPECT_GE(m_frame->metaObject()->indexOfMethod(signature), 0) << signature;
    }
    const auto call = [this](const char* name) { return QMetaObject::invokeMethod(m_frame.get(), name); };
    m_frame->AddLRUFile(u"/a"_qs);
    m_frame->AddLRUProject(u"/b"_qs);
    m_frame->AddFavProject(u"/c"_qs);
    m_frame->AddSearchKey(u"d"_qs, true);
    for (const char* name : {"SaveRecentFiles", "SaveRecentProjects", "SaveFavProjects", "SaveSearchKeys"}) {
        EXPECT_TRUE(call(name)) << name;
    }
    EXPECT_EQ(bytesOf(ownFile("lastfiles.idx")), "/a\r\n");
    EXPECT_EQ(bytesOf(ownFile("lastprojects.idx")), "/b\r\n");
    EXPECT_EQ(bytesOf(ownFile("favprojects.idx")), "/c\r\n");
    put("lastfiles.idx", {u"/a"_qs, u"/new"_qs});
    put("lastprojects.idx", {u"/new"_qs});
    put("favprojects.idx", {u"/new.qmp"_qs});
    for (const char* name : {"LoadRecentFiles", "LoadRecentProjects", "LoadFavProjects", "LoadSearchKeys"}) {
        EXPECT_TRUE(call(name)) << name;
    }
    EXPECT_EQ(captionsOf("mnuFiles"), QStringList({u"/new"_qs, u"/a"_qs}));
    EXPECT_EQ(captionsOf("mnuWorkspaces"), QStringList({u"/new"_qs, u"/b"_qs}));
    EXPECT_EQ(captionsOf("mnuFavoriteProject"), QStringList({u"new"_qs, u"c"_qs}));
    QString name;
    EXPECT_TRUE(QMetaObject::invokeMethod(m_frame.get(), "ProjectDisplayName", Q_RETURN_ARG(QString, name),
                                          Q_ARG(QString, u"/a/b.qmp"_qs)));
    EXPECT_EQ(name, u"b"_qs);
}
