// Loading a file into the view and saving it.

#include "hex/PacedProgress.h"
#include "hex/bytes/HexEditObserver.h"
#include "hex/bytes/HexReplay.h"
#include "hex/grid/Grid.h"
#include "hex/grid/GridPane.h"
#include "hex/ucHex.h"
#include "platform/FileReader.h"
#include "platform/Yield.h"
#include "platform/YieldPace.h"
#include "widgets/BusyPointer.h"
#include "widgets/Prompts.h"

#include <QPointer>

#include <cerrno>
#include <utility>

namespace {

constexpr int AllDone = 100;  ///< percent

bool isEmptyFile(const QString& path) {
    FileReader reader;
    return !reader.open(path) && reader.size() == 0;
}

}  // namespace

void ucHex::DisableHexControls() {
    Q_EMIT HexDisabled();
    m_panes.setEnabled(false);
}

void ucHex::EnableHexControls() {
    m_panes.setEnabled(true);
    Q_EMIT HexEnabled();
}

CopyProgress ucHex::SetProgress() {
    PacedProgress progress(m_panes.parts().ProgressBar1);
    progress.show();
    return [progress](int percent) mutable {
        if (progress.isThere())
            progress.setValue(percent);
        yieldOnce();
        return progress.isThere();
    };
}

bool ucHex::OpenFile(const QString& pFileName) {
    return openAs(pFileName, {});
}

bool ucHex::bringBack(const QString& base, const Replay& replay) {
    return openAs(base, replay);
}

bool ucHex::openAs(const QString& path, const Replay& replay) {
    if (m_isBusy || m_scans.isRunning() || isEmptyFile(path))
        return false;
    finishNibble();
    const QPointer<ucHex> guard(this);
    const QWidget* inFocus = window()->focusWidget();
    const bool holdsFocus = inFocus == nullptr || isAncestorOf(inFocus);
    DisableHexControls();
    if (holdsFocus)
        setFocus();
    m_edits.clear();
    m_panes.paintMarks();
    m_isBusy = true;
    const bool loaded = LoadFile(path, replay);
    if (!guard)
        return false;
    setFree();
    if (!loaded)
        return false;
    FillGrid();
    EnableHexControls();
    for (const int number : {1, 2})
        m_panes.grid(number).Reset();
    m_panes.showCell({});
    // A user who chose another control while it loaded keeps that one.
    if (window()->focusWidget() == this)
        m_panes.pane(1)->setFocus();
    return true;
}

bool ucHex::LoadFile(const QString& pFileName, const Replay& replay) {
    const QPointer<ucHex> guard(this);
    m_fileOpen = false;
    if (m_observer != nullptr)
        m_observer->unloaded();
    const SystemError error = fillCopy(pFileName, replay);
    if (!guard)
        return false;
    PacedProgress(m_panes.parts().ProgressBar1).hide();
    if (error) {
        m_edits.clear();
        if (!replay)
            m_prompts.message(this, error.description);
        return false;
    }
    m_fileOpen = true;
    setHasUnmarked(false);
    m_panes.open(m_copy.length());
    m_panes.parts().bookmarks->clear();
    return true;
}

/// The edits are made before the view shows a byte, and nobody is notified of them.
SystemError ucHex::fillCopy(const QString& path, const Replay& replay) {
    const CopyProgress progress = SetProgress();
    SystemError error = m_copy.load(path, progress);
    if (error || !replay)
        return error;
    HexEditObserver* const observer = m_observer;
    setEditObserver(nullptr);
    YieldPace pace;
    HexReplay edits(m_edits, m_copy, [&] { return !pace.due() || progress(AllDone); });
    const bool isWanted = replay(edits);
    if (edits.error().number == ECANCELED)
        return edits.error();  // this object may be destroyed
    setEditObserver(observer);
    m_edits.setModified();
    return isWanted || edits.error() ? edits.error() : SystemError::fromErrno(EEXIST);
}

/// Otherwise the status bar says why not, until what is running has ended. A scan removes the text by itself.
bool ucHex::maySave() {
    if (m_scans.isRunning())
        Q_EMIT Notice(u"Not saved: a search, replacement or fill is running. Esc stops it."_qs);
    else if (m_isBusy)
        Q_EMIT Notice(u"Not saved: the file is still being read or written."_qs);
    m_wasRefused |= m_isBusy;
    return !m_isBusy && !m_scans.isRunning();
}

void ucHex::setFree() {
    m_isBusy = false;
    if (std::exchange(m_wasRefused, false))
        Q_EMIT Notice({});
}

QString ucHex::limitations() const {
    return m_fileOpen && m_hasUnmarked ? u"Save As writes what was replaced or filled."_qs : QString();
}

/// Replaced and filled bytes do not count as modified, so that a plain save may leave them out.
void ucHex::setHasUnmarked(bool hasUnmarked) {
    if (std::exchange(m_hasUnmarked, hasUnmarked) != hasUnmarked)
        Q_EMIT LimitationsChanged();
}

bool ucHex::SaveFile(const QString& pFileName, bool force) {
    m_wasWritten = false;
    if (!maySave())
        return false;
    if (!m_fileOpen)
        return true;
    finishNibble();
    return (!force && !Modified()) || writeOver(pFileName);
}

void ucHex::cmdSaveAs() {
    const QString target = m_saveAsName.left(m_saveAsName.indexOf(QChar(u'\0'))).trimmed();
    if (!m_fileOpen || target.isEmpty() || !maySave())
        return;
    finishNibble();
    writeOver(target);
}

/// What is typed, replaced or filled while it yields is not in the file.
bool ucHex::writeOver(const QString& target) {
    const QPointer<ucHex> guard(this);
    const bool hadUnmarked = std::exchange(m_hasUnmarked, false);
    BusyPointer::show();
    m_isBusy = true;
    m_edits.beginSave();
    const SystemError error = m_copy.save(target, SetProgress());
    BusyPointer::restore();
    if (!guard)
        return false;
    setFree();
    PacedProgress(m_panes.parts().ProgressBar1).finish();
    m_edits.endSave(!error);
    const bool hasUnmarked = m_hasUnmarked || (error && hadUnmarked);
    m_hasUnmarked = hadUnmarked;
    setHasUnmarked(hasUnmarked);
    if (error) {
        m_prompts.message(this, QString::number(error.number) + u'\n' + error.description);
        return false;
    }
    m_wasWritten = true;
    m_panes.paintMarks();
    m_panes.parts().ProgressBar1->hide();
    return true;
}
