#include "shell/outside/SystemInformationDialog.h"

#include <QClipboard>
#include <QDialogButtonBox>
#include <QFontDatabase>
#include <QGuiApplication>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QScreen>
#include <QScrollBar>
#include <QVBoxLayout>

SystemInformationDialog::SystemInformationDialog(const QString& text, QWidget* parent)
    : QDialog(parent), m_text(new QPlainTextEdit(text)) {
    setObjectName(u"SystemInformationDialog"_qs);
    setWindowTitle(u"System Information"_qs);
    m_text->setObjectName(u"txtInformation"_qs);
    m_text->setAccessibleName(u"System information"_qs);
    m_text->setFont(QFontDatabase::systemFont(QFontDatabase::FixedFont));
    m_text->setReadOnly(true);
    m_text->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    m_text->setLineWrapMode(QPlainTextEdit::NoWrap);
    m_text->setTabChangesFocus(true);
    auto* buttons = new QDialogButtonBox;
    QPushButton* close = buttons->addButton(u"Close"_qs, QDialogButtonBox::RejectRole);
    close->setObjectName(u"cmdClose"_qs);
    close->setDefault(true);
    QPushButton* copy = buttons->addButton(u"&Copy All"_qs, QDialogButtonBox::ActionRole);
    copy->setObjectName(u"cmdCopy"_qs);
    copy->setAutoDefault(false);
    auto* rows = new QVBoxLayout(this);
    rows->addWidget(m_text);
    rows->addWidget(buttons);
    connect(copy, &QPushButton::clicked, this, &SystemInformationDialog::copyAll);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    m_text->setFocus();
    resize(sizeOfText());
}

void SystemInformationDialog::copyAll() {
    QGuiApplication::clipboard()->setText(m_text->toPlainText());
}

/// That at which the whole text is seen, if it stays well inside the screen.
QSize SystemInformationDialog::sizeOfText() const {
    const QString text = m_text->toPlainText();
    const QFontMetrics metrics(m_text->font());
    const int bar = m_text->verticalScrollBar()->sizeHint().width();
    const QSize letters = metrics.size(Qt::TextExpandTabs, text);
    const int buttonRow = layout()->itemAt(1)->sizeHint().height();
    const QMargins margins = layout()->contentsMargins();
    const QSize wanted(letters.width() + 3 * bar + margins.left() + margins.right(),
                       letters.height() + buttonRow + 3 * bar + margins.top() + margins.bottom());
    return wanted.boundedTo(screen()->availableSize() * 9 / 10);
}
