#include "document/rtCM.h"
#include "shell/search/SearchInFrame.h"

#include <QPushButton>

#include <sys/stat.h>
#include <unistd.h>

namespace {

constexpr qint64 HugeSize = 300LL * 1024 * 1024;

}  // namespace

/// A directory that is missing is reported in the middle of a walk, so a test can act there.
class SearchCancel : public SearchInFrame {
 protected:
    /// Files in "one", then a directory that is missing, then files in "two".
    SearchRequest inThreeParts(SearchRequest request, int count) {
        for (const QString& name : {u"one"_qs, u"two"_qs}) {
            folder(name);
            for (int i = 0; i < count; ++i)
                fileOf("foo", u"%1/%2.txt"_qs.arg(name).arg(i, 4, 10, QChar(u'0')));
        }
        request.directories = path(u"one"_qs) + u';' + path(u"gone"_qs) + u';' + path(u"two"_qs);
        return request;
    }
    QString hugeFile(const QByteArray& end = {}) {
        QString file = fileOf("foo", u"huge.txt"_qs);
        EXPECT_EQ(::truncate(QFile::encodeName(file).constData(), HugeSize), 0);
        QFile opened(file);
        EXPECT_TRUE(opened.open(QIODevice::ReadWrite | QIODevice::Append));
        opened.write(end);
        return file;
    }
    void abortAfterTheFirstFile() {
        atYields([this] {
            if (searched() == 0)
                return false;
            m_frame->AbortSearch();
            return true;
        });
    }
    /// A file of some size is being searched then.
    void abortAtThirdYield() {
        atYields([this, yields = 0]() mutable {
            if (++yields < 3)
                return false;
            m_frame->AbortSearch();
            return true;
        });
    }
    /// The files of the folders "one" and "two" that hold this.
    QStringList filesWith(const QByteArray& bytes) {
        QStringList names;
        for (const QString& folder : {path(u"one"_qs), path(u"two"_qs)}) {
            for (const QString& name : QDir(folder).entryList(QDir::Files)) {
                if (bytesOf(folder + u'/' + name) == bytes)
                    names << folder + u'/' + name;
            }
        }
        return names;
    }
};

TEST_F(SearchCancel, HidesTheWindowAtOnceAndShowsTheCountSoFar) {
    start();
    const SearchRequest request = inThreeParts(find(u"foo"_qs), 5);
    bool wasVisible = true;
    m_prompts.whileShown([&] {
        window()->findChild<QPushButton*>(u"cmdCancel"_qs)->click();
        wasVisible = window()->isVisible();
        EXPECT_TRUE(m_frame->AbortFlag());
    });
    search(request);
    EXPECT_FALSE(wasVisible);
    EXPECT_FALSE(window()->isVisible());
    EXPECT_EQ(m_prompts.messages.size(), 1);
    EXPECT_EQ(searched(), 5);
    EXPECT_EQ(found(), 5);
    EXPECT_EQ(files().size(), 5);
    EXPECT_EQ(title(), u"Search completed, files found : 5"_qs);
    EXPECT_EQ(status(), statusOf(path(u"one/0004.txt"_qs), 5, 5));
    EXPECT_FALSE(house().systemClose.isGreyed());
}

TEST_F(SearchCancel, BeforeTheFirstFileSearchesNothing) {
    start();
    makeFiles(3, "foo");
    for (const SearchIn scope : {SearchIn::FilesListed, SearchIn::OpenFiles, SearchIn::ProjectFiles}) {
        m_frame->ProjectFilename = path(u"p.qmp"_qs);
        m_items.items = {{path(u"000000.txt"_qs), u"FILE"_qs}};
        atYields([&] {
            m_frame->AbortSearch();
            return true;
        });
        search(in(scope, find(u"foo"_qs)));
        EXPECT_EQ(searched(), 0) << static_cast<int>(scope);
        EXPECT_EQ(title(), u"Search completed, files found : 0"_qs);
    }
    m_frame->ProjectFilename.clear();
}

