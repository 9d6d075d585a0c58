#include "workspace/files/FolderFixture.h"
#include "workspace/lists/FileFacts.h"

#include <cerrno>

namespace {

class FileFactsOf : public FolderFixture {
 protected:
    FolderSum& count(const QString& folder) {
        addUp(folder, m_sum, m_stop);
        return m_sum;
    }

    FolderSum m_sum;
    std::atomic<bool> m_stop = false;
};

TEST_F(FileFactsOf, AFileHasTypeSizeTimesOwnerAndMode) {
    const QString file = makeFile(u"a.txt"_qs, "12345");
    setWritten(u"a.txt"_qs, 1'709'615'106);
    ASSERT_EQ(::chmod(file.toUtf8().constData(), 04754), 0);
    const FileFacts facts = factsOf(file);
    EXPECT_FALSE(facts.error);
    EXPECT_FALSE(facts.isFolder);
    EXPECT_EQ(facts.size, 5);
    EXPECT_FALSE(facts.type.isEmpty());
    EXPECT_TRUE(facts.modified.startsWith(u"2024/03/0"_qs)) << facts.modified.toStdString();
    EXPECT_EQ(facts.modified, facts.accessed);
    EXPECT_EQ(facts.mode, u"rwxr-xr-- (4754)"_qs);
    EXPECT_FALSE(facts.owner.isEmpty());
    EXPECT_EQ(facts.linkTarget, QString());
}

TEST_F(FileFactsOf, AnUnknownTypeIsAFile) {
    EXPECT_EQ(factsOf(makeFile(u"a.unheard-of"_qs)).type, u"File"_qs);
}

TEST_F(FileFactsOf, AFolderAPipeAndALinkAreCalledSo) {
    EXPECT_EQ(factsOf(makeFolder(u"a.txt"_qs)).type, u"Folder"_qs);
    EXPECT_TRUE(factsOf(in(u"a.txt"_qs)).isFolder);
    EXPECT_EQ(factsOf(makePipe(u"pipe"_qs)).type, u"Pipe"_qs);
    const FileFacts link = factsOf(makeLink(u"link"_qs, in(u"nothing"_qs)));
    EXPECT_EQ(link.type, u"Link"_qs);
    EXPECT_EQ(link.linkTarget, in(u"nothing"_qs));
}

TEST_F(FileFactsOf, APathThatIsNotThereIsAnError) {
    EXPECT_EQ(factsOf(in(u"nothing"_qs)).error.number, ENOENT);
    EXPECT_EQ(factsOf({}).error.number, ENOENT);
}

TEST_F(FileFactsOf, AFolderIsAddedUpWithAllBelow) {
    makeFolder(u"a/b"_qs);
    makeFile(u"one"_qs, "1");
    makeFile(u"a/two"_qs, "22");
    makeFile(u"a/b/.three"_qs, "333");
    const FolderSum& sum = count(root());
    EXPECT_EQ(sum.bytes, 6);
    EXPECT_EQ(sum.files, 3);
    EXPECT_EQ(sum.folders, 2);
    EXPECT_EQ(sum.unread, 0);
}

TEST_F(FileFactsOf, LinksInACircleAreNotFollowed) {
    makeFolder(u"a"_qs);
    makeLink(u"a/up"_qs, root());
    const FolderSum& sum = count(root());
    EXPECT_EQ(sum.folders, 1);
    EXPECT_EQ(sum.files, 1);
}

TEST_F(FileFactsOf, AFolderThatIsNotThereHoldsNothing) {
    EXPECT_EQ(count(in(u"nothing"_qs)).files, 0);
    EXPECT_EQ(m_sum.unread, 1);
}

TEST_F(FileFactsOf, CountingEndsWhenItIsCancelled) {
    makeFile(u"one"_qs);
    m_stop = true;
    EXPECT_EQ(count(root()).files, 0);
}

}  // namespace
