#include "lang/LanguageTable.h"

#include "lang/LanguageFile.h"
#include "platform/Paths.h"
#include "settings/files/OwnTextFile.h"

#include <algorithm>
#include <cerrno>

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

QString trimmedPatterns(const QString& line) {
    QStringList patterns = line.split(u',');
    for (QString& pattern : patterns)
        pattern = pattern.trimmed();
    return patterns.join(u',');
}

}  // namespace

LanguageTable::LanguageTable(const QString& programFolder, const QString& shareFolder)
    : m_programFolder(programFolder + QLatin1String("/languages/")),
      m_shareFolder(shareFolder + QLatin1String("/languages/")) {}

void LanguageTable::LoadLanguageIndex() {
    m_indexFault.clear();
    m_rows.clear();
    for (const LanguageRow& record : recordsOf(indexLines())) {
        addRow(record);
        if (m_entries.size() < MostLanguages)
            m_entries.append({record.name, u',' + record.patterns + u',', false});
    }
    for (Entry& entry : m_entries)
        RegisterLanguage(entry.LangName);
}

/// Of an index that is too long, the lines that are complete in its first part.
QStringList LanguageTable::indexLines() {
    const QString path = pathOf(IndexFile);
    OwnTextFile::Content index = OwnTextFile::read(path, MostIndexBytes);
    if (index.error && index.error.number != ENOENT)
        m_indexFault = index.error.description;
    if (index.isTooLong()) {
        index = OwnTextFile::readHead(path, MostIndexBytes);
        index.bytes.truncate(index.bytes.lastIndexOf('\n') + 1);
    }
    return OwnTextFile::linesOf(index.bytes);
}

/// Reading ends at the first record that is too many.
QList<LanguageRow> LanguageTable::recordsOf(const QStringList& lines) {
    QList<LanguageRow> records;
    for (qsizetype at = 0; at < lines.size(); ++at) {
        const QString line = lines[at].trimmed();
        if (!line.startsWith(QLatin1String("<<")))
            continue;
        const QString name = nameOf(line);
        // The line behind it is its patterns, whatever it looks like.
        if (++at == lines.size()) {
            noteFault(u"%1 has no patterns for \"%2\""_qs.arg(pathOf(IndexFile), name));
            break;
        }
        // Its files would lie elsewhere.
        if (name.contains(u'/')) {
            noteFault(u"%1 has a language \"%2\", whose name has a \"/\""_qs.arg(pathOf(IndexFile), name));
            continue;
        }
        if (records.size() == MostLanguages) {
            noteFault(u"%1 has more than %2 languages"_qs.arg(pathOf(IndexFile)).arg(MostLanguages));
            break;
        }
        records.append({name, trimmedPatterns(lines[at]).toUpper()});
    }
    return records;
}

/// The first fault is the one that is reported.
void LanguageTable::noteFault(const QString& fault) {
    if (m_indexFault.isEmpty())
        m_indexFault = fault;
}

void LanguageTable::addRow(const LanguageRow& record) {
    const bool isDouble = std::ranges::any_of(m_rows, [&](const LanguageRow& row) { return row.name == record.name; });
    if (!isDouble)
        m_rows.append(record);
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
    if (!m_indexFault.isEmpty() || rows.size() > MostLanguages)
        return false;
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
