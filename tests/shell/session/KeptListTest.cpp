#include "settings/files/OwnTextFile.h"
#include "shell/session/KeptList.h"
#include "shell/session/ProjectLists.h"
#include "support/AnotherUser.h"

#include <QFile>
#include <QSignalSpy>
#include <QTemporaryDir>

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <random>

namespace {

QStringList numbered(int from, int to) {
    QStringList all;
    for (int i = from; i <= to; ++i)
        all << u"/p/%1"_qs.arg(i);
    return all;
}

QStringList reversed(QStringList list) {
    std::reverse(list.begin(), list.end());
    return list;
}

/// Lists in a folder of their own.
class KeptLists : public testing::Test {
 protected:
    KeptList make(const KeptList::Kind& kind) const { return KeptList(kind, m_folder.path()); }
    QString file(const char* name) const { return m_folder.filePath(QString::fromLatin1(name)); }
    void put(const char* name, const QByteArray& bytes) const {
        QFile opened(file(name));
        ASSERT_TRUE(opened.open(QIODevice::WriteOnly));
        opened.write(bytes);
    }
    QByteArray bytes(const char* name) const {
        QFile opened(file(name));
        EXPECT_TRUE(opened.open(QIODevice::ReadOnly));
        return opened.readAll();
    }
    QStringList loaded(const KeptList::Kind& kind) const {
        KeptList list = make(kind);
        list.load();
        return list.paths();
    }
    static void addAll(KeptList& list, const QStringList& paths) {
        for (const QString& path : paths)
            list.add(path);
    }

    QTemporaryDir m_folder;
};

}  // namespace

TEST_F(KeptLists, EachHasItsFileAndItsCapacity) {
    const struct {
        const KeptList::Kind& kind;
        const char* file;
        int capacity;
    } lists[] = {{KeptList::RecentFiles, "lastfiles.idx", 10},
                 {KeptList::RecentProjects, "lastprojects.idx", 10},
                 {KeptList::FavoriteProjects, "favprojects.idx", 30}};
    for (const auto& each : lists) {
        KeptList list = make(each.kind);
        EXPECT_EQ(list.capacity(), each.capacity);
        addAll(list, numbered(1, each.capacity + 1));
        EXPECT_EQ(list.paths(), reversed(numbered(2, each.capacity + 1)));
        list.save();
        EXPECT_EQ(bytes(each.file).count("\r\n"), each.capacity) << each.file;
        EXPECT_TRUE(bytes(each.file).startsWith("/p/2\r\n/p/3\r\n")) << each.file;
        EXPECT_EQ(loaded(each.kind), list.paths()) << each.file;
    }
}

TEST_F(KeptLists, AreFilledFromTheOldestToTheNewest) {
    put("lastfiles.idx", "/a\r\n\r\n/b\n/a b \r\n/c");
    EXPECT_EQ(loaded(KeptList::RecentFiles), QStringList({u"/c"_qs, u"/a b "_qs, u"/b"_qs, u"/a"_qs}));
}

TEST_F(KeptLists, CutALongFileAndItsDoubles) {
    QByteArray lines;
    for (int i = 1; i <= 25; ++i)
        lines += "/p/" + QByteArray::number(i) + "\r\n/twice\r\n";
    put("lastprojects.idx", lines);
    EXPECT_EQ(loaded(KeptList::RecentProjects), QStringList(u"/twice"_qs) + reversed(numbered(17, 25)));
}

TEST_F(KeptLists, OfFavouritesReadThirtyLinesOfTheirFile) {
    QByteArray lines = "\r\n  /p/0 \r\n";
    for (int i = 1; i <= 40; ++i)
        lines += "/p/" + QByteArray::number(i) + "\r\n";
    put("favprojects.idx", lines);
    EXPECT_EQ(loaded(KeptList::FavoriteProjects), reversed(numbered(0, 28)));
}

TEST_F(KeptLists, OfFavouritesTrimTheirPathsAndIgnoreBlankOnes) {
    KeptList list = make(KeptList::FavoriteProjects);
    list.add(u" \t"_qs);
    list.add(QString());
    EXPECT_TRUE(list.paths().isEmpty());
    EXPECT_TRUE(list.hasPlaceholder());
    list.add(u" /a.qmp "_qs);
    EXPECT_EQ(list.paths(), QStringList(u"/a.qmp"_qs));
    EXPECT_FALSE(list.hasPlaceholder());
    list.remove(u" "_qs);
    list.remove(u"/A.qmp"_qs);
    EXPECT_EQ(list.paths(), QStringList(u"/a.qmp"_qs));
    list.remove(u"/a.qmp  "_qs);
    EXPECT_TRUE(list.paths().isEmpty());
    EXPECT_FALSE(list.hasPlaceholder()) << "it does not come back";
}

TEST_F(KeptLists, OfFavouritesWriteBothCopiesOfTheLastOne) {
    KeptList list = make(KeptList::FavoriteProjects);
    addAll(list, numbered(1, 30));
    list.remove(u"/p/5"_qs);
    EXPECT_EQ(list.paths().size(), 30);
    EXPECT_EQ(list.paths().mid(28), QStringList({u"/p/1"_qs, u"/p/1"_qs}));
    list.save();
    EXPECT_TRUE(bytes("favprojects.idx").startsWith("/p/1\r\n/p/1\r\n/p/2\r\n"));
    EXPECT_EQ(loaded(KeptList::FavoriteProjects), list.paths().mid(0, 29));
}

