#pragma once

#include <QAbstractListModel>
#include <QList>

/// The open documents as rows, in the order in which they were added. A row's icon is looked up when it is painted.
class OpenFilesModel : public QAbstractListModel {
    Q_OBJECT

 public:
    enum Role {
        Key = Qt::UserRole,        ///< the document's key
        Tag = Qt::UserRole + 1,    ///< its path, or the caption of one that was never saved
        Image = Qt::UserRole + 2,  ///< 1 normal, 2 changed, 3 locked
    };

    explicit OpenFilesModel(QObject* parent = nullptr);

    int rowCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;

    /// At the end.
    void add(const QString& file, const QString& key);
    /// An empty file leaves text, tag and tool tip unchanged. A key that is not there is passed over, here and below.
    void set(const QString& file, const QString& key, int image);
    void remove(const QString& key);
    void clear();

    /// -1 when there is no such row.
    int rowOf(const QString& key) const;
    QString keyAt(int row) const { return data(index(row), Key).toString(); }
    QString tagAt(int row) const { return data(index(row), Tag).toString(); }
    /// Whether the document of the row was never saved, so that it has no path.
    bool isUntitled(int row) const;

    /// Whole paths as the texts of the rows, in place of file names.
    void setShowPath(bool on);
    bool ShowPath() const { return m_showPath; }
    /// The icon of the file's type for a document that is neither changed nor locked.
    void setDefaultSysIcon(bool on);
    bool DefaultSysIcon() const { return m_systemIcons; }

 private:
    struct Row {
        QString key;
        QString tag;
        int image = 1;
    };

    QString textOf(const Row& row) const;
    QIcon iconOf(const Row& row) const;
    void repaintAll();

    QList<Row> m_rows;
    bool m_showPath = false;
    bool m_systemIcons = false;
};
