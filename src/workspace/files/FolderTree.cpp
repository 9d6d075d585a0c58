#include "workspace/files/FolderTree.h"

#include "platform/BackgroundWork.h"
#include "platform/Yield.h"
#include "widgets/BusyPointer.h"
#include "widgets/Prompts.h"
#include "workspace/files/Disk.h"
#include "workspace/files/FolderTreeModel.h"
#include "workspace/lists/FolderKey.h"

#include <QElapsedTimer>
#include <QTreeView>

#include <algorithm>
#include <utility>

using namespace std::chrono_literals;

namespace {

/// A disk that takes longer counts as not ready.
constexpr auto LongestWait = 3s;

QString withoutEnd(QString path) {
    while (path.size() > 1 && path.endsWith(u'/'))
        path.chop(1);
    return path;
}

}  // namespace

/// The state of a volume, asked of it in a thread of its own.
struct FolderTree::Question {
    std::shared_ptr<const VolumeState> state;
    QPointer<BackgroundWork> work;  ///< a child of the tree; destroyed when the answer was taken

    bool isAnswered() const { return !work || work->isDone(); }
};

FolderTree::FolderTree(QTreeView& view, Prompts& prompts, std::shared_ptr<const Disk> disk, QObject* parent)
    : QObject(parent), m_view(view), m_prompts(prompts), m_disk(std::move(disk)), m_model(new FolderTreeModel(this)) {
    m_view.setModel(m_model);
    connect(&m_view, &QTreeView::expanded, this, &FolderTree::readFolders);
}

FolderTree::~FolderTree() = default;

void FolderTree::RefreshView() {
    m_isFilled = true;
    m_model->clear();
    const VolumeList list = m_disk->volumes();
    const QPointer<FolderTree> self(this);
    addVolumes(list.volumes);
    if (self && list.error)
        m_prompts.message(&m_view, u"RefreshView : "_qs + list.error.description);
}

void FolderTree::addVolumes(const QList<Volume>& volumes) {
    const int filling = ++m_fillings;
    // All are asked at once, so that those that do not answer cost their time together.
    QList<std::shared_ptr<Question>> questions;
    for (const Volume& volume : volumes)
        questions.append(ask(volume.mountPoint));
    QElapsedTimer since;
    since.start();
    const QPointer<FolderTree> self(this);
    for (qsizetype at = 0; at < questions.size(); ++at) {
        if (const BackgroundWork* work = questions.at(at)->work)
            work->waitFor(std::max(BackgroundWork::Still - std::chrono::milliseconds(since.elapsed()), 0ms));
        add(volumes.at(at), *questions.at(at));
        yieldOnce();
        if (!self || filling != m_fillings)
            return;
    }
}

/// A volume that has not answered yet is not asked again.
std::shared_ptr<FolderTree::Question> FolderTree::ask(const QString& mountPoint) {
    std::shared_ptr<Question>& question = m_questions[mountPoint];
    if (question)
        return question;
    question = std::make_shared<Question>();
    const auto state = std::make_shared<VolumeState>();
    const auto work = [disk = m_disk, mountPoint, state](const std::atomic<bool>&) {
        *state = disk->stateOf(mountPoint);
    };
    question->state = state;
    question->work = new BackgroundWork(work, this);
    connect(question->work, &BackgroundWork::finished, this, [this, mountPoint] { takeAnswer(mountPoint); });
    return question;
}

void FolderTree::add(const Volume& volume, const Question& question) {
    const VolumeState state = question.isAnswered() ? *question.state : VolumeState();
    if (!state.isFile)
        m_model->addRoot(volumeKey(volume.mountPoint, volume.fixed), volumeText(volume.mountPoint, state), state.ready);
}

void FolderTree::takeAnswer(const QString& mountPoint) {
    const std::shared_ptr<Question> question = m_questions.take(mountPoint);
    question->work->deleteLater();
    const VolumeState& state = *question->state;
    if (!state.ready)
        return;
    for (const bool isFixed : {true, false}) {
        const QModelIndex index = m_model->child({}, volumeKey(mountPoint, isFixed));
        if (index.isValid())
            m_model->setReady(index, volumeText(mountPoint, state));
    }
}

bool FolderTree::waitFor(std::function<void(const std::atomic<bool>&)> work) {
    BusyPointer::show();
    // A child of this object, so that it is destroyed with it while the event loop runs.
    const QPointer<BackgroundWork> waiting(new BackgroundWork(std::move(work), this));
    const bool isDone = waiting->waitAlive(LongestWait);
    if (waiting)
        delete waiting.data();
    BusyPointer::restore();
    return isDone;
}

bool FolderTree::isReady(const QString& mountPoint) {
    const std::shared_ptr<Question> open = m_questions.value(mountPoint);
    if (open && !open->isAnswered())
        return false;
    const auto state = std::make_shared<VolumeState>();
    return waitFor(
               [disk = m_disk, mountPoint, state](const std::atomic<bool>&) { *state = disk->stateOf(mountPoint); }) &&
           state->ready;
}

