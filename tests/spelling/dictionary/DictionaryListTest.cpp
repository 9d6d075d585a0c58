#include "spelling/dictionary/DictionaryList.h"
#include "support/DictionaryFolder.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

namespace {

QStringList namesOf(const std::vector<Dictionary>& list) {
    QStringList names;
    for (const Dictionary& each : list)
        names << each.name;
    return names;
}

QStringList titlesOf(const std::vector<Dictionary>& list) {
    QStringList titles;
    for (const Dictionary& each : list)
        titles << each.title;
    return titles;
}

/// Sets a variable of the environment as long as it exists.
class Variable {
 public:
    Variable(const char* name, const QByteArray& value) : m_name(name), m_before(qgetenv(name)) {
        value.isNull() ? qunsetenv(name) : qputenv(name, value);
    }
    ~Variable() { m_before.isNull() ? qunsetenv(m_name) : qputenv(m_name, m_before); }
    Q_DISABLE_COPY_MOVE(Variable)

 private:
    const char* m_name;
    QByteArray m_before;
};

class Dictionaries : public testing::Test {
 protected:
    std::vector<Dictionary> installed() const { return DictionaryList::installed({m_folder.folder()}); }
    void link(const QString& target, const QString& name) const {
        for (const QString& ending : {u".aff"_qs, u".dic"_qs}) {
            ASSERT_TRUE(QFile::link(target + ending, m_folder.path(name + ending)));
        }
    }

    DictionaryFolder m_folder;
};

}  // namespace

TEST_F(Dictionaries, AreSortedByTheTitlesThatPeopleRead) {
    m_folder.make(u"en_US"_qs, "one");
    m_folder.make(u"de_AT"_qs, "eins");
    m_folder.make(u"de-DE"_qs, "eins");
    m_folder.make(u"eo"_qs, "unu");
    m_folder.make(u"de_DE_frami"_qs, "eins");
    m_folder.make(u"klingon"_qs, "wa");
    EXPECT_EQ(titlesOf(installed()),
              QStringList({u"English (United States)"_qs, u"Esperanto"_qs, u"German (Austria)"_qs,
                           u"German (Germany)"_qs, u"German (Germany), frami"_qs, u"klingon"_qs}));
}

TEST_F(Dictionaries, BothFilesMustBeThereAndBeFiles) {
    m_folder.write(u"lonely.aff"_qs, "");
    m_folder.write(u"other.dic"_qs, "1\none\n");
    m_folder.write(u"folder.aff"_qs, "");
    ASSERT_TRUE(QDir().mkpath(m_folder.path(u"folder.dic"_qs)));
    m_folder.write(u"pipe.aff"_qs, "");
    ASSERT_EQ(mkfifo(QFile::encodeName(m_folder.path(u"pipe.dic"_qs)).constData(), 0600), 0);
    link(m_folder.path(u"gone"_qs), u"dangling"_qs);
    EXPECT_TRUE(installed().empty());
    EXPECT_TRUE(DictionaryList::installed({m_folder.path(u"nowhere"_qs)}).empty());
}

TEST_F(Dictionaries, NamesOfTheSameFilesAreOneDictionary) {
    m_folder.make(u"es_ES"_qs, "uno");
    link(m_folder.path(u"es_ES"_qs), u"es_AR"_qs);
    link(u"es_ES"_qs, u"es_MX"_qs);
    const auto list = installed();
    ASSERT_EQ(namesOf(list), QStringList(u"es_ES"_qs));
    EXPECT_TRUE(list[0].isNamed(u"es_AR"_qs));
    EXPECT_TRUE(list[0].isNamed(u"es_MX"_qs));
    EXPECT_EQ(DictionaryList::preferred(list, {}, u"es_MX"_qs), 0U);
}

TEST_F(Dictionaries, TheFolderFoundFirstCounts) {
    const DictionaryFolder other;
    m_folder.make(u"en_US"_qs, "one");
    other.make(u"en_US"_qs, "two");
    other.make(u"fr_FR"_qs, "un");
    const auto list = DictionaryList::installed({m_folder.folder(), other.folder()});
    ASSERT_EQ(namesOf(list), QStringList({u"en_US"_qs, u"fr_FR"_qs}));
    EXPECT_EQ(list[0].wordsPath, m_folder.path(u"en_US.dic"_qs));
}

