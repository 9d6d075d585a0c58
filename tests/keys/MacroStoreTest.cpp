#include "keys/HotKeys.h"
#include "keys/MacroStore.h"
#include "settings/registry/MemoryRegistry.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <cerrno>

namespace {

const HotKey CtrlM = {{HotKeyStroke::Ctrl, u"M"_qs}, {}};

Macro sample() {
    Macro macro;
    macro.addCommand(179, u"größe"_qs);
    macro.addText(u"naïve 😀\n"_qs);
    macro.addCommand(160);
    return macro;
}

Macro longer() {
    Macro macro = sample();
    macro.addText(QString(500, u'x'));
    return macro;
}

class MacroStoring : public testing::Test {
 protected:
    QString file(const QString& name) const { return home.filePath(u"macros/"_qs + name); }
    static QByteArray bytesOf(const QString& path) {
        QFile file(path);
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }
    void put(const QString& name, const QByteArray& bytes) {
        QDir().mkpath(home.filePath(u"macros"_qs));
        QFile written(file(name));
        ASSERT_TRUE(written.open(QIODevice::WriteOnly));
        ASSERT_EQ(written.write(bytes), bytes.size());
    }
    MacroStore another() { return {registry, hotKeys, home.path()}; }

    QTemporaryDir home;
    MemoryRegistry registry;
    HotKeys hotKeys;
    Settings settings{registry};
    MacroStore store{registry, hotKeys, home.path()};
};

}  // namespace

TEST(Macro, ItsBytesGiveItBack) {
    EXPECT_EQ(Macro::fromBytes(sample().toBytes()), sample());
    EXPECT_EQ(Macro::fromBytes(longer().toBytes()), longer());
}

TEST(Macro, TypedTextThatFollowsGoesOn) {
    Macro macro;
    macro.addText(u"a"_qs);
    macro.addText({});
    macro.addText(u"b"_qs);
    macro.addCommand(100);
    macro.addText(u"c"_qs);
    ASSERT_EQ(macro.steps().size(), 3);
    EXPECT_EQ(macro.steps()[0].text, u"ab"_qs);
    EXPECT_EQ(macro.steps()[2].text, u"c"_qs);
}

TEST(Macro, AMarkAtTheStartOfATextStays) {
    Macro macro;
    macro.addText(QString(QChar(0xFEFF)) + u'x');
    EXPECT_EQ(Macro::fromBytes(macro.toBytes()), macro);
}

TEST(Macro, AnEmptyOneHasNoBytes) {
    EXPECT_TRUE(Macro().toBytes().isEmpty());
    EXPECT_FALSE(Macro::fromBytes({}).has_value());
}

TEST(Macro, WhatStandsBehindItIsLeftAlone) {
    EXPECT_EQ(Macro::fromBytes(sample().toBytes() + longer().toBytes()), sample());
}

TEST(Macro, CutAnywhereItIsNone) {
    const QByteArray bytes = sample().toBytes();
    for (qsizetype length = 0; length < bytes.size(); ++length) {
        EXPECT_FALSE(Macro::fromBytes(bytes.left(length)).has_value()) << length;
    }
}

TEST(Macro, WithAnyByteChangedItIsNone) {
    for (qsizetype at = 0; at < sample().toBytes().size(); ++at) {
        QByteArray bytes = sample().toBytes();
        bytes[at] = static_cast<char>(bytes[at] ^ 1);
        EXPECT_FALSE(Macro::fromBytes(bytes).has_value()) << at;
    }
}

TEST(Macro, StepsWithAnUnknownKindOrUnsoundTextAreNone) {
    EXPECT_FALSE(Macro::fromSteps(QByteArray("\3\0\0\0\0", 5)).has_value());
    EXPECT_FALSE(Macro::fromSteps(QByteArray("\2\1\0\0\0\xFF", 6)).has_value());
    EXPECT_FALSE(Macro::fromSteps(QByteArray("\2\xFF\xFF\xFF\xFFx", 6)).has_value());
    EXPECT_TRUE(Macro::fromSteps(QByteArray("\2\1\0\0\0x", 6)).has_value());
}

TEST(Macro, MoreThanSixteenMegabytesAreNone) {
    QByteArray bytes = sample().toBytes();
    bytes.resize(Macro::MostBytes);
    EXPECT_TRUE(Macro::fromBytes(bytes).has_value());
    bytes.resize(Macro::MostBytes + 1);
    EXPECT_FALSE(Macro::fromBytes(bytes).has_value());
}

