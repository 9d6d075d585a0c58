#include "shell/start/CommandLine.h"

#include <gtest/gtest.h>

#include <vector>

using CommandLine::LoadOrder;
using CommandLine::MainOrder;
using Main = MainOrder::Kind;
using Load = LoadOrder::Kind;

namespace {

QString tailOf(std::vector<const char*> arguments) {
    arguments.insert(arguments.begin(), "quillmark");
    return CommandLine::tailOf(static_cast<int>(arguments.size()), arguments.data());
}

const CommandLine::Surroundings around{
    [](const QString& path) { return path == QLatin1String("/src") || path == QLatin1String("src"); }, u"/home/u"_qs};

MainOrder inMain(const char* tail) {
    return CommandLine::readForMain(QString::fromUtf8(tail), around);
}

LoadOrder inLoad(const char* tail) {
    return CommandLine::readForLoad(QString::fromUtf8(tail), around);
}

MainOrder document(const char* path) {
    return {Main::Document, {QString::fromUtf8(path)}};
}

LoadOrder opens(const char* path) {
    return {Load::Document, {QString::fromUtf8(path)}, true, false};
}

}  // namespace

TEST(CommandLineTail, JoinsTheArgumentsByOneBlankEach) {
    EXPECT_EQ(tailOf({"a", "b c", "", "d"}), u"a b c  d"_qs);
    EXPECT_EQ(tailOf({}), QString());
}

TEST(CommandLineTail, KeepsEveryCharacterOfUtf8) {
    EXPECT_EQ(tailOf({"gr\xC3\xBC\xC3\x9F", "\xE6\xBC\xA2\xF0\x9F\x98\x80"}), QString::fromUtf8("grüß 漢😀"));
    EXPECT_EQ(tailOf({"\xEF\xBB\xBFx"}), QString(QChar(0xFEFF)) + u'x');
}

TEST(CommandLineTail, ANameThatIsNotUtf8NamesNoFileAtAll) {
    for (const char* name : {"/a\xFFz", "/a\xC3", "/\xE4\xF6", "/a\xED\xA0\x80", "/\xF4\x90\x80\x80", "/\xC0\xAF"}) {
        const QString tail = tailOf({name});
        EXPECT_FALSE(tail.isValidUtf16()) << name;
        EXPECT_TRUE(tail.startsWith(u'/')) << name;
    }
    EXPECT_TRUE(tailOf({"/a\xFF"
                        "end"})
                    .endsWith(QLatin1String("end")));
}

