#pragma once

#include "workspace/project/ProjectFile.h"

#include <QAbstractListModel>
#include <QSet>

#include <functional>
#include <memory>
#include <vector>

class BackgroundWork;

/// The rows of a project, in ascending order of their text. Keys are unique. Pictures are made when a row is painted. A
/// row has its key in Qt::UserRole and its type in Qt::UserRole + 1. Whether an item is on the disk is asked in another
/// thread, because a network folder may never answer; until its answer a row is shown as if it were there, with the
/// program's own picture. Owned by the list of the project.
class ProjectItems : public QAbstractListModel {
    Q_OBJECT

 public:
    static constexpr int KeyRole = Qt::UserRole;
    static constexpr int TypeRole = Qt::UserRole + 1;

    enum class Added { Yes, UnknownType, KnownKey };

    /// Whether a path names something on the disk. Called in another thread.
    using Exists = std::function<bool(const QString& path)>;

    explicit ProjectItems(QObject* parent = nullptr);
    explicit ProjectItems(Exists exists, QObject* parent = nullptr);
    ~ProjectItems() override;
    Q_DISABLE_COPY_MOVE(ProjectItems)

    /// `type` in any letter case. An item that turns out to be missing is shown dimmed.
    Added add(const QString& key, const QString& type);
    void removeAt(int row);
    void clear();
    /// The item of a row that exists.
    ProjectItem item(int row) const { return rowAt(row).item; }
    QString text(int row) const { return rowAt(row).text; }

    /// Pictures of the files' types for files that are added from now on.
    void setDefaultSysIcon(bool on) { m_typeIcons = on; }

    int rowCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

 private:
    enum class OnDisk { Unknown, There, Missing };

    struct Row {
        ProjectItem item;
        QString text;
        QString path;
        bool typeIcon = false;  ///< the desktop's picture once it is there, not the program's own
        quint64 number = 0;     ///< no other row ever has it
        OnDisk state = OnDisk::Unknown;
    };
    struct Question {
        quint64 number = 0;  ///< of the row
        QString path;
        bool isThere = false;  ///< the answer
    };
    using Questions = std::vector<Question>;

    static QVariant picture(const Row& row);
    const Row& rowAt(int row) const { return *m_rows.at(static_cast<std::size_t>(row)); }
    int placeFor(const QString& text) const;
    void ask();
    void takeAnswers(const Questions& answered);
    void endWork();

    Exists m_exists;
    std::vector<std::unique_ptr<Row>> m_rows;
    QSet<QString> m_keys;
    Questions m_waiting;               ///< not yet asked
    BackgroundWork* m_work = nullptr;  ///< answers the questions that were asked
    bool m_asksSoon = false;
    quint64 m_lastNumber = 0;
    bool m_typeIcons = false;
};
