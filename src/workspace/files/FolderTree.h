#pragma once

#include "platform/Volumes.h"

#include <QHash>
#include <QModelIndex>
#include <QObject>
#include <QPointer>

#include <atomic>
#include <functional>
#include <memory>

class BackgroundWork;
class Disk;
class FolderTreeModel;
class Prompts;
class QTreeView;

/// Reads volumes and folders into the folder tree and walks it. Owned by the file explorer, together with the view that
/// shows its model. Its functions run the event loop when a disk does not answer at once, and while a message is shown;
/// afterwards nodes may be gone.
class FolderTree : public QObject {
    Q_OBJECT

 public:
    FolderTree(QTreeView& view, Prompts& prompts, std::shared_ptr<const Disk> disk, QObject* parent);
    ~FolderTree() override;

    FolderTreeModel& model() { return *m_model; }
    /// Whether the level of volumes was ever read.
    bool isFilled() const { return m_isFilled; }

    /// Shows the volumes alone.
    void RefreshView();
    /// Opens the tree down to the folder and selects the last node on the way that exists. Returns false, after a
    /// message, when its volume is not there.
    bool GotoPath(const QString& key);
    /// Shows the selected node alone, with its folders. Returns false when there is none or its volume is not ready.
    bool setAsRoot();

    /// Reads the folders of a node that has not been read. Returns false when it could not be, and the node is gone or
    /// has no children.
    bool readFolders(const QModelIndex& index);
    /// Returns whether the volume of the node answers, and says so when it does not. True for a folder.
    bool checkReady(const QModelIndex& index);

    /// True while the selection follows a path and has not come to its end.
    bool isWalking() const { return m_walks > 0; }

    QModelIndex selected() const;
    /// Empty without a selected node.
    QString selectedKey() const;

 private:
    struct Question;

    void addVolumes(const QList<Volume>& volumes);
    std::shared_ptr<Question> ask(const QString& mountPoint);
    void add(const Volume& volume, const Question& question);
    void takeAnswer(const QString& mountPoint);
    bool isReady(const QString& mountPoint);
    bool waitFor(std::function<void(const std::atomic<bool>&)> work);
    void showNotReady();
    QModelIndex volumeOf(const QString& path, const QString& key) const;
    QModelIndex walk(const QModelIndex& volume, const QString& path);
    bool open(const QModelIndex& index);

    QTreeView& m_view;
    Prompts& m_prompts;
    std::shared_ptr<const Disk> m_disk;
    FolderTreeModel* m_model;
    bool m_isFilled = false;
    int m_fillings = 0;  ///< counts refreshes, so that one notices that another has begun
    int m_walks = 0;
    QHash<QString, std::shared_ptr<Question>> m_questions;  ///< by mount point; those whose answer was not taken yet
};
