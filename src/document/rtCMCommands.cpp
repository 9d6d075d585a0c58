// The commands that the text view has its control carry out.

#include "document/EditorGlobals.h"
#include "document/rtCM.h"
#include "editor/control/CommandNumbers.h"
#include "editor/control/TextControl.h"

void rtCM::ToUppercase() {
    m_control->ExecuteCmd(Command::WordToUpper);
}

void rtCM::ToLowercase() {
    m_control->ExecuteCmd(Command::WordToLower);
}

void rtCM::ToCapitalize() {
    m_control->ExecuteCmd(Command::CapitalizeWord);
}

void rtCM::ToUppercaseSel() {
    m_control->ExecuteCmd(Command::SelectionToUpper);
}

void rtCM::ToLowercaseSel() {
    m_control->ExecuteCmd(Command::SelectionToLower);
}

void rtCM::LineDeleteToStart() {
    m_control->ExecuteCmd(Command::DeleteToStartOfLine);
}

void rtCM::LineDeleteToEnd() {
    m_control->ExecuteCmd(Command::DeleteToEndOfLine);
}

void rtCM::LineDelete() {
    m_control->ExecuteCmd(Command::DeleteLine);
}

void rtCM::LineCut() {
    m_control->ExecuteCmd(Command::CutLine);
}

void rtCM::SelectPara() {
    m_control->ExecuteCmd(Command::SelectParagraph);
}

void rtCM::SelectLine() {
    m_control->ExecuteCmd(Command::SelectLine);
}

void rtCM::SelectAll() {
    m_control->ExecuteCmd(Command::SelectAll);
}

void rtCM::SelectWord() {
    m_control->ExecuteCmd(Command::SelectWord);
}

void rtCM::Indent() {
    m_control->ExecuteCmd(Command::Indent);
}

void rtCM::Unindent() {
    m_control->ExecuteCmd(Command::Unindent);
}

void rtCM::SortLineAscending() {
    m_control->ExecuteCmd(Command::SortLinesAscending);
}

void rtCM::SortLineDescending() {
    m_control->ExecuteCmd(Command::SortLinesDescending);
}

void rtCM::SetRepeatCount() {
    m_control->ExecuteCmd(Command::SetRepeatCount);
}

int rtCM::repeatCount() const {
    return m_control->repeatCount();
}

void rtCM::Undo() {
    m_control->ExecuteCmd(TextControl::SCI_UNDO);
}

void rtCM::Redo() {
    m_control->ExecuteCmd(TextControl::SCI_REDO);
}

void rtCM::Cut() {
    m_control->ExecuteCmd(TextControl::SCI_CUT);
}

void rtCM::Copy() {
    m_control->ExecuteCmd(TextControl::SCI_COPY);
}

void rtCM::Paste() {
    m_control->ExecuteCmd(TextControl::SCI_PASTE);
}

void rtCM::RecordMacro() {
    m_control->ExecuteCmd(Command::RecordMacro);
}

void rtCM::finishRecording() {
    m_globals.control.finishRecording(*m_control);
}

void rtCM::Properties() {
    m_control->ExecuteCmd(Command::Properties);
}

void rtCM::ExecMacro(int n) {
    if (n >= 1 && n <= Command::Macros)
        m_control->ExecuteCmd(Command::MacroBase + n);
}

void rtCM::GotoLine() {
    m_control->ExecuteCmd(Command::GoToLine);
}

void rtCM::PrintContent(const QString& pName) {
    m_globals.printing.PrintContent(*m_control, pName);
}

void rtCM::PrintSetup() {
    m_globals.printing.PrintSetup(this);
}
