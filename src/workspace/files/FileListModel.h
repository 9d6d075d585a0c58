#pragma once

#include <QAbstractTableModel>
#include <QIcon>
#include <QList>
#include <QString>
#include <QStringList>

#include <functional>
#include <memory>
#include <vector>

class BackgroundWork;
class Disk;

/// The files of one folder: the columns "Filename" and, where wanted, "Modified". A row has its path as key and tool
/// tip. Owned by the file explorer. The disk is read in other threads; what does not arrive at once is shown when it
/// does. Icons are looked up when a row is shown, and times for the rows around it. Does not run the event loop.
class FileListModel : public QAbstractTableModel {
    Q_OBJECT

 public:
    enum Column { NameColumn, ModifiedColumn };

    explicit FileListModel(std::shared_ptr<const Disk> disk, QObject* parent = nullptr);
    ~FileListModel() override;

    /// Empties the list and begins to read the folder. Without a filter all its files are shown.
    void load(const QString& folder, const QString& filter);
    /// True until loaded() was emitted.
    bool isLoading() const { return m_reading != nullptr; }
    void clear();

    /// A list sorted by a column that is taken away is sorted by name.
    void setModifiedShown(bool on);
    bool isModifiedShown() const { return m_modifiedShown; }
    /// Icons of the files' types instead of one for all.
    void setSystemIcons(bool on);
    bool hasSystemIcons() const { return m_systemIcons; }

    QString pathOf(int row) const;
    /// -1 without such a row.
    int rowOf(const QString& path) const;
    /// Takes the rows of these files out of the list.
    void removeFiles(const QStringList& paths);

    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;
    Qt::ItemFlags flags(const QModelIndex& index) const override;
    QStringList mimeTypes() const override;
    QMimeData* mimeData(const QModelIndexList& indexes) const override;
    Qt::DropActions supportedDragActions() const override { return Qt::CopyAction; }

    /// Stays in force for the folders that are loaded later. The times of all rows are needed for the order of
    /// "Modified"; it comes into force when they have been read.
    void sort(int column, Qt::SortOrder order) override;
    int sortColumn() const { return m_sortColumn; }

 Q_SIGNALS:
    void loaded();

 private:
    struct Row {
        QString name;
        int place = 0;  ///< in the order of names
        bool isTimeKnown = false;
        qint64 modified = 0;
    };
    struct Reading;
    struct Timing;

    void takeNames();
    void takeTimes();
    void removeAll();
    void readAllTimes();
    bool areTimesKnown() const;
    void arrange();
    void reorder(const std::function<bool(const Row&, const Row&)>& isBefore);
    void rearrange(const std::function<void()>& move);
    const Row& timed(int row) const;
    void readTimesAround(int row) const;
    QVariant cell(const QModelIndex& index) const;

    std::shared_ptr<const Disk> m_disk;
    QIcon m_fixedIcon;
    QString m_folder;
    mutable std::vector<Row> m_rows;
    mutable bool m_isSlow = false;  ///< a time did not arrive at once: no more are asked for in this folder
    bool m_modifiedShown = false;
    bool m_systemIcons = false;
    int m_sortColumn = NameColumn;
    Qt::SortOrder m_sortOrder = Qt::AscendingOrder;
    std::shared_ptr<Reading> m_names;
    std::unique_ptr<BackgroundWork> m_reading;
    std::shared_ptr<Timing> m_times;
    std::unique_ptr<BackgroundWork> m_timing;
};
