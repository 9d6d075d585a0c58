#include "settings/FileFilters.h"
#include "settings/registry/MemoryRegistry.h"
#include "settings/registry/modRegistry.h"

#include <gtest/gtest.h>

namespace {

class StoredFilters : public testing::Test {
 protected:
    void put(const char* name, const char* description, const char* patterns) {
        const QString key = u"Software/Quillmark/FilenameFilters/"_qs + QLatin1String(name);
        SetRegString(store, HKEY_CURRENT_USER, key, u"desc"_qs, QLatin1String(description));
        SetRegString(store, HKEY_CURRENT_USER, key, u"filter"_qs, QLatin1String(patterns));
    }

    MemoryRegistry store;
};

}  // namespace

TEST_F(StoredFilters, AFirstStartHasTheBuiltinListAndWritesNothing) {
    EXPECT_EQ(GetFilterString(store),
              u"All Files (*.*)|*.*|Text Files (*.txt)|*.txt|Java Files (*.java;*.jav)|*.java;*.jav|"
              "HTML Files (*.html;*.htm)|*.html;*.htm|JSP Files (*.jsp)|*.jsp|ASP Files (*.asp)|*.asp|"
              "PHP Files (*.php)|*.php|C Files (*.c;*.cpp)|*.c;*.cpp|Header Files (*.h;*.hpp)|*.h;*.hpp|"
              "Batch Files (*.bat)|*.bat|INI Files (*.ini)|*.ini|CSV Files (*.csv)|*.csv"_qs);
    EXPECT_EQ(builtinFilterString(), GetFilterString(store));
    EXPECT_EQ(store.openKey(HKEY_CURRENT_USER, u"Software"_qs), RegistryCode::NotFound);
}

TEST_F(StoredFilters, AnEmptyKeyFallsBackToTheBuiltinList) {
    store.createKey(HKEY_CURRENT_USER, u"Software/Quillmark/FilenameFilters"_qs);
    EXPECT_EQ(GetFilterString(store), builtinFilterString());
}

TEST_F(StoredFilters, TheUsersListComesInTheOrderOfItsKeys) {
    put("010", "Ten", "*.10");
    put("002", "Two", "*.2;*.ii");
    EXPECT_EQ(GetFilterString(store), u"Two|*.2;*.ii|Ten|*.10"_qs);
}

TEST_F(StoredFilters, RowsGoToTheDialogAsTheyAre) {
    put("001", "New", "");
    put("002", "", "*.x");
    store.createKey(HKEY_CURRENT_USER, u"Software/Quillmark/FilenameFilters/003"_qs);
    EXPECT_EQ(GetFilterString(store), u"New|||*.x||"_qs);
}
