#include "search/forms/frmSearching.h"

#include "search/forms/ProgressLabel.h"
#include "widgets/Icons.h"

#include <QHBoxLayout>
#include <QPushButton>
#include <QShowEvent>
#include <QVBoxLayout>

namespace {

constexpr int PictureSize = 32;

}  // namespace

frmSearching::frmSearching(QWidget* parent)
    : QDialog(parent, Qt::Dialog | Qt::CustomizeWindowHint | Qt::WindowTitleHint | Qt::WindowCloseButtonHint) {
    setObjectName(u"frmSearching"_qs);
    setWindowTitle(u"Searching"_qs);
    setModal(false);
    auto* frame = new QFrame(this);
    frame->setObjectName(u"Frame1"_qs);
    frame->setFrameStyle(QFrame::StyledPanel);
    auto* side = new QWidget(frame);
    side->setObjectName(u"Picture1"_qs);
    m_picture = new QLabel(side);
    m_picture->setObjectName(u"image1"_qs);
    m_picture->setFixedSize(PictureSize, PictureSize);
    auto* inSide = new QVBoxLayout(side);
    inSide->setContentsMargins({});
    inSide->addWidget(m_picture, 0, Qt::AlignTop);
    m_status = new ProgressLabel(frame);
    m_status->setObjectName(u"lbStatus"_qs);
    auto* inFrame = new QHBoxLayout(frame);
    inFrame->addWidget(side);
    inFrame->addWidget(m_status);

    auto* cancel = new QPushButton(u"Cancel"_qs, this);
    cancel->setObjectName(u"cmdCancel"_qs);
    cancel->setToolTip(u"Cancel the search (Esc)"_qs);
    cancel->setDefault(true);
    connect(cancel, &QPushButton::clicked, this, &frmSearching::reject);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(frame);
    layout->addWidget(cancel, 0, Qt::AlignRight);
    layout->setSizeConstraint(QLayout::SetFixedSize);
}

void frmSearching::setStatus(const QString& path, int searched, int found) {
    m_status->setText(u"Searching '"_qs + path + u"'\r\nTotal Files Searched : "_qs + QString::number(searched) +
                      u"\r\nTotal Files Found : "_qs + QString::number(found) + u"\r\n"_qs);
}

void frmSearching::done(int result) {
    Q_EMIT abortWanted();
    QDialog::done(result);
}

/// The status of the search before is cleared, and the picture drawn for the palette of today.
void frmSearching::showEvent(QShowEvent* event) {
    if (!event->spontaneous()) {
        m_status->clear();
        m_picture->setPixmap(Icons::named("search").pixmap(QSize(PictureSize, PictureSize), devicePixelRatioF()));
    }
    QDialog::showEvent(event);
}