TEST_F(SearchCancel, ANewSearchIsWholeAgain) {
    start();
    const SearchRequest request = inThreeParts(find(u"foo"_qs), 5);
    m_prompts.whileShown([&] { m_frame->AbortSearch(); });
    search(request);
    ASSERT_EQ(found(), 5);
    search(request);
    EXPECT_EQ(found(), 10);
    EXPECT_EQ(files().size(), 10);
}

TEST_F(SearchCancel, InTheMiddleOfManyFilesListsThoseThatWereCounted) {
    start();
    makeFiles(6'000, "foo");
    abortAfterTheFirstFile();
    search(find(u"foo"_qs));
    EXPECT_TRUE(allActionsWereDone());
    EXPECT_GT(searched(), 0);
    EXPECT_LT(searched(), 6'000);
    EXPECT_EQ(found(), searched());
    EXPECT_EQ(files().size(), found());
    EXPECT_EQ(title(), u"Search completed, files found : %1"_qs.arg(found()));
    EXPECT_EQ(status(), statusOf(path(u"%1.txt"_qs.arg(searched() - 1, 6, 10, QChar(u'0'))), searched(), found()));
}

TEST_F(SearchCancel, InsideOfAHugeFileEndsTheSearchThere) {
    start();
    const QString file = hugeFile();
    fileOf("foo", u"z.txt"_qs);
    const SearchRequest request = expression(find(u"foo|\\x00{3}x"_qs));
    abortAtThirdYield();
    search(request);
    EXPECT_TRUE(allActionsWereDone());
    EXPECT_LT(searched(), 2);
    EXPECT_EQ(found(), searched());
    EXPECT_EQ(files(), QStringList(file).mid(0, found()));
    EXPECT_EQ(title(), u"Search completed, files found : %1"_qs.arg(found()));
}

TEST_F(SearchCancel, InsideOfAHugeFileThatIsReplacedLeavesItAsItWas) {
    start();
    const QString file = hugeFile("foo");
    struct stat before {};
    ASSERT_EQ(::stat(QFile::encodeName(file).constData(), &before), 0);
    abortAtThirdYield();
    search(replace(u"foo"_qs, u"bars"_qs));
    EXPECT_TRUE(allActionsWereDone());
    struct stat after {};
    ASSERT_EQ(::stat(QFile::encodeName(file).constData(), &after), 0);
    EXPECT_EQ(after.st_size, before.st_size);
    EXPECT_EQ(after.st_mtim.tv_nsec, before.st_mtim.tv_nsec);
    EXPECT_EQ(found(), 0);
    EXPECT_TRUE(files().isEmpty());
}

TEST_F(SearchCancel, InAReplaceTheChangedFilesAreThoseThatAreCounted) {
    start();
    const SearchRequest request = inThreeParts(replace(u"foo"_qs, u"longer"_qs), 100);
    m_prompts.whileShown([&] { m_frame->AbortSearch(); });
    search(request);
    const QStringList changed = filesWith("longer");
    EXPECT_EQ(changed.size() + filesWith("foo").size(), 200);
    EXPECT_EQ(changed.size(), 100);  // the box keeps the others from being written
    EXPECT_EQ(found(), 100);
    EXPECT_EQ(searched(), 100);
    EXPECT_EQ(files(), changed);
    EXPECT_EQ(title(), u"Replace completed, changed files : %1"_qs.arg(changed.size()));
}

TEST_F(SearchCancel, InTheMiddleOfAReplaceTheChangedFilesAreThoseThatAreCounted) {
    start();
    SearchRequest request = inThreeParts(replace(u"foo"_qs, u"longer"_qs), 500);
    request.directories = path(u"one"_qs) + u';' + path(u"two"_qs);
    abortAfterTheFirstFile();
    search(request);
    const QStringList changed = filesWith("longer");
    EXPECT_TRUE(allActionsWereDone());
    EXPECT_EQ(changed.size() + filesWith("foo").size(), 1'000);
    EXPECT_EQ(found(), changed.size());
    EXPECT_EQ(files(), changed);
    EXPECT_EQ(title(), u"Replace completed, changed files : %1"_qs.arg(changed.size()));
}

TEST_F(SearchCancel, InAReplaceCountsNoFileBehindTheLastOneThatWasChanged) {
    start();
    SearchRequest request = inThreeParts(replace(u"foo"_qs, u"longer"_qs), 600);
    request.directories = path(u"one"_qs) + u';' + path(u"two"_qs);
    for (const QString& name : QDir(path(u"two"_qs)).entryList(QDir::Files))
        fileOf("no match", u"two/"_qs + name);
    abortAfterTheFirstFile();
    search(request);
    EXPECT_TRUE(allActionsWereDone());
    ASSERT_LT(found(), 600);
    EXPECT_EQ(searched(), found());
    EXPECT_EQ(title(), u"Replace completed, changed files : %1"_qs.arg(filesWith("longer").size()));
}

TEST_F(SearchCancel, InADocumentKeepsWhatWasReplacedAndUndoBringsItBack) {
    start();
    const QByteArray before = QByteArray("foo\n").repeated(1'000'000);
    open(fileOf(before));
    abortAfterTheFirstFile();
    search(in(SearchIn::OpenFiles, replace(u"foo"_qs, u"ba"_qs)));
    EXPECT_TRUE(allActionsWereDone());
    EXPECT_EQ(title(), u"Replace completed, changed files : %1"_qs.arg(found()));
    for (int i = 0; i < 3 && canUndo(); ++i)
        run("mnuEditUndo");
    EXPECT_EQ(text().toUtf8(), before);
}

// An expression that takes too long

class SlowExpression : public SearchInFrame {
 protected:
    bool hasHiddenEditor() const {
        return m_frame->findChild<QWidget*>(u"rtCM1"_qs, Qt::FindDirectChildrenOnly) != nullptr;
    }
    static QByteArray slowText() { return "xab\n" + QByteArray(40, 'a') + "\nxab\n"; }
};

TEST_F(SlowExpression, IsSearchedForAsInADocument) {
    start();
    const QString file = fileOf(slowText());
    EXPECT_FALSE(hasHiddenEditor());
    search(expression(find(u"x?(a+)+b"_qs)));
    EXPECT_TRUE(hasHiddenEditor());
    EXPECT_EQ(searched(), 1);
    open(file);
    QString expected;
    active()->FindAllMatch(u"x?(a+)+b"_qs, expected, true, false, false);
    ASSERT_FALSE(expected.isEmpty());
    QString listed;
    for (const QString& tag : tags(0)) {
        const QStringList fields = tag.split(u',');
        listed += QString::number(fields[0].toInt() - 1) + u',' + fields[1] + u',' + fields[2] + u'\t';
    }
    EXPECT_EQ(listed, expected);
    EXPECT_EQ(files(), QStringList(file));
}

TEST_F(SlowExpression, IsReplacedAsInADocument) {
    start();
    const QString file = fileOf(slowText());
    const QString other = fileOf(slowText(), u"b.dat"_qs);
    SearchRequest request = expression(replace(u"x?(a+)+b"_qs, u"-"_qs));
    request.patterns = u"*.txt"_qs;
    search(request);
    open(other);
    QString expected;
    active()->ReplaceAllMatch(request.text, request.replacement, expected, true, false, false, false);
    EXPECT_EQ(bytesOf(file), text().toUtf8());
    EXPECT_EQ(found(), 1);
    EXPECT_NE(bytesOf(file), slowText());
    EXPECT_EQ(tags(0).size(), expected.count(u'\t'));
}

TEST_F(SlowExpression, InAFileTooLargeForTheHiddenEditorReplacesNothingAndSaysSo) {
    start();
    const QByteArray before = slowText() + QByteArray(65 * 1024 * 1024, '\n');
    const QString file = fileOf(before);
    SearchRequest request = expression(replace(u"x?(a+)+b"_qs, u"-"_qs));
    search(request);
    EXPECT_FALSE(hasHiddenEditor());
    EXPECT_TRUE(bytesOf(file) == before);
    EXPECT_EQ(found(), 0);
    EXPECT_EQ(house().status.text(1), u"'%1' was not searched to its end: the expression takes too long."_qs.arg(file));
    request.replaces = false;
    search(request);
    EXPECT_EQ(files(), QStringList(file));
    EXPECT_EQ(tags(0), QStringList(u"1,0,3"_qs));
    EXPECT_FALSE(house().status.text(1).isEmpty());
}
