#include "shell/session/SessionKeeper.h"

#include "settings/files/OwnTextFile.h"
#include "shell/documents/SystemClose.h"
#include "shell/session/DocumentRecords.h"
#include "shell/session/ProjectLists.h"
#include "shell/session/SessionFile.h"
#include "shell/start/IgnoringErrors.h"

#include <utility>

SessionKeeper::SessionKeeper(const QString& programFolder, const QString& projectFilename, DocumentRecords& records,
                             SystemClose& systemClose, OpenProject openProject)
    : m_file(programFolder + QLatin1String("/lastopen.idx")),
      m_projectFilename(projectFilename),
      m_records(records),
      m_systemClose(systemClose),
      m_openProject(std::move(openProject)) {}

void SessionKeeper::SaveSession() const {
    SessionFile session{m_projectFilename, {}};
    if (session.project.isEmpty())
        session.records = m_records.writeAll();
    OwnTextFile::writeLines(m_file, session.toLines());
}

void SessionKeeper::RestoreSession() {
    m_systemClose.enable(false);
    ignoringErrors("RestoreSession", [this] { restore(); });
    m_systemClose.enable(true);
}

void SessionKeeper::restore() {
    const SessionFile session =
        SessionFile::fromLines(OwnTextFile::readLines(m_file, OwnTextFile::MostListBytes).value_or(QStringList()));
    if (!session.project.isEmpty() && session.project != NewProjectName)
        m_openProject(session.project);
    for (const QString& record : session.records)
        ignoringErrors("RestoreDocRecord", [&] { m_records.RestoreDocRecord(record); });
}
