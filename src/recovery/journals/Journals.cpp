#include "recovery/journals/Journals.h"

#include "platform/Folders.h"
#include "platform/OwnFile.h"
#include "recovery/journals/FoundJournal.h"
#include "recovery/journals/Journal.h"
#include "recovery/journals/JournalFile.h"
#include "recovery/journals/JournalThread.h"
#include "recovery/journals/PassedJournals.h"
#include "recovery/saves/OldAsides.h"

#include <QDir>

#include <utility>

Journals::Journals(QString folder, FileSystemCalls& calls) : Journals(std::move(folder), calls, Limits()) {}

Journals::Journals(QString folder, FileSystemCalls& calls, Limits limits)
    : m_folder(std::move(folder)), m_calls(calls), m_thread(std::make_shared<JournalThread>(calls, m_folder, limits)) {}

Journals::~Journals() {
    m_thread->end();
}

QString Journals::journalFolder() {
    return stateFolder() + u"/recovery"_qs;
}

std::unique_ptr<Journal> Journals::begin(JournalBase base) {
    return m_thread->begin(std::move(base));
}

std::vector<std::unique_ptr<FoundJournal>> Journals::takeAbandoned() {
    PassedJournals passed;
    return takeAbandoned(passed);
}

/// Names begin with the time.
std::vector<std::unique_ptr<FoundJournal>> Journals::takeAbandoned(PassedJournals& passed) {
    std::vector<std::unique_ptr<FoundJournal>> found;
    if (!isOwnFolder(m_folder))
        return found;
    const QString pattern = u'*' + QLatin1String(JournalFile::Suffix);
    for (const QString& name : QDir(m_folder).entryList({pattern}, QDir::Files | QDir::Hidden, QDir::Name)) {
        if (auto journal = FoundJournal::take(m_thread, m_folder, name, passed))
            found.push_back(std::move(journal));
    }
    removeOrphans(m_calls, m_folder);
    return found;
}

void Journals::removeOldAsides(const QDateTime& now) {
    if (!isOwnFolder(m_folder))
        return;
    const QString suffix = QLatin1String(JournalFile::Suffix) + QLatin1String(JournalFile::AsideSuffix);
    for (const QString& name : oldAsides(m_folder, suffix, now)) {
        JournalFile::Opening opening = JournalFile::Opening::Missing;
        if (const auto file = JournalFile::open(m_calls, m_folder, name, opening))
            file->remove();
    }
}

bool Journals::flush(std::chrono::milliseconds limit) {
    return m_thread->flush(limit);
}
