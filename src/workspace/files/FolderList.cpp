#include "workspace/files/FolderList.h"

#include "settings/files/OwnTextFile.h"

#include <utility>

FolderList::FolderList(QString fileName) : m_fileName(std::move(fileName)) {}

void FolderList::load() {
    m_keys.clear();
    const QStringList lines =
        OwnTextFile::readLines(OwnTextFile::path(m_fileName), OwnTextFile::MostListBytes).value_or(QStringList());
    for (const QString& line : lines) {
        if (!line.isEmpty() && !m_keys.contains(line) && m_keys.size() < MostKept)
            m_keys.append(line);
    }
}

void FolderList::add(const QString& key) {
    if (key.isEmpty())
        return;
    if (!m_keys.contains(key))
        m_keys.append(key);
    save();
}

void FolderList::remove(const QString& key) {
    m_keys.removeAll(key);
    save();
}

void FolderList::save() const {
    QStringList lines;
    for (const QString& key : m_keys.mid(0, MostKept)) {
        if (OwnTextFile::isOneField(key))
            lines.append(key);
    }
    OwnTextFile::writeLines(OwnTextFile::path(m_fileName), lines);
}