void FolderTree::showNotReady() {
    m_prompts.stop(&m_view, u"Drive is not ready"_qs, u"Tesmo Explorer"_qs);
}

bool FolderTree::checkReady(const QModelIndex& index) {
    const QString key = m_model->keyOf(index);
    if (isFolderKey(key))
        return true;
    const QPointer<FolderTree> self(this);
    const bool ready = isReady(DecodeFolderKey(key));
    if (self && !ready)
        showNotReady();
    return ready;
}

bool FolderTree::readFolders(const QModelIndex& index) {
    if (!index.isValid() || m_model->isRead(index))
        return index.isValid();
    const QString key = m_model->keyOf(index);
    if (key.isEmpty())
        return false;
    const QPointer<FolderTree> self(this);
    const QPersistentModelIndex node(index);
    if (!isFolderKey(key)) {
        m_model->removeChildren(index);
        if (!checkReady(node) || !self || !node.isValid())
            return false;
    }
    const auto found = std::make_shared<Disk::Names>();
    const bool isAnswered = waitFor([disk = m_disk, path = DecodeFolderKey(key), found](const std::atomic<bool>& stop) {
        *found = disk->folders(path, stop);
    });
    if (!self)
        return false;
    if (!isAnswered) {
        if (node.isValid())
            m_view.collapse(node);
        showNotReady();
        return false;
    }
    if (node.isValid() && !m_model->isRead(node))
        m_model->setFolders(node, found->names);
    return node.isValid();
}

bool FolderTree::open(const QModelIndex& index) {
    const QPointer<FolderTree> self(this);
    const QPersistentModelIndex node(index);
    const bool isRead = readFolders(index);
    if (!self || !node.isValid())
        return false;
    m_view.setCurrentIndex(node);
    if (isRead)
        m_view.expand(node);
    return isRead;
}

bool FolderTree::GotoPath(const QString& key) {
    const QPointer<FolderTree> self(this);
    if (!m_isFilled) {
        RefreshView();
        yieldOnce();
        if (!self)
            return false;
    }
    const QString path = withoutEnd(DecodeFolderKey(key));
    const QModelIndex volume = volumeOf(path, key);
    if (!volume.isValid()) {
        m_prompts.message(&m_view, u"'%1' not found !"_qs.arg(path));
        return false;
    }
    ++m_walks;
    const QPersistentModelIndex last = walk(volume, path);
    if (!self)
        return false;
    if (last.isValid())
        m_view.setCurrentIndex(last);
    --m_walks;
    if (!last.isValid())
        return false;
    m_view.scrollTo(last, QAbstractItemView::PositionAtCenter);
    return true;
}

QModelIndex FolderTree::volumeOf(const QString& path, const QString& key) const {
    QModelIndex longest;
    qsizetype length = -1;
    for (int row = 0; row < m_model->rowCount(); ++row) {
        const QModelIndex each = m_model->index(row, 0);
        const QString place = DecodeFolderKey(m_model->keyOf(each));
        const bool contains = path == place || path.startsWith(pathIn(place, {}));
        const bool isWanted = isFolderKey(key) ? contains : path == place;
        if (isFolderKey(m_model->keyOf(each)) || !isWanted || place.size() <= length)
            continue;
        longest = each;
        length = place.size();
    }
    return longest;
}

QModelIndex FolderTree::walk(const QModelIndex& volume, const QString& path) {
    const QPointer<FolderTree> self(this);
    QPersistentModelIndex last(volume);
    QString folder = DecodeFolderKey(m_model->keyOf(volume));
    const QStringList names = path.mid(folder.size()).split(u'/', Qt::SkipEmptyParts);
    bool isOpen = open(last);
    for (const QString& name : names) {
        if (!isOpen || !self || !last.isValid())
            break;
        folder = pathIn(folder, name);
        const QModelIndex next = m_model->child(last, folderKey(folder));
        if (!next.isValid())
            break;
        last = next;
        isOpen = open(last);
    }
    return self ? QModelIndex(last) : QModelIndex();
}

bool FolderTree::setAsRoot() {
    const QPersistentModelIndex node(selected());
    const QPointer<FolderTree> self(this);
    if (!node.isValid() || m_model->keyOf(node).isEmpty() || !checkReady(node) || !self || !node.isValid())
        return false;
    const QString key = m_model->keyOf(node);
    const QString text = node.data().toString();
    ++m_fillings;
    ++m_walks;
    m_model->clear();
    const bool isOpen = open(m_model->addRoot(key, text, true));
    if (self)
        --m_walks;
    return isOpen;
}

QModelIndex FolderTree::selected() const {
    return m_view.currentIndex();
}

QString FolderTree::selectedKey() const {
    const QModelIndex index = selected();
    return index.isValid() ? m_model->keyOf(index) : QString();
}
