// A document's two modes: the switch between text and hex, and what is for the hex view alone.

#include "document/CloseStop.h"
#include "document/DocumentHost.h"
#include "document/HexJournal.h"
#include "document/HexView.h"
#include "document/frmDocument.h"
#include "document/frmSwitch.h"
#include "document/rtCM.h"
#include "hex/bytes/HexNeedle.h"
#include "hex/ucHex.h"
#include "platform/Yield.h"
#include "settings/Options.h"
#include "widgets/Prompts.h"

void frmDocument::connectHexView() {
    const ucHex* control = &m_hex->control();
    connect(control, &ucHex::DataChanged, this, &frmDocument::MarkChanged);
    connect(control, &ucHex::PositionChanged, this, [this] {
        Q_EMIT SelChange(this);
        Q_EMIT PositionChange(this);
    });
    connect(control, &ucHex::SearchDone, this, &frmDocument::reportHexSearch);
    connect(control, &ucHex::Notice, this, &frmDocument::Notice);
    connect(control, &ucHex::LimitationsChanged, this, [this] { Q_EMIT LimitationsChange(this); });
    connect(control, &ucHex::PropertiesRequest, this, &frmDocument::PropertiesRequest);
    connect(control, &ucHex::CalculatorRequest, this, &frmDocument::CalculatorRequest);
    connect(control, &ucHex::LanguageRequest, this, &frmDocument::LanguageRequest);
    connect(control, &ucHex::ContextMenuRequest, this,
            [this, control](int x, int y, const QString& key) { showMenu(key, control->mapToGlobal(QPoint(x, y))); });
}

/// A byte sequence has no case: the find bar keeps what it has.
void frmDocument::reportHexSearch(const QString& text, qint16 findType) {
    const auto type = static_cast<HexFindType>(findType);
    const bool caseSensitive = type == HexFindType::Bytes ? m_options.CaseSensitiveOn : type == HexFindType::ExactCase;
    Q_EMIT AfterFind(text, caseSensitive, m_options.RegExpOn, m_options.WholeWord);
}

bool frmDocument::TextEdit() const {
    return !m_text->isHidden();
}

void frmDocument::setTextEdit(bool text) {
    SwitchMode(text);
}

/// No content is passed from view to view: the file is loaded again into the one that becomes visible. While the
/// document loads, saves or searches it stays in its mode.
void frmDocument::SwitchMode(bool New_Mode) {
    if (m_loads > 0)
        return;
    const QPointer<frmDocument> alive(this);
    const CloseStop stop(*this, m_loads);
    m_hex->finishTyping();
    if (viewFor(!New_Mode).isModified() && !settleChanges(New_Mode))
        return;
    if (!alive)
        return;
    bringUp(viewFor(New_Mode));
    viewFor(New_Mode).viewWidget()->setFocus();
    if (!New_Mode)
        yieldOnce();
    if (alive && !filename.isEmpty())
        OpenFile(filename, isReadOnly, false, New_Mode);
    if (alive)
        m_leavesChanges = false;
}

/// False: the switch is cancelled. The result of a save that was chosen is ignored.
bool frmDocument::settleChanges(bool toText) {
    const QPointer<frmDocument> alive(this);
    const QPointer<frmSwitch> form(new frmSwitch(toText, window()));
    form->exec();
    const bool goesOn = form && form->Result;
    const bool saves = goesOn && form->savesFirst();
    delete form;
    if (saves && alive)
        gParent->SaveDocument(this, true, SaveFormats::AsLoaded);
    if (alive)
        m_leavesChanges = saves && viewFor(!toText).isModified();
    return goesOn;
}

// The journal of the bytes

/// A load into one view gives up the changes of both.
void frmDocument::keepBytes(const DocumentView& loaded, const std::optional<FileState>& state) {
    if (&loaded == m_hex.get())
        m_hexJournal->begin(filename, state);
    else
        dropChanges(true);
}

// The hex view's, in hex mode alone

void frmDocument::inHexMode(void (ucHex::*operation)()) {
    if (!TextEdit())
        (m_hex->control().*operation)();
}

void frmDocument::SelectBlock() {
    inHexMode(&ucHex::SelectBlock);
}

void frmDocument::GotoPage() {
    inHexMode(&ucHex::cmdGoPage);
}

void frmDocument::GotoOffset() {
    inHexMode(&ucHex::cmdGoOffset);
}

void frmDocument::DeleteBookmark() {
    inHexMode(&ucHex::DeleteBookmark);
}
