// What the text view has its control do.

#include "document/rtCM.h"
#include "editor/control/TextControl.h"

namespace {

constexpr int GotoLineCommand = 192;
constexpr int FirstMacro = 214;
constexpr int MacroCount = 10;

}  // namespace

void rtCM::ToUppercase() {
    m_control->ExecuteCmd(100);
}

void rtCM::ToLowercase() {
    m_control->ExecuteCmd(106);
}

void rtCM::ToCapitalize() {
    m_control->ExecuteCmd(113);
}

void rtCM::ToUppercaseSel() {
    m_control->ExecuteCmd(125);
}

void rtCM::ToLowercaseSel() {
    m_control->ExecuteCmd(147);
}

void rtCM::LineDeleteToStart() {
    m_control->ExecuteCmd(158);
}

void rtCM::LineDeleteToEnd() {
    m_control->ExecuteCmd(159);
}

void rtCM::LineDelete() {
    m_control->ExecuteCmd(160);
}

void rtCM::LineCut() {
    m_control->ExecuteCmd(161);
}

void rtCM::SelectPara() {
    m_control->ExecuteCmd(135);
}

void rtCM::SelectLine() {
    m_control->ExecuteCmd(136);
}

void rtCM::SelectAll() {
    m_control->ExecuteCmd(137);
}

void rtCM::SelectWord() {
    m_control->ExecuteCmd(267);
}

void rtCM::Indent() {
    m_control->ExecuteCmd(163);
}

void rtCM::Unindent() {
    m_control->ExecuteCmd(127);
}

void rtCM::SortLineAscending() {
    m_control->ExecuteCmd(253);
}

void rtCM::SortLineDescending() {
    m_control->ExecuteCmd(254);
}

void rtCM::SetRepeatCount() {
    m_control->ExecuteCmd(187);
}

void rtCM::RecordMacro() {
    m_control->ExecuteCmd(213);
}

void rtCM::Properties() {
    m_control->ExecuteCmd(224);
}

void rtCM::ExecMacro(int n) {
    if (n >= 1 && n <= MacroCount)
        m_control->ExecuteCmd(FirstMacro + n - 1);
}

void rtCM::GotoLine() {
    m_control->ExecuteCmd(GotoLineCommand);
}
