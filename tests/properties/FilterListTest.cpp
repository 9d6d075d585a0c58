#include "RecordedServices.h"
#include "properties/FilterList.h"
#include "settings/FileFilters.h"
#include "settings/registry/modRegistry.h"

#include <gtest/gtest.h>

namespace {

class Filters : public testing::Test {
 protected:
    void put(const char* name, const char* description, const char* patterns) {
        const QString key = Key + u'/' + QLatin1String(name);
        SetRegString(store, HKEY_CURRENT_USER, key, u"desc"_qs, QLatin1String(description));
        SetRegString(store, HKEY_CURRENT_USER, key, u"filter"_qs, QLatin1String(patterns));
    }
    QStringList storedNames() {
        QStringList names;
        EnumRegSections(store, u"FilenameFilters"_qs, names);
        return names;
    }
    QString stored(const char* name) {
        const QString key = Key + u'/' + QLatin1String(name);
        return GetRegString(store, HKEY_CURRENT_USER, key, u"desc"_qs) + u'|' +
               GetRegString(store, HKEY_CURRENT_USER, key, u"filter"_qs);
    }
    void append(const char* description, const char* patterns) {
        list.append();
        const int last = static_cast<int>(list.rows().size()) - 1;
        list.setDescription(last, QLatin1String(description));
        list.setPatterns(last, QLatin1String(patterns));
    }
    QString texts() const {
        QStringList texts;
        for (const FilterList::Row& row : list.rows())
            texts << row.description + u'|' + row.patterns;
        return texts.join(u' ');
    }

    const QString Key = u"Software/Quillmark/FilenameFilters"_qs;
    QStringList calls;
    RecordedRegistry store{calls};
    FilterList list;
};

}  // namespace

TEST_F(Filters, TheDefaultListHasTheRowsOfTheBuiltinOneButForTwo) {
    list.reset();
    ASSERT_EQ(list.rows().size(), 12);
    ASSERT_EQ(std::ssize(builtinFilters()), 12);
    for (int i = 0; i < 12; ++i) {
        const FileFilter& builtin = builtinFilters()[static_cast<size_t>(i)];
        EXPECT_EQ(list.rows().at(i).description, QLatin1String(builtin.description));
        if (i == 4) {
            EXPECT_EQ(list.rows().at(i), FilterList::Row({u"JSP Files (*.jsp)"_qs, u"*.asp"_qs}));
        } else if (i == 5) {
            EXPECT_EQ(list.rows().at(i), FilterList::Row({u"ASP Files (*.asp)"_qs, u"*.*"_qs}));
        } else {
            EXPECT_EQ(list.rows().at(i).patterns, QLatin1String(builtin.patterns));
        }
    }
}

TEST_F(Filters, WithNothingStoredTheDefaultListIsLoadedAndNothingWritten) {
    list.load(store);
    const FilterList loaded = list;
    list.reset();
    EXPECT_EQ(loaded.rows(), list.rows());
    EXPECT_EQ(calls, QStringList());
    store.createKey(HKEY_CURRENT_USER, Key);
    append("x", "y");
    list.load(store);
    EXPECT_EQ(loaded.rows(), list.rows()) << "an empty key";
}

TEST_F(Filters, StoredOnesAreLoadedInTheOrderOfTheirKeys) {
    put("010", "Ten", "*.10");
    put("002", "Two", "*.2;*.ii");
    put("003", "", "");
    list.load(store);
    EXPECT_EQ(texts(), u"Two|*.2;*.ii | Ten|*.10"_qs);
}

TEST_F(Filters, AreSavedUnderThreeDigitsInTheirOrderInPlaceOfTheOldOnes) {
    put("001", "Old", "*.o");
    put("777", "Older", "*.oo");
    append("A", "*.a");
    append("B", "");
    calls.clear();
    EXPECT_TRUE(list.save(store));
    EXPECT_EQ(calls, QStringList({u"delete FilenameFilters/001"_qs, u"delete FilenameFilters/777"_qs,
                                  u"delete FilenameFilters"_qs, u"FilenameFilters/001/desc=A"_qs,
                                  u"FilenameFilters/001/filter=*.a"_qs, u"FilenameFilters/002/desc=B"_qs,
                                  u"FilenameFilters/002/filter="_qs}));
    EXPECT_EQ(storedNames(), QStringList({u"001"_qs, u"002"_qs}));
    EXPECT_EQ(GetFilterString(store), u"A|*.a|B|"_qs);
}

TEST_F(Filters, WithoutARowAnEmptyKeyIsSavedAndTheDialogsHaveTheBuiltinList) {
    put("001", "Old", "*.o");
    EXPECT_TRUE(list.save(store));
    EXPECT_EQ(store.openKey(HKEY_CURRENT_USER, Key), RegistryCode::Ok);
    EXPECT_EQ(storedNames(), QStringList());
    EXPECT_EQ(GetFilterString(store), builtinFilterString());
}

TEST_F(Filters, TheDefaultListOnceSavedIsWhatTheDialogsHave) {
    list.reset();
    EXPECT_TRUE(list.save(store));
    EXPECT_EQ(GetFilterString(store), builtinFilterString()
                                          .replace(u"(*.asp)|*.asp"_qs, u"(*.asp)|*.*"_qs)
                                          .replace(u"(*.jsp)|*.jsp"_qs, u"(*.jsp)|*.asp"_qs));
}

TEST_F(Filters, FromAThousandOnRowsOverwriteEachOther) {
    for (int n = 1; n <= 1003; ++n)
        append(QByteArray::number(n).constData(), "*.x");
    EXPECT_TRUE(list.save(store));
    EXPECT_EQ(storedNames().size(), 1000);
    EXPECT_EQ(storedNames().constFirst(), u"000"_qs);
    EXPECT_EQ(stored("000"), u"1000|*.x"_qs);
    EXPECT_EQ(stored("001"), u"1001|*.x"_qs);
    EXPECT_EQ(stored("003"), u"1003|*.x"_qs);
    EXPECT_EQ(stored("004"), u"4|*.x"_qs);
    EXPECT_EQ(stored("999"), u"999|*.x"_qs);
}

TEST_F(Filters, AreSavedAsTheyAreTyped) {
    append("a|b", "|;;");
    append("", "");
    append(" x ", "\xE9*");
    EXPECT_TRUE(list.save(store));
    FilterList again;
    again.load(store);
    EXPECT_EQ(again.rows(), list.rows());
}

TEST_F(Filters, SayWhenTheyCouldNotBeSaved) {
    append("A", "*.a");
    store.writeResult = RegistryCode::DiskFull;
    EXPECT_FALSE(list.save(store));
}

TEST_F(Filters, ANewOneStandsAtTheEnd) {
    append("A", "*.a");
    list.append();
    EXPECT_EQ(texts(), u"A|*.a New|"_qs);
}

TEST_F(Filters, AreRemovedAndExchanged) {
    append("A", "*.a");
    append("B", "*.b");
    append("C", "*.c");
    list.swap(0, 1);
    EXPECT_EQ(texts(), u"B|*.b A|*.a C|*.c"_qs);
    list.remove(1);
    EXPECT_EQ(texts(), u"B|*.b C|*.c"_qs);
}
