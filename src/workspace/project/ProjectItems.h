#pragma once

#include "workspace/project/ProjectFile.h"

#include <QAbstractListModel>

#include <vector>

/// The rows of a project, in ascending order of their text. Keys are unique. Pictures are made when a row is painted. A
/// row has its key in Qt::UserRole and its type in Qt::UserRole + 1. Owned by the list of the project.
class ProjectItems : public QAbstractListModel {
    Q_OBJECT

 public:
    static constexpr int KeyRole = Qt::UserRole;
    static constexpr int TypeRole = Qt::UserRole + 1;

    enum class Added { Yes, UnknownType, KnownKey };

    explicit ProjectItems(QObject* parent = nullptr);

    /// `type` in any letter case. Looks on the disk whether the item is there; one that is missing is shown dimmed.
    Added add(const QString& key, const QString& type);
    void removeAt(int row);
    void clear();
    /// The item of a row that exists.
    ProjectItem item(int row) const { return m_rows.at(static_cast<std::size_t>(row)).item; }
    QString text(int row) const { return m_rows.at(static_cast<std::size_t>(row)).text; }

    /// Pictures of the files' types for files that are added from now on.
    void setDefaultSysIcon(bool on) { m_typeIcons = on; }

    int rowCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

 private:
    struct Row {
        ProjectItem item;
        QString text;
        QString path;
        bool ghosted = false;
        bool typeIcon = false;  ///< the desktop's picture, not the program's own
    };

    static QVariant picture(const Row& row);
    int placeFor(const QString& text) const;

    std::vector<Row> m_rows;
    bool m_typeIcons = false;
};
