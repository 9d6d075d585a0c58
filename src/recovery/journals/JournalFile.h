#pragma once

#include "platform/OwnFile.h"
#include "recovery/journals/JournalFrame.h"

#include <QByteArray>
#include <QString>

#include <memory>

/// The file of a journal, and the names of the files beside it. Locked as long as this object exists, so that no other
/// process takes it. Owned by whoever writes or examines the journal. Links, other kinds of files and files of other
/// users are never opened.
class JournalFile {
 public:
    using Opening = OwnFileLock;
    static constexpr const char* Suffix = ".journal";
    static constexpr const char* AsideSuffix = ".aside";
    /// Of one that is just being written: it is not complete, and does not count.
    static constexpr const char* NewSuffix = ".new";
    static constexpr const char* BaseSuffix = ".base";
    static constexpr const char* TextSuffix = ".text";

    /// An existing one; `name` is that of the file in the folder, with its suffix.
    static std::unique_ptr<JournalFile> open(FileSystemCalls& calls, const QString& folder, const QString& name,
                                             Opening& opening);
    /// An empty one, which bears its name only after publish(). Null: it could not be made. Makes the folder, too.
    static std::unique_ptr<JournalFile> create(FileSystemCalls& calls, const QString& folder);
    /// An empty one that is to take the place of `old` by publish().
    static std::unique_ptr<JournalFile> createFor(const JournalFile& old);
    ~JournalFile();
    Q_DISABLE_COPY_MOVE(JournalFile)

    int handle() const { return m_handle; }
    const QString& folder() const { return m_folder; }
    /// What the names of its files begin with.
    const QString& stem() const { return m_stem; }
    QString stemPath() const { return m_folder + u'/' + m_stem; }
    QString path() const { return m_folder + u'/' + m_name; }
    /// Of the copy of the base with this number.
    QString basePath(qint64 number) const { return basePath(m_folder + u'/' + m_stem, number); }
    static QString basePath(const QString& stemPath, qint64 number);
    QString textPath() const;
    bool isAside() const;
    /// Whether somebody removed it.
    bool isGone() const;

    /// Flushes the contents, and gives the file its name for good. False: that did not work.
    bool publish();
    /// Removes a file that was not published.
    void giveUp();
    /// Removes it and the copies of its base. One that cannot be removed is emptied, if possible. False: neither.
    bool remove();
    bool setAside();
    void removeBase(qint64 number) const;
    /// Removes what an earlier process left beside it, but for the copy of the base with this number.
    void removeLeftovers(qint64 keptBase) const;
    /// Flushes the names in the folder.
    bool flushFolder() const;

    /// The end of its last valid frame, behind which its owner writes.
    JournalEnd end;

 private:
    JournalFile(FileSystemCalls& calls, QString folder, QString stem, QString name, int handle);
    static std::unique_ptr<JournalFile> createNamed(FileSystemCalls& calls, const QString& folder, const QString& stem);
    bool lockNew() const;

    FileSystemCalls& m_calls;
    QString m_folder;
    QString m_stem;
    QString m_name;
    int m_handle;
};

/// Removes files in the folder of journals that belong to none.
void removeOrphans(FileSystemCalls& calls, const QString& folder);