TEST(CommandLineTail, TakesAHundredThousandCharacters) {
    const QByteArray good(100'000, 'x');
    EXPECT_EQ(tailOf({good.constData()}).size(), 100'000);
    const QByteArray bad(100'000, '\xFF');
    EXPECT_EQ(tailOf({bad.constData()}).size(), 100'000);
}

TEST(CommandLineInMain, TheTwoRegisteringSwitchesAreComparedBeforeAnyTrimming) {
    EXPECT_EQ(inMain("-r").kind, Main::Register);
    EXPECT_EQ(inMain("-u").kind, Main::Unregister);
    EXPECT_EQ(inMain("-r "), document("/home/u/-r"));
    EXPECT_EQ(inMain(" -u"), document("/home/u/-u"));
    EXPECT_EQ(inMain("-R"), document("/home/u/-R"));
    EXPECT_EQ(inMain("\"-r\""), document("/home/u/-r"));
}

TEST(CommandLineInMain, TheFurtherInstanceSwitchIsComparedAfterTrimming) {
    EXPECT_EQ(inMain("-d"), MainOrder{});
    EXPECT_EQ(inMain("-d "), MainOrder{});
    EXPECT_EQ(inMain("-D"), document("/home/u/-D"));
}

TEST(CommandLineInMain, NothingButBlanksAndQuotesRuns) {
    EXPECT_EQ(inMain(""), MainOrder{});
    EXPECT_EQ(inMain("   "), MainOrder{});
    EXPECT_EQ(inMain("\"\""), MainOrder{});
}

TEST(CommandLineInMain, OnlyAPlainDocumentLooksForARunningInstance) {
    EXPECT_EQ(inMain("/a/b.txt"), document("/a/b.txt"));
    EXPECT_EQ(inMain("/src"), MainOrder{});
    EXPECT_EQ(inMain("/a;/b"), MainOrder{});
    EXPECT_EQ(inMain("/a/work.QMP"), MainOrder{});
    EXPECT_EQ(inMain("/a/work.qmp"), MainOrder{});
    EXPECT_EQ(inMain("\"/a/work.qMp\""), MainOrder{});
    EXPECT_EQ(inMain(".qmp"), MainOrder{});
    EXPECT_EQ(inMain("/a/work.qmpx"), document("/a/work.qmpx"));
}

TEST(CommandLineInMain, APathWithBlanksIsTheSameWithAndWithoutQuotes) {
    EXPECT_EQ(inMain("/a b/c d.txt"), document("/a b/c d.txt"));
    EXPECT_EQ(inMain("\"/a b/c d.txt\""), document("/a b/c d.txt"));
    EXPECT_EQ(inMain("/a\" b/c\" d.txt"), document("/a b/c d.txt"));
}

TEST(CommandLineInMain, ARelativePathStartsAtTheWorkingFolder) {
    EXPECT_EQ(inMain("notes/./x.txt"), document("/home/u/notes/x.txt"));
    EXPECT_EQ(inMain("../x.txt"), document("/home/u/../x.txt"));
}

TEST(CommandLineInLoad, AnEmptyTailMayBringBackTheSession) {
    EXPECT_EQ(inLoad(""), (LoadOrder{Load::Nothing, {}, true, true}));
}

TEST(CommandLineInLoad, TheFurtherInstanceSwitchLeavesTheWindowUnhooked) {
    EXPECT_EQ(inLoad("-d"), (LoadOrder{Load::Nothing, {}, false, true}));
}

TEST(CommandLineInLoad, ABlankBehindTheSwitchMakesItADocument) {
    EXPECT_EQ(inLoad("-d "), opens("/home/u/-d "));
    EXPECT_EQ(inLoad("-r "), opens("/home/u/-r "));
    EXPECT_EQ(inLoad(" "), opens("/home/u/ "));
    EXPECT_EQ(inLoad("-D"), opens("/home/u/-D"));
}

TEST(CommandLineInLoad, QuotesAloneOpenNothingButKeepTheSessionAway) {
    EXPECT_EQ(inLoad("\"\""), (LoadOrder{Load::Document, {QString()}, true, false}));
}

TEST(CommandLineInLoad, FoldersAndListsGoToTheSearchAsTheyStand) {
    EXPECT_EQ(inLoad("src"), (LoadOrder{Load::SearchFolders, {u"src"_qs}, true, false}));
    EXPECT_EQ(inLoad("\"a b\";c"), (LoadOrder{Load::SearchFolders, {u"a b;c"_qs}, true, false}));
    EXPECT_EQ(inLoad("x;y.qmp"), (LoadOrder{Load::SearchFolders, {u"x;y.qmp"_qs}, true, false}));
}

TEST(CommandLineInLoad, AProjectIsKnownByItsEndInAnyCase) {
    EXPECT_EQ(inLoad("\"w.qmp\""), (LoadOrder{Load::Project, {u"/home/u/w.qmp"_qs}, true, false}));
    EXPECT_EQ(inLoad("w.qmp "), opens("/home/u/w.qmp "));
}

TEST(CommandLineInLoad, QuotesAreTakenOutWhereverTheyStand) {
    EXPECT_EQ(inLoad("\"/a b.txt\""), opens("/a b.txt"));
    EXPECT_EQ(inLoad("/a b.txt"), opens("/a b.txt"));
}

namespace {

/// Arguments, and the files that exist: "/src" and "src" are folders.
struct Several {
    QStringList arguments;
    QStringList files;

    CommandLine::Surroundings surroundings() const {
        const auto exists = [*this](const QString& path) { return files.contains(path) || around.isFolder(path); };
        return {around.isFolder, around.workingFolder, exists, arguments};
    }
    MainOrder inMain() const { return CommandLine::readForMain(arguments.join(u' '), surroundings()); }
    LoadOrder inLoad() const { return CommandLine::readForLoad(arguments.join(u' '), surroundings()); }
};

const QStringList someFiles = {u"/a"_qs, u"/b c"_qs, u"/home/u/d.txt"_qs, u"/w.qmp"_qs};

}  // namespace

TEST(CommandLineOfSeveral, EachArgumentThatNamesAFileIsADocumentInOrder) {
    const Several several{{u"/b c"_qs, u"./d.txt"_qs, u"\"/a\""_qs}, someFiles};
    const QStringList paths = {u"/b c"_qs, u"/home/u/d.txt"_qs, u"/a"_qs};
    EXPECT_EQ(several.inMain(), (MainOrder{Main::Document, paths}));
    EXPECT_EQ(several.inLoad(), (LoadOrder{Load::Document, paths, true, false}));
}

TEST(CommandLineOfSeveral, TheWholeTextComesFirst) {
    const Several several{{u"/b"_qs, u"c"_qs}, {u"/b c"_qs, u"/b"_qs, u"/home/u/c"_qs}};
    EXPECT_EQ(several.inMain(), document("/b c"));
    EXPECT_EQ(several.inLoad(), opens("/b c"));
}

TEST(CommandLineOfSeveral, OneThatNamesNoFileMakesItOneText) {
    for (const QString& other : {u"/none"_qs, u"/src"_qs, QString(), u"-d"_qs, u"\"\""_qs}) {
        const Several several{{u"/a"_qs, other, u"/a"_qs}, someFiles};
        QString text = several.arguments.join(u' ');
        text.remove(u'"');
        EXPECT_EQ(several.inMain(), (MainOrder{Main::Document, {text}})) << other.toStdString();
        EXPECT_EQ(several.inLoad(), (LoadOrder{Load::Document, {text}, true, false})) << other.toStdString();
    }
}

TEST(CommandLineOfSeveral, AProjectAmongThemIsADocument) {
    const Several several{{u"/a"_qs, u"/w.qmp"_qs}, someFiles};
    EXPECT_EQ(several.inMain(), (MainOrder{Main::Document, several.arguments}));
    EXPECT_EQ(several.inLoad(), (LoadOrder{Load::Document, several.arguments, true, false}));
}

TEST(CommandLineOfSeveral, ASemicolonMakesItAListOfFolders) {
    const Several several{{u"/a;1"_qs, u"/a"_qs}, {u"/a;1"_qs, u"/a"_qs}};
    EXPECT_EQ(several.inMain(), MainOrder{});
    EXPECT_EQ(several.inLoad(), (LoadOrder{Load::SearchFolders, {u"/a;1 /a"_qs}, true, false}));
}

TEST(CommandLineOfSeveral, OneArgumentIsNeverTakenApart) {
    const Several several{{u"/a /a"_qs}, someFiles};
    EXPECT_EQ(several.inMain(), document("/a /a"));
}

TEST(CommandLineTail, TheArgumentsAreDecodedOneByOne) {
    const char* arguments[] = {"quillmark", "a b", "", "gr\xC3\xBC\xC3\x9F"};
    EXPECT_EQ(CommandLine::argumentsOf(4, arguments), QStringList({u"a b"_qs, QString(), QString::fromUtf8("grüß")}));
    EXPECT_TRUE(CommandLine::argumentsOf(1, arguments).isEmpty());
}
