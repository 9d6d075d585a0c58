#include "document/HexJournal.h"

#include "document/HexPlayer.h"
#include "hex/bytes/HexBlock.h"
#include "hex/ucHex.h"
#include "recovery/journals/FoundJournal.h"
#include "recovery/journals/Journal.h"
#include "recovery/journals/Journals.h"

#include <QFileInfo>
#include <QPointer>

#include <algorithm>
#include <utility>

HexJournal::HexJournal(Journals* journals, ucHex& view) : m_journals(journals), m_view(view) {
    m_base.view = JournalBase::View::Hex;
    if (m_journals != nullptr)
        m_view.setEditObserver(this);
}

HexJournal::~HexJournal() {
    noteFileChange();
    m_view.setEditObserver(nullptr);
}

void HexJournal::begin(const QString& path, const std::optional<FileState>& state) {
    discard();
    m_base = {};
    m_base.view = JournalBase::View::Hex;
    m_base.path = path;
    m_base.caption = QFileInfo(path).fileName();
    m_base.state = state;
    m_isBegun = true;
}

void HexJournal::discard() {
    for (const auto& journal : {m_journal.get(), m_unloaded.get()}) {
        if (journal != nullptr)
            journal->discard();
    }
    drop();
}

void HexJournal::leave() {
    noteFileChange();
    drop();
}

void HexJournal::drop() {
    m_journal.reset();
    m_unloaded.reset();
    reset();
}

/// If the load fails, the changes are neither saved nor given up.
void HexJournal::unloaded() {
    noteFileChange();
    if (m_journal)
        m_unloaded = std::move(m_journal);
    reset();
}

void HexJournal::reset() {
    m_half.reset();
    m_undoable = 0;
    m_isUndoKept = true;
    m_isBegun = false;
}

Journal& HexJournal::journal() {
    if (!m_journal) {
        m_journal = m_journals->begin(m_base);
        followNeeds();
        if (!m_isBegun)
            m_journal->setWhole(m_view.workingCopy().handle());
        m_isUndoKept = m_isBegun;
    }
    return *m_journal;
}

/// Whether the bytes are needed is found out when an edit is written to the disk; by then there may be no further one.
void HexJournal::followNeeds() {
    m_journal->setWholeNeeded([this] {
        QMetaObject::invokeMethod(
            &m_looks, [this] { keepWholeIfNeeded(); }, Qt::QueuedConnection);
    });
}

void HexJournal::keepWholeIfNeeded() {
    if (m_journal && m_journal->needsWhole())
        keepWhole();
}

void HexJournal::noteFileChange() {
    const bool isBaseLost =
        m_journal && m_journal->dependsOnFile() && !(m_base.state && m_base.state->isStillAt(m_base.path));
    if (isBaseLost)
        keepWhole();
    else
        keepWholeIfNeeded();
}

void HexJournal::keepWhole() {
    if (!m_view.workingCopy().isOpen())
        return;
    m_journal->setWhole(m_view.workingCopy().handle());
    m_isUndoKept = false;
}

// Edits

void HexJournal::type(FilePosition page, HexCell cell, quint8 byte) {
    journal().type(page.number(), cell.row, cell.col, byte);
    m_undoable = std::min(m_undoable + 1, HexUndoLog::Capacity);
}

void HexJournal::write(FilePosition at, std::string_view bytes) {
    journal().overwrite(Offset(at).number(), bytes);
}

/// Kept as if it were the whole byte, which it is if nothing follows, and taken back when the second digit follows.
void HexJournal::halfTyped(FilePosition page, HexCell cell, quint8 byte) {
    cancelHalf();
    const Half half{page, cell, byte};
    if (wouldUnmark(half))
        return;
    type(page, cell, byte);
    m_half = half;
    keepWholeIfNeeded();
}

/// Whether the first digit alone would make the byte what it was before it was typed first: the mark of the byte would
/// not come back with the second digit.
bool HexJournal::wouldUnmark(const Half& half) const {
    const FilePosition at = HexPaging::positionOf(half.page, half.cell);
    char now = 0;
    return m_view.workingCopy().read(at, &now, 1) == 1 && m_view.edits().isChanged(at, static_cast<quint8>(now)) &&
           !m_view.edits().isChanged(at, half.byte);
}

