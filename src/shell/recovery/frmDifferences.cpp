#include "shell/recovery/frmDifferences.h"

#include "platform/BackgroundWork.h"
#include "widgets/Contrast.h"

#include <QDialogButtonBox>
#include <QEvent>
#include <QFontDatabase>
#include <QLabel>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTextBlockFormat>
#include <QTextCursor>
#include <QVBoxLayout>

#include <utility>

namespace {

constexpr QSize FirstSize(760, 480);
constexpr QColor RemovedGround(0xff, 0xdd, 0xdd);
constexpr QColor AddedGround(0xd8, 0xf5, 0xd8);

/// The look of a row: changed lines have a ground that fits the palette.
struct RowLook {
    QTextBlockFormat block;
    QTextCharFormat letters;
};

RowLook lookOf(DifferenceRow::Kind kind, const QPalette& palette) {
    RowLook look;
    const QColor base = palette.color(QPalette::Base);
    if (kind == DifferenceRow::Kind::Removed || kind == DifferenceRow::Kind::Added) {
        const QColor ground =
            Contrast::fittedTo(base, kind == DifferenceRow::Kind::Removed ? RemovedGround : AddedGround);
        look.block.setBackground(ground);
        look.letters.setForeground(Contrast::readableOn(ground, palette.color(QPalette::Text)));
    } else {
        look.letters.setForeground(palette.color(QPalette::Text));
    }
    return look;
}

}  // namespace

frmDifferences::frmDifferences(const QString& name, Work work, QWidget* parent)
    : QDialog(parent),
      m_found(std::make_shared<DifferencesFound>()),
      m_summary(new QLabel),
      m_list(new QPlainTextEdit) {
    setObjectName(u"frmDifferences"_qs);
    setWindowTitle(u"Differences - "_qs + name);
    setAttribute(Qt::WA_DeleteOnClose);
    layOut();
    m_work = std::make_unique<BackgroundWork>(
        [found = m_found, work = std::move(work)](const std::atomic<bool>& cancelled) { *found = work(cancelled); });
    connect(m_work.get(), &BackgroundWork::finished, this, &frmDifferences::showFound);
}

frmDifferences::~frmDifferences() = default;

void frmDifferences::layOut() {
    m_summary->setObjectName(u"lblSummary"_qs);
    m_summary->setText(u"Comparing..."_qs);
    m_summary->setTextFormat(Qt::PlainText);
    m_summary->setWordWrap(true);
    m_list->setObjectName(u"txtDifferences"_qs);
    m_list->setAccessibleName(u"Differences"_qs);
    m_list->setFont(QFontDatabase::systemFont(QFontDatabase::FixedFont));
    m_list->setReadOnly(true);
    m_list->setUndoRedoEnabled(false);
    m_list->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    m_list->setLineWrapMode(QPlainTextEdit::NoWrap);
    m_list->setTabChangesFocus(true);
    auto* buttons = new QDialogButtonBox;
    QPushButton* close = buttons->addButton(u"Close"_qs, QDialogButtonBox::RejectRole);
    close->setObjectName(u"cmdClose"_qs);
    close->setDefault(true);
    auto* rows = new QVBoxLayout(this);
    rows->addWidget(m_summary);
    rows->addWidget(m_list, 1);
    rows->addWidget(buttons);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::close);
    m_list->setFocus();
    resize(FirstSize);
}

void frmDifferences::showFound() {
    m_isComplete = true;
    m_summary->setText(m_found->summary);
    fillList();
}

void frmDifferences::fillList() {
    const DifferenceRows& rows = m_found->rows;
    m_list->clear();
    if (rows.rows.empty()) {
        m_list->setPlainText(m_found->text);
        return;
    }
    const int digits = rows.digits();
    QTextCursor cursor(m_list->document());
    cursor.beginEditBlock();
    for (const DifferenceRow& row : rows.rows) {
        const RowLook look = lookOf(row.kind, palette());
        if (&row == &rows.rows.front())
            cursor.setBlockFormat(look.block);
        else
            cursor.insertBlock(look.block);
        cursor.insertText(DifferenceRows::textOf(row, digits), look.letters);
    }
    cursor.endEditBlock();
    m_list->moveCursor(QTextCursor::Start);
}

void frmDifferences::changeEvent(QEvent* event) {
    QDialog::changeEvent(event);
    if (event->type() == QEvent::PaletteChange && m_isComplete)
        fillList();
}
