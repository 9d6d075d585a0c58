#include "lang/LanguageTable.h"

#include "lang/LanguageFile.h"
#include "platform/Paths.h"
#include "settings/files/OwnTextFile.h"

#include <algorithm>

namespace {

const QString IndexFile = u"languages.idx"_qs;
constexpr int Mark = 2;  ///< characters before and after a name

/// The name between the marks of a line that opens a record.
QString nameOf(const QString& line) {
    return line.mid(Mark, std::max<qsizetype>(line.size() - 2 * Mark, 0)).toUpper();
}

bool isOneLine(const QString& text) {
    return !text.contains(u'\n') && !text.contains(u'\r');
}

}  // namespace

LanguageTable::LanguageTable(const QString& programFolder, const QString& shareFolder)
    : m_programFolder(programFolder + QLatin1String("/languages/")),
      m_shareFolder(shareFolder + QLatin1String("/languages/")) {}

void LanguageTable::LoadLanguageIndex() {
    const QStringList lines = OwnTextFile::readLines(pathOf(IndexFile), MostIndexBytes).value_or(QStringList());
    for (qsizetype at = 0; at < lines.size(); ++at) {
        const QString line = lines[at].trimmed();
        if (!line.startsWith(QLatin1String("<<")))
            continue;
        // The next line contains its patterns, whatever it looks like.
        if (++at == lines.size() || !append(nameOf(line), lines[at]))
            break;
    }
    for (Entry& entry : m_entries)
        RegisterLanguage(entry.LangName);
}

bool LanguageTable::append(const QString& name, const QString& patterns) {
    // Its files would lie elsewhere.
    if (name.contains(u'/'))
        return true;
    if (m_entries.size() == MostLanguages)
        return false;
    m_entries.append({name, u',' + patterns.toUpper() + u',', false});
    return true;
}

QList<LanguageRow> LanguageTable::rows() const {
    QList<LanguageRow> rows;
    for (const Entry& entry : m_entries) {
        const bool isDouble =
            std::any_of(rows.begin(), rows.end(), [&](const LanguageRow& row) { return row.name == entry.LangName; });
        if (!isDouble)
            rows.append({entry.LangName, entry.LangExt.sliced(1).chopped(1)});
    }
    return rows;
}

QStringList LanguageTable::loadedNames() const {
    QStringList names;
    for (const Entry& entry : m_entries) {
        if (entry.LangLoaded)
            names.append(entry.LangName);
    }
    return names;
}

bool LanguageTable::saveIndex(const QList<LanguageRow>& rows) const {
    QStringList lines;
    for (const LanguageRow& row : rows) {
        if (isOneLine(row.name) && isOneLine(row.patterns))
            lines << u"<<%1>>"_qs.arg(row.name) << row.patterns;
    }
    return OwnTextFile::writeLines(m_programFolder + IndexFile, lines);
}

QString LanguageTable::pathOf(const QString& file) const {
    const QString own = m_programFolder + file;
    return fileExists(own) ? own : m_shareFolder + file;
}

void LanguageTable::RegisterLanguage(const QString& pName) {
    const QString name = pName.toUpper();
    const auto entry =
        std::find_if(m_entries.begin(), m_entries.end(), [&](const Entry& one) { return one.LangName == name; });
    if (entry != m_entries.end() && !entry->LangLoaded)
        registerEntry(*entry);
}

void LanguageTable::registerEntry(Entry& entry) {
    LanguageFile::Result read = LanguageFile::read(pathOf(entry.LangName + QLatin1String(".lng")));
    m_lastError = read.error;
    if (!read.definition)
        return;
    m_definitions.insert(entry.LangName, std::make_shared<const LanguageDefinition>(std::move(*read.definition)));
    entry.LangLoaded = true;
}

QString LanguageTable::LanguageOfFile(const QString& pFilename) {
    const qsizetype dot = pFilename.lastIndexOf(u'.');
    if (dot < 0)
        return {};
    const QString key = (QLatin1String(",*") + pFilename.sliced(dot) + u',').toUpper();
    for (const Entry& entry : m_entries) {
        if (!entry.LangExt.contains(key))
            continue;
        QString name = entry.LangName;
        RegisterLanguage(name);
        return name;
    }
    return {};
}

const LanguageDefinition* LanguageTable::definition(const QString& name) const {
    return m_definitions.value(name.toUpper()).get();
}

QString LanguageTable::samplePath(const QString& name) const {
    return pathOf(name.toUpper() + QLatin1String(".TXT"));
}
