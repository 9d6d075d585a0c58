// Properties of the control that the text view hands on, and the colours of its elements.

#include "document/rtCM.h"
#include "editor/control/TextControl.h"

namespace {

constexpr QColor ActiveMargin(50, 50, 200);
constexpr QColor InactiveMargin(220, 220, 220);

}  // namespace

QString rtCM::TextRTF() const {
    return QString::fromLatin1(m_control->TextRTF());
}

QString rtCM::SelRTF() const {
    return QString::fromLatin1(m_control->SelRTF());
}

bool rtCM::setTextRTF(const QString& pRTF) {
    return m_control->setTextRTF(pRTF);
}

bool rtCM::setSelRTF(const QString& pRTF) {
    return m_control->setSelRTF(pRTF);
}

QList<QPixmap> rtCM::hImageList() const {
    return m_control->hImageList();
}

void rtCM::setHImageList(const QList<QPixmap>& images) {
    m_control->setHImageList(images);
}

WId rtCM::hwnd() const {
    return m_control->effectiveWinId();
}

bool rtCM::DisplayLeftMargin() const {
    return m_control->DisplayLeftMargin();
}

void rtCM::setDisplayLeftMargin(bool on) {
    m_control->setDisplayLeftMargin(on);
}

bool rtCM::DisplayWhitespace() const {
    return m_control->DisplayWhitespace();
}

void rtCM::setDisplayWhitespace(bool on) {
    m_control->setDisplayWhitespace(on);
}

bool rtCM::BraceMatching() const {
    return m_control->BraceMatching();
}

void rtCM::setBraceMatching(bool on) {
    m_control->setBraceMatching(on);
}

bool rtCM::VScrollVisible() const {
    return m_control->VScrollVisible();
}

void rtCM::setVScrollVisible(bool on) {
    m_control->setVScrollVisible(on);
}

bool rtCM::HScrollVisible() const {
    return m_control->HScrollVisible();
}

void rtCM::setHScrollVisible(bool on) {
    m_control->setHScrollVisible(on);
}

bool rtCM::DragDrop() const {
    return m_control->DragDrop();
}

void rtCM::setDragDrop(bool on) {
    m_control->setDragDrop(on);
}

qint64 rtCM::LineNumberStart() const {
    return m_control->LineNumberStart();
}

void rtCM::setLineNumberStart(qint64 number) {
    m_control->setLineNumberStart(number);
}

QColor rtCM::BackColor() const {
    return m_control->elementColour(TextControl::BackgroundElement);
}

void rtCM::setBackColor(const QColor& pColor) {
    m_control->setElementColour(TextControl::BackgroundElement, pColor);
}

void rtCM::SetLeftMarginColor(const QColor& pColor) {
    m_control->setElementColour(TextControl::LeftMarginElement, pColor);
}

void rtCM::SetActiveMargin(const QColor& pColor) {
    SetLeftMarginColor(pColor.isValid() ? pColor : ActiveMargin);
}

void rtCM::SetInactiveMargin() {
    SetLeftMarginColor(InactiveMargin);
}