TEST_F(MacroStoring, AnEmptyStoreMakesTheFolderAndNoFile) {
    store.SaveMacros();
    const QDir folder(home.filePath(u"macros"_qs));
    EXPECT_TRUE(folder.exists());
    EXPECT_TRUE(folder.isEmpty());
    EXPECT_FALSE(store.SaveMacroFile(file(u"0.dem"_qs), 0));
}

TEST_F(MacroStoring, AllTenComeBack) {
    for (int index = 0; index < 10; ++index) {
        Macro macro;
        macro.addCommand(100 + index);
        ASSERT_TRUE(store.setMacro(index, macro));
    }
    store.SaveMacros();
    MacroStore loaded = another();
    loaded.LoadMacros();
    for (int index = 0; index < 10; ++index) {
        ASSERT_TRUE(loaded.macro(index).has_value()) << index;
        EXPECT_EQ(loaded.macro(index)->steps()[0].command, 100 + index);
    }
}

TEST_F(MacroStoring, IndicesOutsideAreRefused) {
    for (const int index : {-1, 10}) {
        EXPECT_FALSE(store.setMacro(index, sample()));
        EXPECT_FALSE(store.macro(index).has_value());
        EXPECT_FALSE(store.SaveMacroFile(file(u"x.dem"_qs), index));
        EXPECT_FALSE(store.LoadMacroFile(file(u"x.dem"_qs), index));
    }
}

TEST_F(MacroStoring, AShorterOneKeepsTheTailOfTheLongerInItsFileAndInTheNextStart) {
    store.setMacro(3, longer());
    store.SaveMacros();
    const QByteArray before = bytesOf(file(u"3.dem"_qs));
    store.setMacro(3, sample());
    store.SaveMacros();
    const QByteArray after = bytesOf(file(u"3.dem"_qs));
    const QByteArray head = sample().toBytes();
    EXPECT_EQ(after, head + before.sliced(head.size()));

    MacroStore loaded = another();
    loaded.LoadMacros();
    EXPECT_EQ(loaded.macro(3), sample());
    QFile::remove(file(u"3.dem"_qs));
    EXPECT_TRUE(loaded.SaveMacroFile(file(u"3.dem"_qs), 3));
    EXPECT_EQ(bytesOf(file(u"3.dem"_qs)), after);
}

TEST_F(MacroStoring, AnEmptiedOneLeavesItsFile) {
    store.setMacro(0, sample());
    store.SaveMacros();
    store.setMacro(0, {});
    store.SaveMacros();
    EXPECT_EQ(bytesOf(file(u"0.dem"_qs)), sample().toBytes());
}

TEST_F(MacroStoring, ForeignBytesPlayNothingAndAreKept) {
    put(u"2.dem"_qs, "something else");
    store.LoadMacros();
    EXPECT_FALSE(store.macro(2).has_value());
    store.SaveMacros();
    EXPECT_EQ(bytesOf(file(u"2.dem"_qs)), "something else");
}

TEST_F(MacroStoring, AFileThatIsTooLongIsReadAtItsHead) {
    put(u"0.dem"_qs, sample().toBytes());
    put(u"1.dem"_qs, "something else");
    for (const QString& name : {u"0.dem"_qs, u"1.dem"_qs}) {
        ASSERT_TRUE(QFile::resize(file(name), Macro::MostBytes + 1));
    }
    put(u"2.dem"_qs, sample().toBytes());
    store.LoadMacros();
    EXPECT_EQ(store.macro(0), sample());
    EXPECT_FALSE(store.macro(1).has_value());
    EXPECT_EQ(store.macro(2), sample());
    store.SaveMacros();
    EXPECT_EQ(QFileInfo(file(u"0.dem"_qs)).size(), Macro::MostBytes + 1);
    EXPECT_TRUE(bytesOf(file(u"1.dem"_qs)).startsWith("something else"));
}

TEST_F(MacroStoring, AMacroThatIsSavedOverAFileThatIsTooLongIsThereAtTheNextStart) {
    put(u"0.dem"_qs, QByteArray(Macro::MostBytes + 1000, 'x'));
    store.LoadMacros();
    store.setMacro(0, sample());
    store.SaveMacros();
    MacroStore loaded = another();
    loaded.LoadMacros();
    EXPECT_EQ(loaded.macro(0), sample());
}

