// Blocks of bytes: copied as text, filled with a byte.

#include "hex/bytes/BlockExport.h"
#include "hex/bytes/HexBlock.h"
#include "hex/ucHex.h"
#include "widgets/BusyPointer.h"
#include "widgets/Prompts.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QPointer>

#include <cerrno>

namespace {

/// Its text is a dozen times as long in memory.
constexpr qint64 MostCopied = 256 * 1024 * 1024;

}  // namespace

void ucHex::copyBlock(Offset one, Offset other, BlockForm form) {
    finishNibble();
    const std::optional<HexBlock> block = HexBlock::between(one, other, m_copy.length());
    if (block && block->size() > MostCopied) {
        m_prompts.message(this, SystemError::fromErrno(ENOMEM).description);
        return;
    }
    if (!block || !m_fileOpen)
        return;
    const std::optional<QByteArray> bytes = block->bytesIn(m_copy);
    if (!bytes) {
        m_prompts.message(this, SystemError::fromErrno(EIO).description);
        return;
    }
    BusyPointer::show();
    QGuiApplication::clipboard()->setText(blockText(*bytes, form));
    FillGrid();
    BusyPointer::restore();
}

void ucHex::fillBlock(Offset one, Offset other, quint8 byte) {
    finishNibble();
    const std::optional<HexBlock> block = HexBlock::between(one, other, m_copy.length());
    if (!block || !m_fileOpen || m_locked || m_scans.isRunning())
        return;
    const QPointer<ucHex> guard(this);
    BusyPointer::show();
    const SystemError error = m_scans.fill(*block, byte);
    BusyPointer::restore();
    if (!guard)
        return;
    FillGrid();
    setHasUnmarked(true);
    if (error)
        m_prompts.message(this, error.description);
}
