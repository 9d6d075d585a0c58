#include "recovery/journals/JournalFile.h"
#include "recovery/journals/Journals.h"
#include "recovery/saves/RecordFormat.h"
#include "recovery/saves/SaveRecording.h"

#include <sys/file.h>

/// What is set aside, and for how long.

using namespace SaveTests;

namespace {

class SettingAside : public SaveRecording {
 protected:
    void setBeginning(const QByteArray& beginning) const {
        QByteArray bytes = bytesOf(firstRecord());
        bytes.replace(0, beginning.size(), beginning);
        put(firstRecord(), bytes);
    }
    /// Files of which each was set aside later than the one before; all of them now.
    static QStringList makeAsides(const QString& folder, const QString& suffix, int count) {
        EXPECT_TRUE(QDir().mkpath(folder));
        QStringList names;
        for (int i = 0; i < count; ++i) {
            names << u"%1-1-1%2"_qs.arg(i, 3, 10, QLatin1Char('0')).arg(suffix);
            put(folder + u'/' + names.last(), "anything");
            setTime(folder + u'/' + names.last(), ::time(nullptr) + i);
        }
        return names;
    }
    static QDateTime after(int days) { return QDateTime::currentDateTime().addDays(days); }
    static QStringList namesIn(const QString& folder) {
        return QDir(folder).entryList(QDir::Files | QDir::Hidden, QDir::Name);
    }
};

}  // namespace

TEST_F(SettingAside, ARecordOfAnotherVersionIsKeptUnderAnotherName) {
    for (const char* beginning : {"QMSAVE1\n", "QMSAVE2\n", "QMSAVE9\n", "something", "\x01"}) {
        const QString path = file("old");
        interruptedSave(path, "new");
        setBeginning(beginning);
        const QByteArray bytes = bytesOf(firstRecord());
        EXPECT_EQ(recover(), (Summary{0, 0, 1, 0})) << beginning;
        ASSERT_EQ(records().size(), 1);
        EXPECT_TRUE(records().first().endsWith(u".save.aside"_qs));
        EXPECT_EQ(bytesOf(firstRecord()), bytes);
        EXPECT_EQ(bytesOf(path), "old");
        EXPECT_EQ(recover(), Summary());
        ASSERT_TRUE(QFile::remove(firstRecord()));
    }
}

TEST_F(SettingAside, ARecordOfOursThatIsDamagedOrBlankIsRemoved) {
    const QByteArray magic(RecordFormat::Magic, sizeof RecordFormat::Magic);
    for (const QByteArray& bytes :
         {QByteArray(), QByteArray(3, '\0'), QByteArray(70'000, '\0'), magic.left(1), magic.left(5), magic,
          magic.left(4) + QByteArray(100, '\0'), '\0' + magic.mid(1), QByteArray(7, '\0') + magic.mid(7),
          magic + QByteArray(100, 'x'), QByteArray(8, '\0') + QByteArray(100, 'x')}) {
        file("old");
        interruptedSave(at(u"file"_qs), "new");
        put(firstRecord(), bytes);
        EXPECT_EQ(recover(), (Summary{1, 0, 0, 0})) << bytes.size();
        EXPECT_TRUE(QDir(folder()).isEmpty());
    }
}

TEST_F(SettingAside, ABeginningThatCannotBeReadNowIsNoReasonToRemoveARecord) {
    interruptedSave(file("old"), "new");
    QByteArray damaged = bytesOf(firstRecord());
    damaged[30] = static_cast<char>(damaged[30] + 1);
    put(firstRecord(), damaged);
    FailingFileSystem undisturbed;
    undisturbed.fail(SystemCall::Unlink, 0, EACCES);
    undisturbed.fail(SystemCall::Truncate, 0, EACCES);
    SaveRecovery(folder(), undisturbed).run();
    FailingFileSystem failing;
    failing.fail(SystemCall::ReadAt, undisturbed.count(SystemCall::ReadAt), EIO);
    EXPECT_EQ(SaveRecovery(folder(), failing).run(), (Summary{0, 0, 0, 1}));
    EXPECT_EQ(records().size(), 1);
}

TEST_F(SettingAside, OldAsidesAreRemovedButTheLastTwenty) {
    const QStringList names = makeAsides(folder(), u".save.aside"_qs, 25);
    put(folder() + u"/1-1-1.save"_qs, "in use");
    SaveRecovery(folder()).removeOldAsides(after(90));
    EXPECT_EQ(namesIn(folder()).size(), 26);
    SaveRecovery(folder()).removeOldAsides(after(92));
    EXPECT_EQ(namesIn(folder()), names.mid(5) + QStringList{u"1-1-1.save"_qs});
    SaveRecovery(folder()).removeOldAsides(after(4'000));
    EXPECT_EQ(namesIn(folder()).size(), 21);
}

TEST_F(SettingAside, AnAsideThatIsInUseOrALinkIsNotRemoved) {
    const QStringList names = makeAsides(folder(), u".save.aside"_qs, 22);
    file("kept", u"elsewhere"_qs);
    ASSERT_TRUE(QFile::remove(folder() + u'/' + names[1]));
    ASSERT_EQ(::symlink(nameOf(at(u"elsewhere"_qs)).constData(), nameOf(folder() + u'/' + names[1]).constData()), 0);
    const int handle = ::open(nameOf(folder() + u'/' + names[0]).constData(), O_RDONLY | O_CLOEXEC);
    ASSERT_EQ(::flock(handle, LOCK_EX | LOCK_NB), 0);
    SaveRecovery(folder()).removeOldAsides(after(1'000));
    EXPECT_EQ(namesIn(folder()).size(), 22);
    EXPECT_EQ(bytesOf(at(u"elsewhere"_qs)), "kept");
    ::close(handle);
    SaveRecovery(folder()).removeOldAsides(after(1'000));
    EXPECT_EQ(namesIn(folder()).size(), 21);
}

TEST_F(SettingAside, OldAsidesOfJournalsAreRemovedWithTheirCopies) {
    const QString suffix = QLatin1String(JournalFile::Suffix) + QLatin1String(JournalFile::AsideSuffix);
    const QStringList names = makeAsides(folder(), suffix, 22);
    put(JournalFile::basePath(folder() + u"/000-1-1"_qs, 1), "a copy");
    put(JournalFile::basePath(folder() + u"/021-1-1"_qs, 1), "a copy");
    Journals journals(folder());
    journals.removeOldAsides(after(80));
    EXPECT_EQ(namesIn(folder()).size(), 24);
    journals.removeOldAsides(after(100));
    EXPECT_EQ(namesIn(folder()).filter(suffix), names.mid(2));
    EXPECT_EQ(namesIn(folder()).size(), 21);
    EXPECT_TRUE(QFile::exists(JournalFile::basePath(folder() + u"/021-1-1"_qs, 1)));
}

TEST_F(SettingAside, WithoutAFolderOrInThatOfALinkNothingIsRemoved) {
    SaveRecovery(folder()).removeOldAsides(after(1'000));
    EXPECT_FALSE(QDir(folder()).exists());
    makeAsides(at(u"elsewhere"_qs), u".save.aside"_qs, 22);
    ASSERT_TRUE(QDir().mkpath(at(u"state"_qs)));
    ASSERT_EQ(::symlink(nameOf(at(u"elsewhere"_qs)).constData(), nameOf(folder()).constData()), 0);
    SaveRecovery(folder()).removeOldAsides(after(1'000));
    EXPECT_EQ(namesIn(at(u"elsewhere"_qs)).size(), 22);
}
