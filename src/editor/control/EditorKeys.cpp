#include "editor/control/EditorKeys.h"

#include "editor/control/CommandNumbers.h"

#include <QKeyEvent>
#include <Qsci/qsciscintillabase.h>

#include <algorithm>
#include <array>

namespace {

using Sci = QsciScintillaBase;

constexpr int Shift = Qt::ShiftModifier;
constexpr int Ctrl = Qt::ControlModifier;
constexpr int Alt = Qt::AltModifier;

constexpr auto Keys = std::to_array<EditorKeys::Row>({
    {Qt::Key_Left, 0, Sci::SCI_CHARLEFT},
    {Qt::Key_Left, Shift, Sci::SCI_CHARLEFTEXTEND},
    {Qt::Key_Left, Ctrl, Sci::SCI_WORDLEFT},
    {Qt::Key_Left, Ctrl | Shift, Sci::SCI_WORDLEFTEXTEND},
    {Qt::Key_Left, Alt | Shift, Sci::SCI_CHARLEFTRECTEXTEND},
    {Qt::Key_Right, 0, Sci::SCI_CHARRIGHT},
    {Qt::Key_Right, Shift, Sci::SCI_CHARRIGHTEXTEND},
    {Qt::Key_Right, Ctrl, Sci::SCI_WORDRIGHT},
    {Qt::Key_Right, Ctrl | Shift, Sci::SCI_WORDRIGHTEXTEND},
    {Qt::Key_Right, Alt | Shift, Sci::SCI_CHARRIGHTRECTEXTEND},
    {Qt::Key_Up, 0, Sci::SCI_LINEUP},
    {Qt::Key_Up, Shift, Sci::SCI_LINEUPEXTEND},
    {Qt::Key_Up, Ctrl, Sci::SCI_LINESCROLLUP},
    {Qt::Key_Up, Alt | Shift, Sci::SCI_LINEUPRECTEXTEND},
    {Qt::Key_Down, 0, Sci::SCI_LINEDOWN},
    {Qt::Key_Down, Shift, Sci::SCI_LINEDOWNEXTEND},
    {Qt::Key_Down, Ctrl, Sci::SCI_LINESCROLLDOWN},
    {Qt::Key_Down, Alt | Shift, Sci::SCI_LINEDOWNRECTEXTEND},
    {Qt::Key_PageUp, 0, Sci::SCI_PAGEUP},
    {Qt::Key_PageUp, Shift, Sci::SCI_PAGEUPEXTEND},
    {Qt::Key_PageUp, Alt | Shift, Sci::SCI_PAGEUPRECTEXTEND},
    {Qt::Key_PageDown, 0, Sci::SCI_PAGEDOWN},
    {Qt::Key_PageDown, Shift, Sci::SCI_PAGEDOWNEXTEND},
    {Qt::Key_PageDown, Alt | Shift, Sci::SCI_PAGEDOWNRECTEXTEND},
    {Qt::Key_Home, 0, Sci::SCI_VCHOME},
    {Qt::Key_Home, Shift, Sci::SCI_VCHOMEEXTEND},
    {Qt::Key_Home, Ctrl, Sci::SCI_DOCUMENTSTART},
    {Qt::Key_Home, Ctrl | Shift, Sci::SCI_DOCUMENTSTARTEXTEND},
    {Qt::Key_Home, Alt | Shift, Sci::SCI_VCHOMERECTEXTEND},
    {Qt::Key_End, 0, Sci::SCI_LINEEND},
    {Qt::Key_End, Shift, Sci::SCI_LINEENDEXTEND},
    {Qt::Key_End, Ctrl, Sci::SCI_DOCUMENTEND},
    {Qt::Key_End, Ctrl | Shift, Sci::SCI_DOCUMENTENDEXTEND},
    {Qt::Key_End, Alt | Shift, Sci::SCI_LINEENDRECTEXTEND},
    {Qt::Key_Delete, 0, Sci::SCI_CLEAR},
    {Qt::Key_Delete, Shift, Sci::SCI_CUT},
    {Qt::Key_Delete, Ctrl, Sci::SCI_DELWORDRIGHT},
    {Qt::Key_Delete, Ctrl | Shift, Command::DeleteToEndOfLine},
    {Qt::Key_Backspace, 0, Sci::SCI_DELETEBACK},
    {Qt::Key_Backspace, Shift, Sci::SCI_DELETEBACK},
    {Qt::Key_Backspace, Ctrl, Sci::SCI_DELWORDLEFT},
    {Qt::Key_Backspace, Ctrl | Shift, Command::DeleteToStartOfLine},
    {Qt::Key_Backspace, Alt, Sci::SCI_UNDO},
    {Qt::Key_Insert, 0, Sci::SCI_EDITTOGGLEOVERTYPE},
    {Qt::Key_Insert, Shift, Sci::SCI_PASTE},
    {Qt::Key_Insert, Ctrl, Sci::SCI_COPY},
    {Qt::Key_Return, 0, Sci::SCI_NEWLINE},
    {Qt::Key_Return, Shift, Sci::SCI_NEWLINE},
    {Qt::Key_Enter, 0, Sci::SCI_NEWLINE},
    {Qt::Key_Tab, 0, Sci::SCI_TAB},
    {Qt::Key_Backtab, Shift, Sci::SCI_BACKTAB},
    {Qt::Key_Backtab, 0, Sci::SCI_BACKTAB},
    {Qt::Key_Escape, 0, Sci::SCI_CANCEL},
    {Qt::Key_Z, Ctrl, Sci::SCI_UNDO},
    {Qt::Key_Z, Ctrl | Shift, Sci::SCI_REDO},
    {Qt::Key_Y, Ctrl, Sci::SCI_REDO},
    {Qt::Key_X, Ctrl, Sci::SCI_CUT},
    {Qt::Key_C, Ctrl, Sci::SCI_COPY},
    {Qt::Key_V, Ctrl, Sci::SCI_PASTE},
    {Qt::Key_A, Ctrl, Command::SelectAll},
    {Qt::Key_Plus, Ctrl, Sci::SCI_ZOOMIN},
    {Qt::Key_Plus, Ctrl | Shift, Sci::SCI_ZOOMIN},
    {Qt::Key_Equal, Ctrl, Sci::SCI_ZOOMIN},
    {Qt::Key_Minus, Ctrl, Sci::SCI_ZOOMOUT},
    {Qt::Key_0, Ctrl, Sci::SCI_SETZOOM},
});

}  // namespace

