#pragma once

#include <QString>

#include <functional>

class DocumentRecords;
class SystemClose;

/// Writes what is open at the end of a run, and opens it again in the next one. Owned by the frame. Failures are not
/// reported: a file that cannot be written stays as it was.
class SessionKeeper {
 public:
    using OpenProject = std::function<void(const QString& path)>;

    /// `projectFilename` is the frame's; the records and it outlive this object.
    SessionKeeper(const QString& programFolder, const QString& projectFilename, DocumentRecords& records,
                  SystemClose& systemClose, OpenProject openProject);

    /// With a project open its path alone, which holds the documents.
    void SaveSession() const;
    /// Runs the event loop; Close is disabled meanwhile.
    void RestoreSession();

 private:
    void restore();

    QString m_file;
    const QString& m_projectFilename;
    DocumentRecords& m_records;
    SystemClose& m_systemClose;
    OpenProject m_openProject;
};
