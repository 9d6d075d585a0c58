#include "settings/FileFilters.h"

#include "settings/registry/modRegistry.h"

namespace {

constexpr FileFilter BuiltinFilters[] = {
    {"All Files (*.*)", "*.*"},
    {"Text Files (*.txt)", "*.txt"},
    {"Java Files (*.java;*.jav)", "*.java;*.jav"},
    {"HTML Files (*.html;*.htm)", "*.html;*.htm"},
    {"JSP Files (*.jsp)", "*.jsp"},
    {"ASP Files (*.asp)", "*.asp"},
    {"PHP Files (*.php)", "*.php"},
    {"C Files (*.c;*.cpp)", "*.c;*.cpp"},
    {"Header Files (*.h;*.hpp)", "*.h;*.hpp"},
    {"Batch Files (*.bat)", "*.bat"},
    {"INI Files (*.ini)", "*.ini"},
    {"CSV Files (*.csv)", "*.csv"},
};

}  // namespace

std::span<const FileFilter> builtinFilters() {
    return BuiltinFilters;
}

QString builtinFilterString() {
    QStringList parts;
    for (const FileFilter& filter : BuiltinFilters)
        parts << QString::fromLatin1(filter.description) << QString::fromLatin1(filter.patterns);
    return parts.join(u'|');
}

QString GetFilterString(RegistryStore& store) {
    const QString section = u"FilenameFilters"_qs;
    QStringList names;
    EnumRegSections(store, section, names);
    if (names.isEmpty())
        return builtinFilterString();
    QStringList parts;
    for (const QString& name : names) {
        const QString key = programKey() + u'/' + section + u'/' + name;
        parts << GetRegString(store, HKEY_CURRENT_USER, key, u"desc"_qs)
              << GetRegString(store, HKEY_CURRENT_USER, key, u"filter"_qs);
    }
    return parts.join(u'|');
}
