#include "shell/session/SessionFile.h"

#include <gtest/gtest.h>

#include <random>

namespace {

QStringList list(std::initializer_list<const char*> texts) {
    QStringList all;
    for (const char* text : texts)
        all << QString::fromUtf8(text);
    return all;
}

}  // namespace

TEST(SessionFiles, HoldAProjectOrDocuments) {
    const SessionFile project{u"/a.qmp"_qs, {}};
    EXPECT_EQ(project.toLines(), list({"<PROJECT>", "/a.qmp"}));
    EXPECT_EQ(SessionFile::fromLines(project.toLines()), project);
    const SessionFile documents{{}, list({"/a\tTrue", "/b"})};
    EXPECT_EQ(documents.toLines(), list({"<FILE>", "/a\tTrue", "/b"}));
    EXPECT_EQ(SessionFile::fromLines(documents.toLines()), documents);
    EXPECT_EQ(SessionFile().toLines(), list({"<FILE>"}));
}

TEST(SessionFiles, OfAnotherFirstLineAreEmpty) {
    for (const QStringList& lines :
         {list({}), list({""}), list({"", "<FILE>", "/a"}), list({"<file>", "/a"}), list({"<<OPEN FILE>>", "/a"}),
          list({"<FILES>", "/a"}), list({"/a", "/b"}), list({"<PROJECTS>", "/a"})}) {
        EXPECT_EQ(SessionFile::fromLines(lines), SessionFile()) << qPrintable(lines.join(u'|'));
    }
}

TEST(SessionFiles, TrimTheFirstLineAloneAndPassOverBlankOnes) {
    EXPECT_EQ(SessionFile::fromLines(list({"  <FILE>\t", "", " /a ", "", "/b"})),
              (SessionFile{{}, list({" /a ", "/b"})}));
    EXPECT_EQ(SessionFile::fromLines(list({" <PROJECT> ", " /p.qmp ", "/b"})), (SessionFile{u" /p.qmp "_qs, {}}));
    EXPECT_EQ(SessionFile::fromLines(list({"<PROJECT>", "", "/p.qmp"})), SessionFile());
    EXPECT_EQ(SessionFile::fromLines(list({"<PROJECT>"})), SessionFile());
}

TEST(SessionFiles, LeaveOutAProjectThatALineCannotHold) {
    EXPECT_EQ((SessionFile{u"/a\tb"_qs, {}}.toLines()), list({"<PROJECT>"}));
    EXPECT_EQ((SessionFile{u"/a\nb"_qs, {}}.toLines()), list({"<PROJECT>"}));
}

TEST(SessionFiles, GeneratedOnesComeBackAsTheyWere) {
    std::mt19937 random(99);
    for (int round = 0; round < 500; ++round) {
        SessionFile session;
        if (random() % 3 == 0)
            session.project = u"/project %1.qmp"_qs.arg(random());
        for (unsigned i = random() % 30; i > 0 && session.project.isEmpty(); --i)
            session.records << u"/file %1\tTrue\t<FILE>"_qs.arg(random());
        ASSERT_EQ(SessionFile::fromLines(session.toLines()), session) << round;
    }
}