TEST_F(Dictionaries, EqualTitlesAreToldApart) {
    m_folder.make(u"de_DE"_qs, "eins");
    m_folder.make(u"de-DE"_qs, "zwei");
    EXPECT_EQ(titlesOf(installed()), QStringList({u"German (Germany) - de-DE"_qs, u"German (Germany) - de_DE"_qs}));
}

TEST_F(Dictionaries, TheFirstToTryIsTheOneOfTheUserThenOfTheLocale) {
    for (const char* name : {"de_AT", "de_DE", "en_GB", "en_US", "fr_CA"})
        m_folder.make(QString::fromLatin1(name), "a");
    const auto list = installed();
    const auto preferred = [&list](const QString& name, const QString& locale) {
        return list[DictionaryList::preferred(list, name, locale)].name;
    };
    EXPECT_EQ(preferred(u"en_GB"_qs, u"de_AT"_qs), u"en_GB"_qs);
    EXPECT_EQ(preferred(u"gone"_qs, u"de_AT"_qs), u"de_AT"_qs);
    EXPECT_EQ(preferred({}, u"de_CH"_qs), u"de_DE"_qs);
    EXPECT_EQ(preferred({}, u"fr_FR"_qs), u"fr_CA"_qs);
    EXPECT_EQ(preferred({}, u"sv_SE"_qs), u"en_US"_qs);
    EXPECT_EQ(preferred({}, {}), u"en_US"_qs);
    EXPECT_EQ(DictionaryList::preferred({list[2]}, {}, {}), 0U);
}

TEST(DictionaryLocale, IsReadFromTheEnvironment) {
    const Variable all("LC_ALL", {});
    const Variable type("LC_CTYPE", {});
    const Variable lang("LANG", "de_AT.UTF-8");
    EXPECT_EQ(DictionaryList::localeName(), u"de_AT"_qs);
    const Variable typeSet("LC_CTYPE", "ca_ES@valencia");
    EXPECT_EQ(DictionaryList::localeName(), u"ca_ES"_qs);
    const Variable allSet("LC_ALL", "C");
    EXPECT_EQ(DictionaryList::localeName(), QString());
    const Variable allUtf8("LC_ALL", "C.UTF-8");
    EXPECT_EQ(DictionaryList::localeName(), QString());
}

TEST(DictionaryFolders, AreThoseOfTheUserAndTheSystemInOrder) {
    const Variable own("DICPATH", "/my/dicts:relative:");
    const Variable home("XDG_DATA_HOME", "/home/u/data");
    const Variable shared("XDG_DATA_DIRS", "/opt/share/:/usr/share");
    EXPECT_EQ(DictionaryList::searchFolders(),
              QStringList({u"/my/dicts"_qs, u"/home/u/data/hunspell"_qs, u"/home/u/data/myspell/dicts"_qs,
                           u"/home/u/data/myspell"_qs, u"/opt/share/hunspell"_qs, u"/opt/share/myspell/dicts"_qs,
                           u"/opt/share/myspell"_qs, u"/usr/share/hunspell"_qs, u"/usr/share/myspell/dicts"_qs,
                           u"/usr/share/myspell"_qs}));
}

TEST(DictionaryFolders, WithoutVariablesTheUsualOnesStand) {
    const Variable own("DICPATH", {});
    const Variable home("XDG_DATA_HOME", "relative");
    const Variable shared("XDG_DATA_DIRS", {});
    const QStringList folders = DictionaryList::searchFolders();
    EXPECT_EQ(folders.front(), QDir::homePath() + u"/.local/share/hunspell"_qs);
    EXPECT_TRUE(folders.contains(u"/usr/local/share/hunspell"_qs));
    EXPECT_TRUE(folders.contains(u"/usr/share/hunspell"_qs));
}
