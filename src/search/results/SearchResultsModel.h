#pragma once

#include "search/engine/FileMatches.h"

#include <QAbstractItemModel>
#include <QHash>
#include <QIcon>
#include <QString>
#include <QTimer>

#include <memory>
#include <vector>

/// The results of a search as a tree: a node for each file, below it one for each match, both in the order in which
/// they were added. The nodes have check boxes, each for itself. The records are plain, and the texts of the matches
/// are made when they are asked for. Owned by the panel. Nothing here runs the event loop.
class SearchResultsModel : public QAbstractItemModel {
    Q_OBJECT

 public:
    enum Role {
        Key = Qt::UserRole,             ///< of a file its path; none for a match
        Tag = Qt::UserRole + 1,         ///< of a match line, start and length with commas between; none for a file
        Image = Qt::UserRole + 2,       ///< FileImage or MatchImage
        MarkStart = Qt::UserRole + 3,   ///< where in the text the match stands
        MarkLength = Qt::UserRole + 4,  ///< 0: nothing of it is in the text, or its place is not known
    };
    static constexpr int FileImage = 1;
    static constexpr int MatchImage = 2;

    explicit SearchResultsModel(QObject* parent = nullptr);
    ~SearchResultsModel() override;

    /// Adds the matches behind those that the file has. Without a file name nothing is added.
    void addMatches(const QString& file, FileMatches matches);
    /// The text of a file's node. A key that is not there is passed over.
    void setText(const QString& key, const QString& text);
    void clear();

    void checkAll(bool on);
    /// A checked file is removed with its matches. The views see one change of the layout: separate removals would each
    /// look at every open node.
    void removeChecked();
    /// The nearest node that removeChecked() would leave: among the matches of the same file, then the file itself,
    /// then among the files, downwards first. Invalid when none is left.
    QModelIndex neighbourToRemain(const QModelIndex& index) const;

    static bool isFile(const QModelIndex& index) { return index.isValid() && !isMatch(index); }
    static bool isMatch(const QModelIndex& index) { return index.isValid() && (index.internalId() & 1) == 0; }
    /// Invalid when there is none, here and below.
    QModelIndex find(const QString& key) const;
    /// The next file from this row on, and then from the top, whose name without its folders begins like this.
    QModelIndex findName(const QString& beginning, int fromRow) const;

    QModelIndex index(int row, int column, const QModelIndex& parent = {}) const override;
    QModelIndex parent(const QModelIndex& index) const override;
    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    bool hasChildren(const QModelIndex& parent = {}) const override { return rowCount(parent) > 0; }
    Qt::ItemFlags flags(const QModelIndex& index) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    bool setData(const QModelIndex& index, const QVariant& value, int role) override;

 private:
    struct File;
    using Files = std::vector<std::unique_ptr<File>>;

    /// Null for the index of a file.
    static File* fileOfMatch(const QModelIndex& index) {
        return isMatch(index) ? static_cast<File*>(index.internalPointer()) : nullptr;
    }
    /// The inner number of an index is the address of its file for a match. For a file it is odd, and different for
    /// each row: Qt finds the open nodes of a view by row and number, and slowly where the numbers are all the same.
    QModelIndex indexOfFile(int row) const { return createIndex(row, 0, 2 * static_cast<quintptr>(row) + 1); }
    QModelIndex indexOf(const File& file) const;
    void addFile(const QString& path, FileMatches matches);
    void addTo(File& file, const FileMatches& matches);
    QVariant fileData(const File& file, int role) const;
    QVariant matchData(const File& file, int row, int role) const;
    bool isChecked(const QModelIndex& index) const;
    bool isAnyChecked() const;
    QModelIndex afterRemoval(const QModelIndex& index, const std::vector<int>& rows) const;
    std::vector<int> rowsAfterRemoval() const;
    Files takeChecked();
    void releaseLater(Files files);
    void releaseSome();

    Files m_files;
    Files m_removed;       ///< released in portions by the event loop
    QTimer m_nextRelease;  ///< of such a portion
    QHash<QString, File*> m_byKey;
    QIcon m_fileIcon;
    QIcon m_matchIcon;
};
