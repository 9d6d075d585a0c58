#include "shell/session/SessionFile.h"

#include "settings/files/OwnTextFile.h"

namespace {

constexpr QLatin1String ProjectMark("<PROJECT>");
constexpr QLatin1String FileMark("<FILE>");

}  // namespace

SessionFile SessionFile::fromLines(const QStringList& lines) {
    const QString mark = lines.value(0).trimmed();
    if (mark == ProjectMark)
        return {lines.value(1), {}};
    SessionFile session;
    if (mark == FileMark)
        session.records = lines.mid(1);
    session.records.removeAll(QString());
    return session;
}

QStringList SessionFile::toLines() const {
    if (project.isEmpty())
        return QStringList(FileMark) + records;
    QStringList lines(ProjectMark);
    if (!project.isEmpty() && OwnTextFile::isOneField(project))
        lines << project;
    return lines;
}