void HexJournal::cancelHalf() {
    if (!m_half)
        return;
    const Half half = *std::exchange(m_half, std::nullopt);
    const FilePosition at = HexPaging::positionOf(half.page, half.cell);
    char now = 0;
    if (m_isUndoKept) {
        m_journal->takeBack();
        --m_undoable;
    } else if (m_view.workingCopy().read(at, &now, 1) == 1) {
        write(at, {&now, 1});
    }
}

void HexJournal::typed(FilePosition page, HexCell cell, quint8 byte) {
    const char now = static_cast<char>(byte);
    note(HexPaging::positionOf(page, cell), {&now, 1}, 0);
    const bool isKept = m_half && m_half->page == page && m_half->cell == cell && m_half->byte == byte;
    if (isKept) {
        m_half.reset();
        return;
    }
    // The byte is in the working copy by now, which is where the half would be cancelled from if undo is not kept.
    cancelHalf();
    type(page, cell, byte);
    keepWholeIfNeeded();
}

void HexJournal::tookBack(const HexUndoEntry& entry) {
    const char byte = static_cast<char>(entry.value);
    const FilePosition at = HexPaging::positionOf(entry.pointer, entry.cell);
    note(at, {&byte, 1}, 0);
    cancelHalf();
    if (m_isUndoKept && m_journal && m_undoable > 0) {
        m_journal->takeBack();
        --m_undoable;
    } else {
        write(at, {&byte, 1});
    }
    keepWholeIfNeeded();
}

void HexJournal::wrote(FilePosition at, std::string_view bytes) {
    note(at, bytes, 0);
    cancelHalf();
    write(at, bytes);
    keepWholeIfNeeded();
}

void HexJournal::filled(const HexBlock& block, quint8 byte) {
    const char now = static_cast<char>(byte);
    note(block.first, {&now, 1}, block.size());
    cancelHalf();
    journal().fill(Offset(block.first).number(), block.size(), byte);
    keepWholeIfNeeded();
}

// Saves

/// A byte of which one digit was typed is in the file too.
void HexJournal::beginSave() {
    m_view.finishNibble();
    m_isSaving = true;
    m_sinceSave.clear();
}

void HexJournal::note(FilePosition at, std::string_view bytes, qint64 count) {
    if (m_isSaving)
        m_sinceSave.push_back({at, QByteArray(bytes.data(), static_cast<qsizetype>(bytes.size())), count});
}

/// How the bytes were typed that were changed meanwhile is not kept. Those of before the save are removed from the disk
/// once the others are there.
void HexJournal::endSave(bool isSaved, const QString& path) {
    m_isSaving = false;
    const std::vector<Change> changes = std::exchange(m_sinceSave, {});
    if (!isSaved || !m_view.wasWritten() || m_journals == nullptr)
        return;
    const std::optional<Half> half = m_half;
    const std::unique_ptr<Journal> before = std::move(m_journal);
    begin(path, FileState::of(path));
    for (const Change& change : changes)
        repeat(change);
    if (half)
        halfTyped(half->page, half->cell, half->byte);
    if (before && m_journal)
        before->replaceBy(*m_journal);
    else if (before)
        before->discard();
}

void HexJournal::repeat(const Change& change) {
    if (change.count > 0)
        journal().fill(Offset(change.at).number(), change.count, static_cast<quint8>(change.bytes.front()));
    else
        write(change.at, {change.bytes.constData(), static_cast<std::size_t>(change.bytes.size())});
}

// Bringing back

RecoveryOutcome HexJournal::bringBack(FoundJournal& found) {
    const QPointer<ucHex> alive(&m_view);
    leave();
    bool isSame = false;
    const bool isShown = m_view.bringBack(found.basePath(), [&found, &isSame](HexReplay& replay) {
        HexPlayer player(replay);
        if (!found.visit(player) || !found.isBaseUnchanged())
            return false;
        isSame = replay.isSameAs(found.base().path);
        return !isSame;
    });
    if (!alive || !isShown)
        return isSame ? RecoveryOutcome::SameAsFile : RecoveryOutcome::Failed;
    m_base = found.base();
    m_journal = found.continueAs();
    followNeeds();
    m_undoable = static_cast<int>(m_view.edits().state().undo.size());
    m_isBegun = true;
    return RecoveryOutcome::Shown;
}
