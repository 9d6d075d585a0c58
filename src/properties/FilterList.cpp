#include "properties/FilterList.h"

#include "settings/FileFilters.h"
#include "settings/registry/modRegistry.h"

#include <algorithm>

namespace {

/// What the default list of the page has instead of the built-in patterns.
constexpr FileFilter Differing[] = {
    {"JSP Files (*.jsp)", "*.asp"},
    {"ASP Files (*.asp)", "*.*"},
};

const QString Section = u"FilenameFilters"_qs;
const QString DescriptionName = u"desc"_qs;
const QString PatternsName = u"filter"_qs;
constexpr int NameLength = 3;

QString sectionKey() {
    return programKey() + u'/' + Section;
}

QString keyOf(qsizetype row) {
    return sectionKey() + u'/' + (u"000"_qs + QString::number(row + 1)).right(NameLength);
}

const char* patternsFor(const FileFilter& filter) {
    const auto* found = std::ranges::find_if(
        Differing, [&](const FileFilter& each) { return QLatin1String(each.description) == filter.description; });
    return found == std::end(Differing) ? filter.patterns : found->patterns;
}

}  // namespace

void FilterList::load(RegistryStore& store) {
    QStringList names;
    EnumRegSections(store, Section, names);
    if (names.isEmpty())
        return reset();
    m_rows.clear();
    for (const QString& name : names) {
        const QString key = sectionKey() + u'/' + name;
        m_rows.append({GetRegString(store, HKEY_CURRENT_USER, key, DescriptionName),
                       GetRegString(store, HKEY_CURRENT_USER, key, PatternsName)});
    }
}

void FilterList::reset() {
    m_rows.clear();
    for (const FileFilter& filter : builtinFilters())
        m_rows.append({QString::fromLatin1(filter.description), QString::fromLatin1(patternsFor(filter))});
}

bool FilterList::save(RegistryStore& store) const {
    const int code = store.runBatch([&] {
        DeleteRegTree(store, HKEY_CURRENT_USER, sectionKey());
        // Without rows an empty key is left.
        bool written = store.createKey(HKEY_CURRENT_USER, sectionKey()) == RegistryCode::Ok;
        for (qsizetype row = 0; row < m_rows.size() && written; ++row) {
            written = SetRegString(store, HKEY_CURRENT_USER, keyOf(row), DescriptionName, m_rows.at(row).description) &&
                      SetRegString(store, HKEY_CURRENT_USER, keyOf(row), PatternsName, m_rows.at(row).patterns);
        }
        return written ? RegistryCode::Ok : RegistryCode::IoError;
    });
    return code == RegistryCode::Ok;
}

void FilterList::append() {
    m_rows.append({u"New"_qs, {}});
}

void FilterList::remove(int row) {
    m_rows.removeAt(row);
}

void FilterList::swap(int row, int other) {
    m_rows.swapItemsAt(row, other);
}

void FilterList::setDescription(int row, const QString& text) {
    m_rows[row].description = text;
}

void FilterList::setPatterns(int row, const QString& text) {
    m_rows[row].patterns = text;
}