TEST_F(KeptLists, ShowTheirPlaceholderUntilALineWasRead) {
    const struct {
        const char* bytes;  ///< null: no file
        bool recent;        ///< the placeholder of recent files shows
        bool favorites;
    } cases[] = {{nullptr, true, true}, {"", true, true}, {"\r\n", false, true}, {"/a\r\n", false, false}};
    for (const auto& each : cases) {
        for (const char* name : {"lastfiles.idx", "favprojects.idx"}) {
            QFile::remove(file(name));
            if (each.bytes != nullptr)
                put(name, each.bytes);
        }
        KeptList recent = make(KeptList::RecentFiles);
        EXPECT_TRUE(recent.hasPlaceholder());
        recent.load();
        EXPECT_EQ(recent.hasPlaceholder(), each.recent) << (each.bytes == nullptr ? "no file" : each.bytes);
        KeptList favorites = make(KeptList::FavoriteProjects);
        favorites.load();
        EXPECT_EQ(favorites.hasPlaceholder(), each.favorites) << (each.bytes == nullptr ? "no file" : each.bytes);
    }
}

TEST_F(KeptLists, ReportEachChangeOnce) {
    put("lastfiles.idx", "/a\r\n/b\r\n");
    KeptList list = make(KeptList::RecentFiles);
    const QSignalSpy changes(&list, &KeptList::changed);
    list.load();
    EXPECT_EQ(changes.size(), 1);
    list.add(u"/c"_qs);
    EXPECT_EQ(changes.size(), 2);
    list.remove(u"/c"_qs);
    EXPECT_EQ(changes.size(), 3);
}

TEST_F(KeptLists, LeaveOutWhatALineCannotHold) {
    KeptList list = make(KeptList::RecentFiles);
    addAll(list, {u"/a"_qs, u"/tab\there"_qs, u"/line\nbreak"_qs, u"/b"_qs});
    EXPECT_EQ(list.paths().size(), 4);
    list.save();
    EXPECT_EQ(bytes("lastfiles.idx"), "/a\r\n/b\r\n");
}

TEST_F(KeptLists, AnEmptyOneEmptiesItsFile) {
    put("lastfiles.idx", "/a\r\n");
    make(KeptList::RecentFiles).save();
    EXPECT_EQ(bytes("lastfiles.idx"), "");
}

TEST_F(KeptLists, AreReadInOtherEncodingsToo) {
    put("lastfiles.idx", "/gr\xFC\xDF\r\n");
    EXPECT_EQ(loaded(KeptList::RecentFiles), QStringList(u"/grüß"_qs));
    put("lastfiles.idx", "\xEF\xBB\xBF/\xC3\xBC\n");
    EXPECT_EQ(loaded(KeptList::RecentFiles), QStringList(u"/ü"_qs));
}

TEST_F(KeptLists, OfGeneratedPathsComeBackAsTheyWere) {
    std::mt19937 random(4'711);
    const QString letters = u"abcÄßé漢 &'\"%\\#;~.-\u00A0\u2028\U0001F600/"_qs;
    for (int round = 0; round < 200; ++round) {
        KeptList list = make(KeptList::RecentFiles);
        for (unsigned i = random() % 15; i > 0; --i) {
            QString path = u"/"_qs;
            for (unsigned length = random() % 40; length > 0; --length)
                path += letters.at(static_cast<qsizetype>(random() % static_cast<unsigned>(letters.size())));
            if (path.isValidUtf16())
                list.add(path);
        }
        list.save();
        ASSERT_EQ(loaded(KeptList::RecentFiles), list.paths()) << round;
    }
}

TEST_F(KeptLists, SurviveAFileThatIsNone) {
    ASSERT_EQ(::mkfifo(file("lastfiles.idx").toUtf8().constData(), 0600), 0);
    EXPECT_TRUE(loaded(KeptList::RecentFiles).isEmpty());
    ASSERT_EQ(::mkdir(file("lastprojects.idx").toUtf8().constData(), 0700), 0);
    KeptList list = make(KeptList::RecentProjects);
    list.load();
    list.add(u"/a"_qs);
    list.save();
    EXPECT_TRUE(loaded(KeptList::RecentProjects).isEmpty());
}

TEST_F(KeptLists, KeepTheOldFileInAFolderThatCannotBeWritten) {
    put("lastfiles.idx", "/old\r\n");
    const QByteArray folder = m_folder.path().toUtf8();
    ASSERT_EQ(::chmod(folder.constData(), 0555), 0);
    const bool kept = asSomebodyElse([this] {
        KeptList list = make(KeptList::RecentFiles);
        list.add(u"/new"_qs);
        list.save();
        return true;
    });
    ASSERT_EQ(::chmod(folder.constData(), 0755), 0);
    EXPECT_TRUE(kept);
    EXPECT_EQ(bytes("lastfiles.idx"), "/old\r\n");
}

TEST(ProjectNames, AreTheFileNamesWithoutTheirEnding) {
    const std::pair<const char*, const char*> names[] = {{"/home/u/work.qmp", "work"},
                                                         {"/home/u/work.QMP", "work"},
                                                         {"/a/b.c.Qmp", "b.c"},
                                                         {"/a/work.txt", "work.txt"},
                                                         {"work.qmp", "work"},
                                                         {"/a/.qmp", ""},
                                                         {"/a/qmp", "qmp"},
                                                         {"/a.qmp/", ""},
                                                         {"", ""},
                                                         {"/a/x.qmp.qmp", "x.qmp"},
                                                         {"[New Project]", "[New Project]"}};
    for (const auto& [path, name] : names) {
        EXPECT_EQ(ProjectDisplayName(QString::fromLatin1(path)), QString::fromLatin1(name)) << path;
    }
}