TEST_F(MacroStoring, ANameThatIsNoNumberStopsTheLoading) {
    put(u"1.dem"_qs, sample().toBytes());
    put(u"2a.dem"_qs, sample().toBytes());
    put(u"3.dem"_qs, sample().toBytes());
    store.LoadMacros();
    EXPECT_EQ(store.macro(1), sample());
    EXPECT_FALSE(store.macro(3).has_value());
}

TEST_F(MacroStoring, NumbersBeyondTheTenArePassedOver) {
    for (const char* name : {"-1", "0", "10", "11", "100", "2", "99999999999999999999", "1e3", "9"})
        put(QString::fromLatin1(name) + u".dem"_qs, sample().toBytes());
    store.LoadMacros();
    for (int index = 0; index < MacroStore::Slots; ++index) {
        EXPECT_EQ(store.macro(index).has_value(), index == 0 || index == 2 || index == 9) << index;
    }
}

TEST_F(MacroStoring, NamesAreTakenByTheirLastThreeCharactersAndWhatStandsBeforeTheFirstDot) {
    put(u"4.old.dem"_qs, sample().toBytes());
    put(u"5.xdem"_qs, sample().toBytes());
    put(u"6.txt"_qs, sample().toBytes());
    put(u"7.DEM"_qs, sample().toBytes());
    store.LoadMacros();
    EXPECT_EQ(store.macro(4), sample());
    EXPECT_EQ(store.macro(5), sample());
    EXPECT_FALSE(store.macro(6).has_value());
    EXPECT_FALSE(store.macro(7).has_value());
}

TEST_F(MacroStoring, FoldersAndPipesOfThatNameAreNotLookedAt) {
    QDir().mkpath(file(u"0.dem"_qs));
    ASSERT_EQ(::mkfifo(QFile::encodeName(file(u"1.dem"_qs)).constData(), 0600), 0);
    put(u"2.dem"_qs, sample().toBytes());
    store.LoadMacros();
    EXPECT_EQ(store.macro(2), sample());
    store.setMacro(0, sample());
    store.setMacro(1, sample());
    EXPECT_FALSE(store.SaveMacroFile(file(u"0.dem"_qs), 0));
    EXPECT_FALSE(store.SaveMacroFile(file(u"1.dem"_qs), 1));
}

TEST_F(MacroStoring, AFileThatIsGoneIsNotLoaded) {
    EXPECT_FALSE(store.LoadMacroFile(file(u"0.dem"_qs), 0));
}

TEST_F(MacroStoring, WithoutAFolderNothingIsLoadedOrMade) {
    store.LoadMacros();
    EXPECT_FALSE(QFileInfo::exists(home.filePath(u"macros"_qs)));
}

TEST_F(MacroStoring, ADeletedOneLosesItsHotKeyAndNameButNotItsFile) {
    store.setMacro(4, sample());
    hotKeys.bind(160, {{HotKeyStroke::Ctrl, u"D"_qs}, {}});
    hotKeys.bind(218, CtrlM);
    settings.write(u"5Display"_qs, u"1"_qs);
    settings.write(u"5Desc"_qs, u"Fifth"_qs);
    store.DeleteMacro(5);
    EXPECT_EQ(hotKeys.HotKeyText(u"5"_qs), QString());
    EXPECT_EQ(settings.PropertyValue(u"5Display"_qs, {}, false), u"0"_qs);
    EXPECT_EQ(settings.PropertyValue(u"5Desc"_qs, u"none"_qs, false), u"none"_qs);

    HotKeys savedKeys({{218, CtrlM}});
    savedKeys.load(registry);
    EXPECT_EQ(savedKeys.HotKeyText(u"5"_qs), QString());
    MacroStore loaded = another();
    loaded.LoadMacros();
    EXPECT_EQ(loaded.macro(4), sample());
}

TEST_F(MacroStoring, DeletingASlotThatIsNotThereDoesNothing) {
    hotKeys.bind(213, CtrlM);
    store.DeleteMacro(0);
    store.DeleteMacro(11);
    EXPECT_EQ(hotKeys.hotKeysOf(213).size(), 1);
    EXPECT_FALSE(QFileInfo::exists(home.filePath(u"macros"_qs)));
}

