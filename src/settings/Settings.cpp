#include "settings/Settings.h"

#include "settings/registry/modRegistry.h"

#include <algorithm>
#include <array>
#include <utility>

namespace {

constexpr const char* General = "general";
constexpr const char* Editor = "editor";
constexpr const char* Search = "search";
constexpr const char* Macro = "macro";
constexpr const char* NoDefault = nullptr;

constexpr SettingRow Table[] = {
    {"LoadLastFiles", General, "0", "1"},
    {"DocumentWorkingFolder", General, "1", "1"},
    {"StartNewDocument", General, "1", "1"},
    {"ShowFullPath", General, "1", "1"},
    {"UseFileIcon", General, "0", "0"},
    {"LoadLastFolder", General, "0", "0"},
    {"LastFolderName", General, "", ""},
    {"ContextMenu", General, "1", "1"},
    {"RowHighlight", General, "1", "1"},
    {"RowHighlightColor", General, "15194061", "15194061"},
    {"FileModifyNotice", General, "True", "True"},
    {"CheckHexModeWhenOpen", General, "1", "1"},
    {"ClearRedoAfterSave", General, "0", "0"},
    {"XPSkin", General, "1", "1"},
    {"1Display", Macro, "0", "0"},
    {"2Display", Macro, "0", "0"},
    {"3Display", Macro, "0", "0"},
    {"4Display", Macro, "0", "0"},
    {"5Display", Macro, "0", "0"},
    {"6Display", Macro, "0", "0"},
    {"7Display", Macro, "0", "0"},
    {"8Display", Macro, "0", "0"},
    {"9Display", Macro, "0", "0"},
    {"10Display", Macro, "0", "0"},
    {"1Desc", Macro, "", ""},
    {"2Desc", Macro, "", ""},
    {"3Desc", Macro, "", ""},
    {"4Desc", Macro, "", ""},
    {"5Desc", Macro, "", ""},
    {"6Desc", Macro, "", ""},
    {"7Desc", Macro, "", ""},
    {"8Desc", Macro, "", ""},
    {"9Desc", Macro, "", ""},
    {"10Desc", Macro, "", ""},
    {"FontName", Editor, NoDefault, NoDefault},
    {"FontSize", Editor, NoDefault, NoDefault},
    {"BackColor", Editor, NoDefault, NoDefault},
    {"ToolbarCase", Search, "0", "0"},
    {"ToolbarRegExp", Search, "0", "0"},
    {"ContinueSearch", Search, "1", "1"},
    {"ToolbarWholeWord", Search, "0", "1"},
};

const SettingRow* rowOf(const QString& key) {
    const auto* row =
        std::ranges::find_if(Table, [&](const SettingRow& each) { return key == QLatin1String(each.key); });
    return row == std::end(Table) ? nullptr : row;
}

QString pathOf(const QString& key) {
    const SettingRow* row = rowOf(key);
    return row == nullptr ? programKey() : programKey() + u'/' + QLatin1String(row->section);
}

}  // namespace

Settings::Settings(RegistryStore& store) : m_store(store) {}

QString Settings::PropertyValue(const QString& pKey, const QString& pValue, bool pWrite) {
    if (pWrite) {
        SetRegString(m_store, HKEY_CURRENT_USER, pathOf(pKey), pKey, pValue);
        return {};
    }
    const QString stored = GetRegString(m_store, HKEY_CURRENT_USER, pathOf(pKey), pKey);
    return stored.isEmpty() ? pValue : stored;
}

QString Settings::forFrame(const QString& key) {
    const SettingRow* row = rowOf(key);
    return PropertyValue(key, row == nullptr ? QString() : QString::fromLatin1(row->frameDefault), false);
}

QString Settings::forDialog(const QString& key) {
    const SettingRow* row = rowOf(key);
    return PropertyValue(key, row == nullptr ? QString() : QString::fromLatin1(row->dialogDefault), false);
}

void Settings::write(const QString& key, const QString& value) {
    PropertyValue(key, value, true);
}

bool Settings::StartNewDocument() {
    return forFrame(u"StartNewDocument"_qs) == QLatin1String("1");
}

bool Settings::LoadLastFiles() {
    return forFrame(u"LoadLastFiles"_qs) == QLatin1String("1");
}

std::span<const SettingRow> Settings::table() {
    return Table;
}
