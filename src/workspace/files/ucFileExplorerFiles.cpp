// Part of ucFileExplorer: what its commands do to files.

#include "platform/BackgroundWork.h"
#include "platform/Paths.h"
#include "platform/SystemError.h"
#include "platform/Yield.h"
#include "widgets/BusyPointer.h"
#include "widgets/Prompts.h"
#include "workspace/files/FileListModel.h"
#include "workspace/files/FileListView.h"
#include "workspace/files/FileOperations.h"
#include "workspace/files/FolderPlaces.h"
#include "workspace/files/FolderTree.h"
#include "workspace/files/ucFileExplorer.h"
#include "workspace/lists/frmFileProperties.h"

#include <memory>
#include <utility>

namespace {

constexpr std::chrono::hours WithoutLimit{24};

/// What a deletion has done so far.
struct Deletion {
    QStringList left;
    QStringList deleted;
};

SystemError deleteAll(Deletion& deletion, const std::atomic<bool>& cancelled) {
    for (const QString& path : deletion.left) {
        if (cancelled)
            break;
        if (SystemError error = FileOperations::remove(path))
            return error;
        deletion.deleted.append(path);
    }
    return {};
}

}  // namespace

QString ucFileExplorer::pathOfRow() const {
    const QModelIndex current = m_list->currentIndex();
    const QList<int> rows = m_list->selectedRows();
    if (rows.isEmpty())
        return {};
    return m_files->pathOf(rows.contains(current.row()) ? current.row() : rows.first());
}

QStringList ucFileExplorer::selectedPaths() const {
    QStringList paths;
    for (const int row : m_list->selectedRows())
        paths.append(m_files->pathOf(row));
    return paths;
}

void ucFileExplorer::OpenSelectedFiles() {
    openFiles(selectedPaths());
}

void ucFileExplorer::openFiles(const QStringList& paths) {
    if (paths.isEmpty())
        return;
    m_places->addRecent(selectedKey());
    const QPointer<ucFileExplorer> self(this);
    for (const QString& path : paths) {
        if (!self)
            return;
        Q_EMIT openFile(path);
    }
}

void ucFileExplorer::addFilesToProject() {
    const QPointer<ucFileExplorer> self(this);
    for (const QString& path : selectedPaths()) {
        Q_EMIT addToProject(path, u"FILE"_qs);
        yieldOnce();
        if (!self)
            return;
    }
}

/// Nothing when this was destroyed or the program ends meanwhile, or files are being changed already.
std::optional<SystemError> ucFileExplorer::run(FileWork work) {
    if (m_isBusy)
        return std::nullopt;
    m_isBusy = true;
    BusyPointer::show();
    const auto error = std::make_shared<SystemError>();
    const QPointer<BackgroundWork> running(new BackgroundWork(
        [error, work = std::move(work)](const std::atomic<bool>& cancelled) { *error = work(cancelled); }, this));
    const bool isDone = running->waitAlive(WithoutLimit);
    BusyPointer::restore();
    if (!running)
        return std::nullopt;
    delete running.data();
    m_isBusy = false;
    return isDone ? std::optional(*error) : std::nullopt;
}

void ucFileExplorer::DeleteSelectedFiles() {
    const QStringList paths = selectedPaths();
    if (paths.isEmpty())
        return;
    const QString question =
        paths.size() > 1 ? u"Delete selected files ?"_qs : u"Delete file "_qs + paths.first() + u" ?"_qs;
    const QPointer<ucFileExplorer> self(this);
    if (m_services.prompts.askYesNo(this, question) && self)
        deleteFiles(paths);
}

void ucFileExplorer::deleteFiles(const QStringList& paths) {
    const auto deletion = std::make_shared<Deletion>(Deletion{paths, {}});
    const std::optional<SystemError> error =
        run([deletion](const std::atomic<bool>& cancelled) { return deleteAll(*deletion, cancelled); });
    if (!error)
        return;
    m_files->removeFiles(deletion->deleted);
    if (*error)
        m_services.prompts.message(this, error->description);
}

void ucFileExplorer::renameFile() {
    const QString path = pathOfRow();
    if (path.isEmpty())
        return;
    const QString name = FileNameOf(path);
    const QPointer<ucFileExplorer> self(this);
    const QString newName =
        m_services.prompts.askText(this, u"Rename"_qs, u"Enter the new name:"_qs, name).value_or(QString()).trimmed();
    if (!self || newName.isEmpty() || newName == name)
        return;
    const auto error = run([=](const std::atomic<bool>&) { return FileOperations::rename(path, newName); });
    if (!error)
        return;
    if (*error) {
        m_services.prompts.message(this, error->description);
        return;
    }
    m_selectNext = path.chopped(name.size()) + newName;
    refillList();
}

void ucFileExplorer::duplicateFile() {
    const QString path = pathOfRow();
    if (path.isEmpty())
        return;
    const auto error =
        run([=](const std::atomic<bool>& cancelled) { return FileOperations::duplicate(path, cancelled); });
    if (!error)
        return;
    if (*error) {
        m_services.prompts.message(this, error->description);
        return;
    }
    m_selectNext = FileOperations::duplicateOf(path);
    refillList();
}

void ucFileExplorer::selectLoaded() {
    const QString wanted = std::exchange(m_selectNext, QString());
    const int row = wanted.isEmpty() ? -1 : m_files->rowOf(wanted);
    if (row < 0)
        return;
    m_list->setCurrentIndex(m_files->index(row, FileListModel::NameColumn));
    m_list->scrollTo(m_list->currentIndex());
}

void ucFileExplorer::showFileProperties() {
    const QString path = pathOfRow();
    if (!path.isEmpty())
        ShowProperties(path, m_services.prompts, this);
}
