#include "editor/print/PrintWindow.h"

#include "platform/Yield.h"

#include <QLabel>
#include <QPointer>
#include <QProgressBar>
#include <QPushButton>
#include <QVBoxLayout>

namespace {

constexpr int BarWidth = 320;  // logical pixels

}  // namespace

PrintWindow::PrintWindow(const QString& name, QWidget* parent, qint64 delayMilliseconds)
    : QDialog(parent), m_status(new QLabel(this)), m_bar(new QProgressBar(this)), m_delay(delayMilliseconds) {
    setObjectName(u"frmPrinting"_qs);
    setWindowTitle(tr("Printing"));
    setModal(true);
    auto* title = new QLabel(this);
    title->setTextFormat(Qt::PlainText);
    title->setText(title->fontMetrics().elidedText(name, Qt::ElideMiddle, BarWidth));
    m_status->setObjectName(u"lbStatus"_qs);
    m_bar->setObjectName(u"barProgress"_qs);
    m_bar->setAccessibleName(tr("Progress of the print"));
    m_bar->setMinimumWidth(BarWidth);
    auto* cancel = new QPushButton(tr("Cancel"), this);
    cancel->setObjectName(u"cmdCancel"_qs);
    cancel->setToolTip(tr("Cancel the print (Esc)"));
    cancel->setDefault(true);
    connect(cancel, &QPushButton::clicked, this, &QDialog::reject);
    auto* all = new QVBoxLayout(this);
    all->addWidget(title);
    all->addWidget(m_status);
    all->addWidget(m_bar);
    all->addWidget(cancel, 0, Qt::AlignRight);
    all->setSizeConstraint(QLayout::SetFixedSize);
    m_since.start();
}

bool PrintWindow::report(const PrintProgress& progress) {
    if (m_cancelled || m_since.elapsed() < m_delay || (isVisible() && !m_pace.due()))
        return !m_cancelled;
    m_status->setText(progress.page == 0 ? tr("Counting the pages")
                                         : tr("Page %1 of %2").arg(progress.page).arg(progress.pages));
    m_bar->setValue(progress.percent);
    if (!isVisible())
        setVisible(true);
    const QPointer<PrintWindow> alive(this);
    yieldOnce();
    return alive && !m_cancelled;
}

void PrintWindow::done(int result) {
    m_cancelled = true;
    QDialog::done(result);
}