std::span<const EditorKeys::Row> EditorKeys::all() {
    return Keys;
}

int EditorKeys::commandFor(const QKeyEvent& key) {
    const int Modifiers = static_cast<int>(key.modifiers() & ~Qt::KeypadModifier);
    const auto row = std::find_if(Keys.begin(), Keys.end(), [&](const Row& candidate) {
        return candidate.key == key.key() && candidate.modifiers == Modifiers;
    });
    return row == Keys.end() ? 0 : row->command;
}

bool EditorKeys::isModifier(const QKeyEvent& key) {
    constexpr auto Modifiers =
        std::to_array<int>({Qt::Key_Shift, Qt::Key_Control, Qt::Key_Alt, Qt::Key_AltGr, Qt::Key_Meta, Qt::Key_Super_L,
                            Qt::Key_Super_R, Qt::Key_Mode_switch});
    return std::ranges::find(Modifiers, key.key()) != Modifiers.end();
}

bool EditorKeys::typesText(const QKeyEvent& key) {
    const Qt::KeyboardModifiers held = key.modifiers();
    const bool ctrl = held.testFlag(Qt::ControlModifier);
    const bool alt = held.testFlag(Qt::AltModifier);
    if (ctrl != alt || held.testFlag(Qt::MetaModifier))
        return false;
    const QString text = key.text();
    return !text.isEmpty() && (text.front().isPrint() || text.front().isSurrogate());
}
