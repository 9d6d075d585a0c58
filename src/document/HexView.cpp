#include "document/HexView.h"

#include "document/DocumentServices.h"
#include "hex/HexNeedle.h"
#include "hex/ucHex.h"

HexView::HexView(const DocumentServices& services, QWidget* parent)
    : m_control(new ucHex(services.prompts, services.options, services.hexFind, parent)) {
    m_control->setObjectName(QStringLiteral("ucHex1"));
}

void HexView::finishTyping() {
    m_control->finishNibble();
}

QWidget* HexView::viewWidget() {
    return m_control;
}

bool HexView::load(const QString& path) {
    return m_control->OpenFile(path);
}

bool HexView::save(const QString& path, int, bool force) {
    return m_control->SaveFile(path, force);
}

bool HexView::isModified() const {
    return m_control->FileOpen() && m_control->Modified();
}

bool HexView::Locked() const {
    return m_control->Locked();
}

void HexView::setLocked(bool locked) {
    finishTyping();
    m_control->setLocked(locked);
}

void HexView::Undo() {
    m_control->cmdUndo();
}

void HexView::Copy() {
    m_control->cmdCopy();
}

void HexView::Find() {
    m_control->FindDialog();
}

void HexView::ReplaceText() {
    m_control->ReplaceDialog();
}

bool HexView::FindNext(const QString& text) {
    return m_control->FindNextStr(text);
}

bool HexView::FindPrev(const QString& text) {
    return m_control->FindPrevStr(text);
}

bool HexView::FindText(const QString& text, bool, bool caseSensitive, bool) {
    constexpr int textPane = 2;
    const HexFindType byCase = caseSensitive ? HexFindType::ExactCase : HexFindType::AnyCase;
    const HexFindType type = m_control->ActiveGrid() == textPane ? byCase : HexFindType::Bytes;
    return m_control->FindDown(text, static_cast<qint16>(type)) >= 0;
}

void HexView::ToggleBookmark() {
    m_control->cmdBookmark();
}

void HexView::NextBookmark() {
    m_control->cmdNextBookmark();
}

void HexView::PrevBookmark() {
    m_control->cmdPreviousBookmark();
}

void HexView::BookmarkFirst() {
    m_control->cmdFirstBookmark();
}

void HexView::BookmarkLast() {
    m_control->cmdLastBookmark();
}

void HexView::ClearAllBookmark() {
    m_control->cmdClearBookmark();
}

QString HexView::GetCursorPos() const {
    return m_control->FileOpen() ? m_control->GetCursorPos() : QString();
}
