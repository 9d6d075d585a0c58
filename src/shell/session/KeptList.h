#pragma once

#include "shell/session/RecentList.h"

#include <QObject>

/// A list of paths that is kept from run to run in a text file of the program's folder: one path a line, the oldest
/// first. Owned by the frame; the menus show it. Reading and writing report no failure: the list or the file then stays
/// as it was.
class KeptList : public QObject {
    Q_OBJECT

 public:
    /// What distinguishes one such list from another.
    struct Kind {
        const char* file;
        RecentList::Rule rule;
        bool trimmed = false;       ///< paths are trimmed, and blank ones ignored
        qsizetype mostLines = -1;   ///< further lines of the file are not read; -1: all are
        bool anyLineCounts = true;  ///< a file of blank lines takes the placeholder away too
    };

    static const Kind RecentFiles;
    static const Kind RecentProjects;
    static const Kind FavoriteProjects;

    KeptList(const Kind& kind, const QString& programFolder);

    /// The newest first.
    const QStringList& paths() const { return m_list.entries(); }
    qsizetype capacity() const { return m_kind.rule.capacity; }
    /// The menu shows that the list is empty. Adding a path ends that, and removing the last one does not bring it
    /// back.
    bool hasPlaceholder() const { return m_hasPlaceholder; }

    void add(const QString& path);
    void remove(const QString& path);

    /// Adds the lines of the file, as add() would.
    void load();
    /// A path that contains a tab or a line break is left out.
    void save() const;

 Q_SIGNALS:
    void changed();

 private:
    bool take(const QString& path);
    QString named(const QString& path) const { return m_kind.trimmed ? path.trimmed() : path; }

    const Kind& m_kind;
    QString m_file;
    RecentList m_list;
    bool m_hasPlaceholder = true;
};
