// What the menus call on a document, by the view and mode it is for.

#include "document/CloseStop.h"
#include "document/ContextMenus.h"
#include "document/DocumentHost.h"
#include "document/DocumentView.h"
#include "document/frmCountAll.h"
#include "document/frmDocument.h"
#include "document/rtCM.h"
#include "text/lines/LineOperations.h"
#include "widgets/Prompts.h"

#include <QPointer>

#include <algorithm>
#include <exception>

// The document's context menus

void frmDocument::makeMenus() {
    m_menus = new ContextMenus(*this);
}

void frmDocument::showMenu(const QString& key, const QPoint& globalPosition) {
    m_menus->show(key, globalPosition);
}

// The visible view's

void frmDocument::Undo() {
    visibleView().Undo();
}

void frmDocument::Redo() {
    visibleView().Redo();
}

void frmDocument::Cut() {
    visibleView().Cut();
}

void frmDocument::Copy() {
    visibleView().Copy();
}

void frmDocument::Paste() {
    visibleView().Paste();
}

// The text view's, in both modes: in hex mode it is hidden and the effect is not visible

void frmDocument::SelectAll() {
    m_text->SelectAll();
}

void frmDocument::SelectLine() {
    m_text->SelectLine();
}

void frmDocument::SelectWord() {
    m_text->SelectWord();
}

void frmDocument::SelectPara() {
    m_text->SelectPara();
}

void frmDocument::ToUppercaseSel() {
    m_text->ToUppercaseSel();
}

void frmDocument::ToLowercaseSel() {
    m_text->ToLowercaseSel();
}

void frmDocument::ToUppercase() {
    m_text->ToUppercase();
}

void frmDocument::ToLowercase() {
    m_text->ToLowercase();
}

void frmDocument::ToCapitalize() {
    m_text->ToCapitalize();
}

void frmDocument::Indent() {
    m_text->Indent();
}

void frmDocument::Unindent() {
    m_text->Unindent();
}

void frmDocument::TabsToSpaces() {
    m_text->TabsToSpaces();
}

void frmDocument::SpacesToTabs() {
    m_text->SpacesToTabs();
}

void frmDocument::SetRepeatCount() {
    m_text->SetRepeatCount();
}

void frmDocument::GotoLine() {
    m_text->GotoLine();
}

void frmDocument::Properties() {
    m_text->Properties();
}

void frmDocument::RecordMarco() {
    m_text->RecordMacro();
}

QString frmDocument::GetLang() const {
    return m_text->GetLang();
}

void frmDocument::SetLang(const QString& pLang) {
    m_text->SetLang(pLang);
    gParent->CheckLangMenu(this);
}

bool frmDocument::LineNumbering() const {
    return m_text->LineNumbering();
}

void frmDocument::setLineNumbering(bool on) {
    m_text->setLineNumbering(on);
}

bool frmDocument::DisplayLeftMargin() const {
    return m_text->DisplayLeftMargin();
}

void frmDocument::setDisplayLeftMargin(bool on) {
    m_text->setDisplayLeftMargin(on);
}

bool frmDocument::DisplayWhitespace() const {
    return m_text->DisplayWhitespace();
}

void frmDocument::setDisplayWhitespace(bool on) {
    m_text->setDisplayWhitespace(on);
}

bool frmDocument::BraceMatching() const {
    return m_text->BraceMatching();
}

void frmDocument::setBraceMatching(bool on) {
    m_text->setBraceMatching(on);
}

bool frmDocument::RowHighlight() const {
    return m_text->gMyHighlight;
}

void frmDocument::setRowHighlight(bool on) {
    m_text->gMyHighlight = on;
    m_text->HighLightLine();
}

// The text view's, in text mode alone

void frmDocument::inTextMode(void (rtCM::*operation)()) {
    if (TextEdit())
        (m_text->*operation)();
}

void frmDocument::LineDeleteToStart() {
    inTextMode(&rtCM::LineDeleteToStart);
}

void frmDocument::LineDeleteToEnd() {
    inTextMode(&rtCM::LineDeleteToEnd);
}

void frmDocument::IncreaseFontSize() {
    inTextMode(&rtCM::IncreaseFontSize);
}

void frmDocument::DecreaseFontSize() {
    inTextMode(&rtCM::DecreaseFontSize);
}

void frmDocument::DefaultFontSize() {
    inTextMode(&rtCM::DefaultFontSize);
}

void frmDocument::ExecMacro(int n) {
    if (TextEdit())
        m_text->ExecMacro(n);
}

// Lines of the text view, in text mode alone

/// Inserted or moved lines would keep the highlight they had.
void frmDocument::refreshLines(qint64 beyondLast) {
    qint64 first = 0;
    qint64 last = 0;
    m_text->GetSelStartEnd(first, last);
    for (qint64 line = std::min(first, last); line <= std::max(first, last) + beyondLast; ++line)
        m_text->UnHighLightLine(line);
    m_text->HighLightLine();
}

void frmDocument::RefreshLineColours() {
    refreshLines(1);
}

void frmDocument::changeLinesBy(void (rtCM::*operation)()) {
    if (!TextEdit())
        return;
    (m_text->*operation)();
    RefreshLineColours();
}

void frmDocument::LineCut() {
    changeLinesBy(&rtCM::LineCut);
}

void frmDocument::LineDelete() {
    changeLinesBy(&rtCM::LineDelete);
}

void frmDocument::SortLineAscending() {
    changeLinesBy(&rtCM::SortLineAscending);
}

void frmDocument::SortLineDescending() {
    changeLinesBy(&rtCM::SortLineDescending);
}

void frmDocument::changeLines(QString (*operation)(const QString& text)) {
    if (!TextEdit())
        return;
    try {
        m_text->changeSelected(operation);
        refreshLines(0);
    } catch (const std::exception&) {
        // Ends without a message, with the text unchanged: lines that would become too long for memory.
    }
}

void frmDocument::TrimTailed() {
    changeLines(&LineOperations::TrimTailed);
}

void frmDocument::AlignLeft() {
    changeLines(&LineOperations::AlignLeft);
}

void frmDocument::AlignRight() {
    changeLines(&LineOperations::AlignRight);
}

void frmDocument::AlignCenter() {
    changeLines(&LineOperations::AlignCenter);
}

void frmDocument::CountAll() {
    if (!TextEdit())
        return;
    const CountedText total{m_text->TotalWords(), m_text->TotalLines(), m_text->TotalChars(),
                            m_text->TotalCharsNoSpace()};
    const CountedText selected{m_text->SelTotalWords(), m_text->SelTotalLines(), m_text->SelTotalChars(),
                               m_text->SelTotalCharsNoSpace()};
    // The frame below it may close meanwhile and destroy it.
    const QPointer<frmCountAll> box(new frmCountAll(window()));
    box->setCounts(total, selected);
    box->exec();
    delete box;
}

void frmDocument::PrintContent() {
    if (!TextEdit()) {
        m_prompts.message(this, u"Printing is not allowed in Hex mode."_qs);
        return;
    }
    const CloseStop stop(*this, m_loads);
    m_text->PrintContent(filename.isEmpty() ? Caption() : filename);
}

void frmDocument::PrintSetup() {
    m_text->PrintSetup();
}