TEST_F(MacroStoring, AResetClearsAllHotKeysAndNames) {
    for (int n = 1; n <= 10; ++n) {
        hotKeys.bind(213 + n, {{HotKeyStroke::Ctrl, QString(QChar(111 + n))}, {}});
        settings.write(QString::number(n) + u"Display"_qs, u"1"_qs);
        settings.write(QString::number(n) + u"Desc"_qs, u"Name"_qs);
    }
    store.ResetHotKeys();
    for (int n = 1; n <= 10; ++n) {
        EXPECT_EQ(hotKeys.HotKeyText(QString::number(n)), QString());
        EXPECT_EQ(settings.PropertyValue(QString::number(n) + u"Display"_qs, {}, false), u"0"_qs);
        EXPECT_EQ(settings.PropertyValue(QString::number(n) + u"Desc"_qs, u"none"_qs, false), u"none"_qs);
    }
    EXPECT_TRUE(QFileInfo::exists(home.filePath(u"macros"_qs)));
}

TEST_F(MacroStoring, ASlotWithoutAMacroIsPreferred) {
    for (int n = 1; n <= 4; ++n)
        store.setMacro(n - 1, sample());
    EXPECT_EQ(store.freeSlot(), 5);
    put(u"2.dem"_qs, "something else");
    store.LoadMacroFile(file(u"2.dem"_qs), 2);
    EXPECT_EQ(store.freeSlot(), 5);
    for (int n = 5; n <= 10; ++n)
        hotKeys.bind(213 + n, {{HotKeyStroke::Ctrl, QString(QChar(111 + n))}, {}});
    EXPECT_EQ(store.freeSlot(), 3) << "the bytes there are no macro";
    hotKeys.bind(216, CtrlM);
    EXPECT_EQ(store.freeSlot(), 1) << "macros without a hot key are all that is left";
}

TEST_F(MacroStoring, ASlotIsSavedWithTheHotKeys) {
    store.setMacro(2, sample());
    store.setMacro(3, sample());
    hotKeys.bind(216, CtrlM);
    EXPECT_FALSE(store.saveSlot(3));
    EXPECT_EQ(bytesOf(file(u"2.dem"_qs)), sample().toBytes());
    EXPECT_FALSE(QFileInfo::exists(file(u"3.dem"_qs)));
    HotKeys saved;
    saved.load(registry);
    EXPECT_EQ(saved.HotKeyText(u"3"_qs), u"Ctrl + M"_qs);
}

TEST_F(MacroStoring, ASlotThatCannotBeSavedGivesTheReason) {
    store.setMacro(0, sample());
    store.setMacro(1, sample());
    QDir().mkpath(file(u"0.dem"_qs));
    EXPECT_EQ(store.saveSlot(1).description, u"'%1' can't be written: Is a directory"_qs.arg(file(u"0.dem"_qs)));
    ASSERT_EQ(::mkfifo(QFile::encodeName(file(u"1.dem"_qs)).constData(), 0600), 0);
    EXPECT_EQ(store.saveSlot(2).description,
              u"'%1' can't be written: It is not a regular file"_qs.arg(file(u"1.dem"_qs)));
    ASSERT_TRUE(QDir(home.filePath(u"macros"_qs)).removeRecursively());
    QFile inTheWay(home.filePath(u"macros"_qs));
    ASSERT_TRUE(inTheWay.open(QIODevice::WriteOnly));
    const SystemError error = store.saveSlot(1);
    EXPECT_EQ(error.number, EEXIST);
    EXPECT_TRUE(error.description.startsWith(u"'%1' can't be written: "_qs.arg(inTheWay.fileName())));
}

TEST_F(MacroStoring, AHotKeyThatCannotBeSavedIsAnError) {
    class FullRegistry : public MemoryRegistry {
     public:
        int writeValue(RegistryRoot, const QString&, const QString&, const RegistryValue&) override {
            return RegistryCode::DiskFull;
        }
    };
    FullRegistry full;
    MacroStore overFull(full, hotKeys, home.path());
    overFull.setMacro(0, sample());
    EXPECT_EQ(overFull.saveSlot(1).description, u"The hot key can't be stored."_qs);
}

TEST_F(MacroStoring, TheFirstSlotWithoutAHotKeyIsFree) {
    EXPECT_EQ(store.freeSlot(), 1);
    for (int n = 1; n <= 10; ++n) {
        EXPECT_EQ(store.freeSlot(), n);
        hotKeys.bind(213 + n, {{HotKeyStroke::Ctrl, QString(QChar(111 + n))}, {}});
    }
    EXPECT_FALSE(store.freeSlot().has_value());
    hotKeys.remove({{HotKeyStroke::Ctrl, QString(QChar(114))}, {}});
    EXPECT_EQ(store.freeSlot(), 3);
}
