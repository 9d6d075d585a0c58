// Properties of the control that the text view passes on, and the colours of its elements.

#include "document/rtCM.h"
#include "editor/control/ControlBraces.h"
#include "editor/control/ControlLineNumbers.h"
#include "editor/control/ControlLook.h"
#include "editor/control/ControlMouse.h"
#include "editor/control/RichText.h"
#include "editor/control/TextControl.h"

namespace {

constexpr QColor ActiveMargin(50, 50, 200);
constexpr QColor InactiveMargin(220, 220, 220);

}  // namespace

QString rtCM::TextRTF() const {
    return QString::fromLatin1(RichText::ofText(*m_control));
}

QString rtCM::SelRTF() const {
    return QString::fromLatin1(RichText::ofSelection(*m_control));
}

bool rtCM::setTextRTF(const QString& pRTF) {
    return RichText::setText(*m_control, pRTF);
}

bool rtCM::setSelRTF(const QString& pRTF) {
    return RichText::setSelection(*m_control, pRTF);
}

QList<QPixmap> rtCM::hImageList() const {
    return m_control->look().hImageList();
}

void rtCM::setHImageList(const QList<QPixmap>& images) {
    m_control->look().setHImageList(images);
}

WId rtCM::hwnd() const {
    return m_control->effectiveWinId();
}

bool rtCM::DisplayLeftMargin() const {
    return m_control->look().DisplayLeftMargin();
}

void rtCM::setDisplayLeftMargin(bool on) {
    m_control->look().setDisplayLeftMargin(on);
}

bool rtCM::DisplayWhitespace() const {
    return m_control->look().DisplayWhitespace();
}

void rtCM::setDisplayWhitespace(bool on) {
    m_control->look().setDisplayWhitespace(on);
}

bool rtCM::BraceMatching() const {
    return m_control->braces().BraceMatching();
}

void rtCM::setBraceMatching(bool on) {
    m_control->braces().setBraceMatching(on);
}

bool rtCM::VScrollVisible() const {
    return m_control->look().VScrollVisible();
}

void rtCM::setVScrollVisible(bool on) {
    m_control->look().setVScrollVisible(on);
}

bool rtCM::HScrollVisible() const {
    return m_control->look().HScrollVisible();
}

void rtCM::setHScrollVisible(bool on) {
    m_control->look().setHScrollVisible(on);
}

bool rtCM::DragDrop() const {
    return m_control->mouse().DragDrop();
}

void rtCM::setDragDrop(bool on) {
    m_control->mouse().setDragDrop(on);
}

qint64 rtCM::LineNumberStart() const {
    return m_control->lineNumbers().LineNumberStart();
}

void rtCM::setLineNumberStart(qint64 number) {
    m_control->lineNumbers().setLineNumberStart(number);
}

QColor rtCM::BackColor() const {
    return m_control->look().elementColour(ControlLook::BackgroundElement);
}

void rtCM::setBackColor(const QColor& pColor) {
    m_control->look().setElementColour(ControlLook::BackgroundElement, pColor);
}

void rtCM::SetLeftMarginColor(const QColor& pColor) {
    m_control->look().setElementColour(ControlLook::LeftMarginElement, pColor);
}

void rtCM::SetActiveMargin(const QColor& pColor) {
    SetLeftMarginColor(pColor.isValid() ? pColor : ActiveMargin);
}

void rtCM::SetInactiveMargin() {
    SetLeftMarginColor(InactiveMargin);
}
