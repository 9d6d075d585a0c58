#include "shell/search/SearchInFrame.h"

#include <sys/stat.h>
#include <unistd.h>

#include <atomic>
#include <thread>

namespace {

QByteArray native(const QString& path) {
    return QFile::encodeName(path);
}

/// Until its end this process has no special rights, if it had any.
class WithoutRights {
 public:
    WithoutRights() : m_user(::geteuid()) {
        constexpr uid_t Nobody = 65534;
        EXPECT_EQ(m_user == 0 ? ::seteuid(Nobody) : 0, 0);
    }
    ~WithoutRights() { EXPECT_EQ(::seteuid(m_user), 0); }
    Q_DISABLE_COPY_MOVE(WithoutRights)

 private:
    const uid_t m_user;
};

}  // namespace

class OddFiles : public SearchInFrame {
 protected:
    /// Everybody may enter the folder of the files.
    void letEverybodyIn() const {
        const QString home = QDir(qEnvironmentVariable("TMPDIR") + u"/.."_qs).absolutePath();
        for (const QString& each : {home, qEnvironmentVariable("TMPDIR"), m_folder.path()}) {
            EXPECT_EQ(::chmod(native(each).constData(), 0755), 0);
        }
    }
    SearchRequest findBelow(const QString& text) const {
        SearchRequest request = find(text);
        request.subDirectories = true;
        return request;
    }
};

TEST_F(OddFiles, OnlyRegularFilesAndLinksToThemAreSearched) {
    start();
    const QString file = fileOf("foo", u"b.txt"_qs);
    const QString link = path(u"c.txt"_qs);
    ASSERT_EQ(::mkfifo(native(path(u"a.txt"_qs)).constData(), 0600), 0);
    ASSERT_TRUE(QFile::link(file, link));
    ASSERT_TRUE(QFile::link(path(u"gone"_qs), path(u"d.txt"_qs)));
    ASSERT_TRUE(QFile::link(path(u"e.txt"_qs), path(u"e.txt"_qs)));
    ASSERT_TRUE(QFile::link(u"/dev/zero"_qs, path(u"f.txt"_qs)));
    ASSERT_TRUE(QFile::link(path(u"a.txt"_qs), path(u"g.txt"_qs)));
    folder(u"h.txt"_qs);
    search(findBelow(u"foo"_qs));
    EXPECT_EQ(files(), QStringList({file, link}));
    EXPECT_EQ(searched(), 2);
    EXPECT_TRUE(m_prompts.messages.isEmpty());
}

TEST_F(OddFiles, ItemsOfAProjectThatAreNoRegularFilesAreOnlyCounted) {
    start();
    ASSERT_EQ(::mkfifo(native(path(u"a.txt"_qs)).constData(), 0600), 0);
    m_frame->ProjectFilename = path(u"p.qmp"_qs);
    m_items.items = {{path(u"a.txt"_qs), u"FILE"_qs}, {u"/dev/zero"_qs, u"FILE"_qs}, {m_folder.path(), u"FILE"_qs}};
    search(in(SearchIn::ProjectFiles, find(u"foo"_qs)));
    EXPECT_EQ(searched(), 3);
    EXPECT_EQ(found(), 0);
    m_frame->ProjectFilename.clear();
}

TEST_F(OddFiles, AFileThatMayNotBeReadIsCountedAndNothingIsSaid) {
    letEverybodyIn();
    start();
    const QString closed = fileOf("foo", u"a.txt"_qs);
    const QString file = fileOf("foo", u"b.txt"_qs);
    ASSERT_EQ(::chmod(native(closed).constData(), 0000), 0);
    ASSERT_EQ(::chmod(native(file).constData(), 0644), 0);
    {
        const WithoutRights nobody;
        search(find(u"foo"_qs));
    }
    EXPECT_EQ(searched(), 2);
    EXPECT_EQ(files(), QStringList(file));
    EXPECT_TRUE(m_prompts.messages.isEmpty());
}

TEST_F(OddFiles, EachDirectoryThatMayNotBeReadIsReportedAndTheWalkGoesOn) {
    letEverybodyIn();
    start();
    for (const QString& name : {u"a"_qs, u"b"_qs, u"c"_qs})
        folder(name);
    const QString file = fileOf("foo", u"c/a.txt"_qs);
    for (const QString& name : {u"a"_qs, u"b"_qs}) {
        ASSERT_EQ(::chmod(native(path(name)).constData(), 0300), 0);
    }
    const auto sentence = [&](const QString& name) {
        return u"'%1/' can't be read: Permission denied"_qs.arg(path(name));
    };
    {
        const WithoutRights nobody;
        search(findBelow(u"foo"_qs));
        EXPECT_EQ(m_prompts.messages, QStringList({sentence(u"a"_qs), sentence(u"b"_qs)}));
        EXPECT_EQ(files(), QStringList(file));
        m_prompts.messages.clear();
        m_prompts.ticks = true;
        search(findBelow(u"foo"_qs));
        EXPECT_EQ(m_prompts.messages, QStringList(sentence(u"a"_qs)));
        EXPECT_EQ(files(), QStringList(file));
    }
}

TEST_F(OddFiles, AFileThatMayNotBeWrittenIsListedAsChangedAndIsNot) {
    letEverybodyIn();
    start();
    const QString file = fileOf("foo");
    ASSERT_EQ(::chmod(native(file).constData(), 0644), 0);
    if (::geteuid() != 0)
        GTEST_SKIP() << "the file would be this user's own";
    {
        const WithoutRights nobody;
        search(replace(u"foo"_qs, u"bar"_qs));
    }
    EXPECT_EQ(bytesOf(file), "foo");
    EXPECT_EQ(files(), QStringList(file));
    EXPECT_EQ(title(), u"Replace completed, changed files : 1"_qs);
    EXPECT_TRUE(m_prompts.messages.isEmpty());
}

/// Files of one folder vanish, grow, and become directories and FIFOs, while those of another stay.
TEST_F(OddFiles, FilesMayChangeWhileTheyAreSearched) {
    start();
    folder(u"moving"_qs);
    folder(u"steady"_qs);
    constexpr int Count = 100;
    for (int i = 0; i < Count; ++i) {
        fileOf("foo", u"moving/%1"_qs.arg(i));
        fileOf("foo", u"steady/%1"_qs.arg(i));
    }
    std::atomic<bool> ended = false;
    std::thread other([this, &ended] {
        for (unsigned n = 0; !ended; ++n) {
            const QByteArray name = native(m_folder.path() + u"/moving/%1"_qs.arg(n * 7 % Count));
            ::unlink(name.constData());
            ::rmdir(name.constData());
            if (n % 4 == 0) {
                ::mkfifo(name.constData(), 0600);
            } else if (n % 4 == 1) {
                ::mkdir(name.constData(), 0700);
            } else if (n % 4 == 2) {
                QFile file(QFile::decodeName(name));
                if (file.open(QIODevice::WriteOnly | QIODevice::Append))
                    file.write(QByteArray("foo\n").repeated(100));
            }
        }
    });
    for (int i = 0; i < 10; ++i) {
        SearchRequest request = i % 2 == 0 ? findBelow(u"foo"_qs) : replace(u"foo"_qs, u"foo"_qs);
        request.subDirectories = true;
        search(request);
        QStringList steady;
        for (const QString& file : files()) {
            if (file.startsWith(path(u"steady/"_qs)))
                steady << file;
        }
        EXPECT_EQ(steady.size(), Count);
        EXPECT_EQ(files().size(), found());
    }
    ended = true;
    other.join();
    EXPECT_TRUE(m_prompts.questions.isEmpty());
}
