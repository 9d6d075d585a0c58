// Loading a file into the view and saving it.

#include "hex/grid/GridPane.h"
#include "hex/grid/HexMarker.h"
#include "hex/ucHex.h"
#include "platform/FileReader.h"
#include "platform/Yield.h"
#include "widgets/BusyPointer.h"
#include "widgets/ClickLabel.h"
#include "widgets/Prompts.h"

#include <QPointer>
#include <QProgressBar>
#include <QScrollBar>

#include <utility>

namespace {

bool isEmptyFile(const QString& path) {
    FileReader reader;
    return !reader.open(path) && reader.size() == 0;
}

}  // namespace

void ucHex::setControlsEnabled(bool enabled) {
    for (const int number : {1, 2}) {
        pane(number)->setEnabled(enabled);
        pane(number)->setCursorShown(enabled);
    }
    m_parts.VScroll1->setEnabled(enabled && m_paging.scrolls());
    m_parts.setScrollButtonsEnabled(enabled);
    for (HexMarker* sign : m_parts.Sign)
        sign->setVisible(enabled);
    m_parts.lblSelect->setVisible(enabled);
}

void ucHex::DisableHexControls() {
    Q_EMIT HexDisabled();
    setControlsEnabled(false);
}

void ucHex::EnableHexControls() {
    setControlsEnabled(true);
    Q_EMIT HexEnabled();
}

CopyProgress ucHex::SetProgress() {
    return [guard = QPointer<ucHex>(this)](int percent) {
        if (guard)
            guard->m_parts.ProgressBar1->setValue(percent);
        yieldOnce();
        return !guard.isNull();
    };
}

bool ucHex::OpenFile(const QString& pFileName) {
    if (m_isBusy || isEmptyFile(pFileName))
        return false;
    finishNibble();
    const QPointer<ucHex> guard(this);
    const QWidget* inFocus = window()->focusWidget();
    const bool holdsFocus = inFocus == nullptr || isAncestorOf(inFocus);
    DisableHexControls();
    if (holdsFocus)
        setFocus();
    m_undoLog.clear();
    forgetChanges();
    m_modified = false;
    m_isBusy = true;
    const bool loaded = LoadFile(pFileName);
    if (!guard)
        return false;
    m_isBusy = false;
    if (!loaded)
        return false;
    FillGrid();
    EnableHexControls();
    m_grid1.Reset();
    m_grid2.Reset();
    showCell({});
    // Whoever has gone elsewhere while it loaded is not called back.
    if (window()->focusWidget() == this)
        m_parts.PicHex->setFocus();
    return true;
}

bool ucHex::LoadFile(const QString& pFileName) {
    const QPointer<ucHex> guard(this);
    m_fileOpen = false;
    m_parts.ProgressBar1->setValue(0);
    m_parts.ProgressBar1->show();
    const SystemError error = m_copy.load(pFileName, SetProgress());
    if (!guard)
        return false;
    m_parts.ProgressBar1->hide();
    if (error) {
        m_prompts.message(this, error.description);
        return false;
    }
    m_fileOpen = true;
    m_paging.open(m_copy.length());
    for (const int number : {1, 2})
        grid(number).setMax(m_copy.length());
    m_scrollSync = true;
    m_parts.VScroll1->setValue(0);
    m_scrollSync = false;
    m_parts.VScroll1->setEnabled(m_paging.scrolls());
    m_parts.info(HexInfo::FileSize)->setText(QString::number(m_copy.length()));
    m_parts.info(HexInfo::PageBytes)->setText(QString::number(HexPaging::PageBytes));
    m_parts.bookmarks->clear();
    return true;
}

bool ucHex::SaveFile(const QString& pFileName, bool force) {
    if (m_isBusy)
        return false;
    if (!m_fileOpen)
        return true;
    finishNibble();
    return (!force && !m_modified) || writeOver(pFileName);
}

void ucHex::cmdSaveAs() {
    const QString target = m_saveAsName.left(m_saveAsName.indexOf(QChar(u'\0'))).trimmed();
    if (m_isBusy || !m_fileOpen || target.isEmpty())
        return;
    finishNibble();
    writeOver(target);
}

bool ucHex::writeOver(const QString& target) {
    const QPointer<ucHex> guard(this);
    m_parts.ProgressBar1->setValue(0);
    m_parts.ProgressBar1->show();
    BusyPointer::show();
    m_isBusy = true;
    const bool wasModified = std::exchange(m_modified, false);  // what is typed from now on may miss the file
    const SystemError error = m_copy.save(target, SetProgress());
    BusyPointer::restore();
    if (!guard)
        return false;
    m_isBusy = false;
    if (error) {
        m_modified = m_modified || wasModified;
        m_prompts.message(this, QString::number(error.number) + u'\n' + error.description);
        return false;
    }
    if (!m_modified)
        forgetChanges();
    m_parts.ProgressBar1->hide();
    return true;
}
