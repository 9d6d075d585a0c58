// quillmark-recover with journals, run as a person runs it.

#include "recovery/RecoverToolRun.h"
#include "recovery/journals/JournalFixture.h"

#include <sys/stat.h>
#include <unistd.h>

namespace {

class RecoverToolOfJournals : public JournalFixture {
 protected:
    RecoverToolRun run(const QStringList& arguments) const {
        return {at(QString()), QStringList({u"--folder"_qs, folder()}) + arguments};
    }
};

TEST_F(RecoverToolOfJournals, JournalsAreListedAndShown) {
    const QString path = file("one two", u"a\x1b[2Jb"_qs);
    const QString name = leave(baseOf(path), "new ");
    const QString list = run({u"list"_qs}).output;
    EXPECT_EQ(list.section(u'\t', 0, 0), name);
    EXPECT_EQ(list.section(u'\t', 2), u"unsaved\t%1\n"_qs.arg(at(u"a\\x1b[2Jb"_qs)));
    const RecoverToolRun shown = run({u"show"_qs, name});
    EXPECT_EQ(shown.exitCode, 0);
    EXPECT_TRUE(shown.output.contains(u"based on: 7 bytes"_qs)) << shown.output.toStdString();
    EXPECT_TRUE(shown.output.contains(u"encoding: UTF-8\n"_qs));
    EXPECT_TRUE(shown.output.contains(u"its file: is as it was"_qs));
    EXPECT_TRUE(shown.output.contains(u"recovered: 11 bytes of text\n"_qs));
    EXPECT_FALSE(shown.output.contains(u'\x1b'));
    put(path, "new one two");
    EXPECT_TRUE(run({u"list"_qs}).output.contains(u"\tsaved\t"_qs));
    EXPECT_TRUE(run({u"show"_qs, name}).output.contains(u"which the file has"_qs));
}

TEST_F(RecoverToolOfJournals, ATextIsRestoredInTheEncodingOfItsDocument) {
    JournalBase base = baseOf(file("\xff\xfeo\0n\0e\0", u"file"_qs));
    put(at(u"file"_qs), QByteArray("\xff\xfeo\0n\0e\0", 8));
    base.state = FileState::of(base.path);
    base.format = {TextEncoding::Utf16LittleEndian, true};
    const QString name = leave(base, "x");
    EXPECT_EQ(run({u"restore"_qs, name, u"found"_qs}).exitCode, 0);
    EXPECT_EQ(bytesOf(at(u"found"_qs)), QByteArray("\xff\xfex\0o\0n\0e\0", 10));
    EXPECT_EQ(run({u"restore"_qs, name, u"plain"_qs, u"--utf8"_qs}).exitCode, 0);
    EXPECT_EQ(bytesOf(at(u"plain"_qs)), "xone");
    struct stat status {};
    ASSERT_EQ(::stat(QFile::encodeName(at(u"found"_qs)).constData(), &status), 0);
    EXPECT_EQ(status.st_mode & ALLPERMS, 0600U);
    EXPECT_EQ(names(u"*.journal"_qs).size(), 1) << "it stays";
}

TEST_F(RecoverToolOfJournals, WhatTheEncodingCannotHoldIsWrittenInUtf8OnlyWhenAskedFor) {
    JournalBase base = baseOf(file("one"));
    base.format = {TextEncoding::Windows1252, false};
    const QString name = leave(base, "\xe4\xb8\xad");
    const RecoverToolRun refused = run({u"restore"_qs, name, u"found"_qs});
    EXPECT_EQ(refused.exitCode, 4);
    EXPECT_TRUE(refused.error.contains(u"--utf8"_qs));
    EXPECT_FALSE(QFile::exists(at(u"found"_qs)));
    EXPECT_EQ(run({u"restore"_qs, name, u"found"_qs, u"--utf8"_qs}).exitCode, 0);
    EXPECT_EQ(bytesOf(at(u"found"_qs)), "\xe4\xb8\xadone");
}

TEST_F(RecoverToolOfJournals, NothingIsOverwrittenAndNoLinkIsFollowed) {
    const QString name = leave(baseOf(file("one")), "x");
    put(at(u"mine"_qs), "mine");
    ASSERT_TRUE(QFile::link(at(u"nothing"_qs), at(u"link"_qs)));
    const QStringList targets = {u"mine"_qs, u"link"_qs, u"no/such/folder"_qs};
    for (const QString& target : targets) {
        EXPECT_EQ(run({u"restore"_qs, name, target}).exitCode, 3);
    }
    EXPECT_EQ(bytesOf(at(u"mine"_qs)), "mine");
    EXPECT_FALSE(QFile::exists(at(u"nothing"_qs)));
    const QStringList options = {u"--overwrite"_qs, u"--of=x"_qs, u"--base=x"_qs};
    for (const QString& option : options) {
        EXPECT_EQ(run({u"restore"_qs, name, u"other"_qs, option}).exitCode, 2);
    }
}

TEST_F(RecoverToolOfJournals, BytesAreRestoredWithTheirUndo) {
    const QString path = file("0123456789012345678");
    {
        const auto journals = makeJournals();
        const auto journal = journals->begin(baseOf(path, JournalBase::View::Hex));
        journal->type(1, 0, 2, 'a');
        journal->type(1, 1, 1, 'b');
        journal->takeBack();
        journal->fill(4, 3, 'f');
        journal->overwrite(8, "OVER");
    }
    const QString name = names(u"*.journal"_qs).value(0);
    EXPECT_TRUE(run({u"show"_qs, name}).output.contains(u"recovered: bytes of a file of 19 bytes"_qs));
    EXPECT_EQ(run({u"restore"_qs, name, u"found"_qs}).exitCode, 0);
    EXPECT_EQ(bytesOf(at(u"found"_qs)), "01a3fff7OVER2345678");
}

TEST_F(RecoverToolOfJournals, OneOfALivingProcessIsReadAndNotDropped) {
    const auto journals = makeJournals();
    const auto journal = journals->begin(baseOf(file("one")));
    journal->insert(0, "x");
    ASSERT_TRUE(journals->flush(Long));
    const QString name = names(u"*.journal"_qs).value(0);
    EXPECT_TRUE(run({u"list"_qs}).output.contains(u"\tin use\t"_qs));
    EXPECT_TRUE(run({u"show"_qs, name}).output.contains(u"recovered: 4 bytes"_qs));
    EXPECT_EQ(run({u"restore"_qs, name, u"found"_qs}).exitCode, 0);
    EXPECT_EQ(bytesOf(at(u"found"_qs)), "xone");
    EXPECT_EQ(run({u"drop"_qs, name}).exitCode, 3);
    EXPECT_TRUE(QFile::exists(folder() + u'/' + name));
}

TEST_F(RecoverToolOfJournals, ThoseSetAsideAreShownAndDroppedWithTheirBase) {
    const QString path = file("one");
    const QString name = leave(baseOf(path), "x");
    put(path, "another");
    const QString aside = name + u".aside"_qs;
    ASSERT_TRUE(QFile::rename(folder() + u'/' + name, folder() + u'/' + aside));
    EXPECT_TRUE(run({u"list"_qs}).output.contains(u"\tset aside\t"_qs));
    EXPECT_TRUE(run({u"show"_qs, aside}).output.contains(u"its file: was changed since"_qs));
    EXPECT_EQ(run({u"restore"_qs, aside, u"found"_qs}).exitCode, 0);
    EXPECT_EQ(bytesOf(at(u"found"_qs)), "xone");
    EXPECT_EQ(run({u"drop"_qs, aside, name}).exitCode, 1);
    EXPECT_EQ(names(), QStringList());
}

TEST_F(RecoverToolOfJournals, WithoutItsBaseAJournalIsShownAndNotRestored) {
    const QString path = file("one");
    const QString name = leave(baseOf(path), "x");
    EXPECT_TRUE(QFile::remove(path));
    EXPECT_TRUE(QFile::remove(folder() + u'/' + names(u"*.base"_qs).value(0)));
    EXPECT_TRUE(run({u"list"_qs}).output.contains(u"\twithout its base\t"_qs));
    const QString shown = run({u"show"_qs, name}).output;
    EXPECT_TRUE(shown.contains(u"its file: is missing"_qs));
    EXPECT_TRUE(shown.contains(u"there is no copy of it"_qs));
    EXPECT_EQ(run({u"restore"_qs, name, u"found"_qs}).exitCode, 4);
    EXPECT_FALSE(QFile::exists(at(u"found"_qs)));
}

TEST_F(RecoverToolOfJournals, OneWhoseFileCannotBeReachedNowIsShownAndNotRestored) {
    ASSERT_TRUE(QDir().mkpath(at(u"volume"_qs)));
    const QString name = leave(baseOf(file("one", u"volume/file"_qs)), "x");
    EXPECT_TRUE(QDir(at(u"volume"_qs)).removeRecursively());
    EXPECT_EQ(run({u"restore"_qs, name, u"found"_qs}).exitCode, 0) << "there is a copy";
    EXPECT_TRUE(QFile::remove(folder() + u'/' + names(u"*.base"_qs).value(0)));
    EXPECT_TRUE(run({u"list"_qs}).output.contains(u"\tcannot be read\t"_qs));
    const QString shown = run({u"show"_qs, name}).output;
    EXPECT_TRUE(shown.contains(u"its file: cannot be reached now\n"_qs)) << shown.toStdString();
    EXPECT_TRUE(shown.contains(u"  its file cannot be reached now, and there is no copy of it\n"_qs));
    const RecoverToolRun refused = run({u"restore"_qs, name, u"other"_qs});
    EXPECT_EQ(refused.exitCode, 3);
    EXPECT_TRUE(refused.error.contains(u"cannot be reached now"_qs));
    EXPECT_FALSE(QFile::exists(at(u"other"_qs)));
}

TEST_F(RecoverToolOfJournals, OneThatCannotBeReadCanOnlyBeDropped) {
    for (const auto& [bytes, state] :
         {std::pair("nothing of the kind", u"damaged"_qs), std::pair("QMJRNL1\nnothing", u"of another version"_qs)}) {
        const QString name = leave(JournalBase(), "x");
        put(folder() + u'/' + name, bytes);
        EXPECT_TRUE(run({u"list"_qs}).output.endsWith(u'\t' + state + u'\n'));
        const RecoverToolRun shown = run({u"show"_qs, name});
        EXPECT_EQ(shown.exitCode, 4);
        EXPECT_TRUE(shown.error.contains(state));
        EXPECT_EQ(run({u"restore"_qs, name, u"found"_qs}).exitCode, 4);
        EXPECT_EQ(run({u"drop"_qs, name}).exitCode, 0);
        EXPECT_EQ(run({u"show"_qs, name}).exitCode, 1);
    }
}

}  // namespace
