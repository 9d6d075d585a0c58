#pragma once

#include "recovery/journals/JournalFile.h"
#include "recovery/journals/RestoredJournal.h"

#include <QString>

#include <memory>

/// What quillmark-recover does with journals of unsaved changes. Created and used by RecoverTool; functions return the
/// exit code and report errors on standard error. A journal of a running program is read, and never changed.
class JournalTool {
 public:
    explicit JournalTool(QString folder) : m_folder(std::move(folder)) {}

    static bool isJournal(const QString& name);

    /// A line for each journal.
    QString list() const;
    int show(const QString& name) const;
    /// `asUtf8`: whatever the encoding of the document was.
    int restore(const QString& name, const QString& path, bool asUtf8) const;
    int drop(const QString& name) const;

 private:
    /// A journal that is open; locked, unless a running program has it.
    struct Opened {
        std::unique_ptr<JournalFile> file;
        int handle = -1;
        bool isInUse = false;
        std::unique_ptr<RestoredJournal> content;

        Opened() = default;
        ~Opened();
        Q_DISABLE_COPY_MOVE(Opened)
    };

    /// Null: it cannot be opened, and `exit` says why; that was reported.
    std::unique_ptr<Opened> open(const QString& name, int& exit) const;
    std::unique_ptr<Opened> openAny(const QString& name, JournalFile::Opening& opening) const;
    QString line(const QString& name) const;

    QString m_folder;
};
