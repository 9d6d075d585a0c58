#pragma once

#include <QByteArray>
#include <QElapsedTimer>
#include <QString>
#include <QVariant>

#include <vector>

class ControlMacros;
class ControlSelection;
class EditView;
class QInputMethodEvent;

/// Handles typed text, from keys and input methods, and how far Tab and Enter indent. Owned by the control.
class ControlTyping {
 public:
    /// All three outlive this object.
    ControlTyping(EditView& view, ControlSelection& selection, ControlMacros& macros)
        : m_view(view), m_selection(selection), m_macros(macros) {}

    /// Types a text at the caret, as the keyboard or an input method would.
    void type(const QString& text);
    void newLine();
    /// Carries out SCI_TAB or SCI_BACKTAB.
    void tabKey(int message);
    void takeInputMethod(QInputMethodEvent& event);
    /// Answers an input method's query about the text near the caret; invalid: it is left to the library.
    QVariant answer(Qt::InputMethodQuery query) const;
    /// The undo step to which this command, a Scintilla message, belongs: consecutive deletions are one step, any other
    /// command is a step by itself.
    void beginCommand(int message);

    /// Whether a new line begins with the blanks of the one above.
    bool AutoIndent() const { return m_autoIndent; }
    void setAutoIndent(bool on) { m_autoIndent = on; }
    static constexpr int LargestTabWidth = 64;
    int TabWidth() const { return m_tabWidth; }
    void setTabWidth(int blanks);
    /// Whether Tab and Indent insert blanks.
    bool BlanksForTabs() const { return m_blanksForTabs; }
    void setBlanksForTabs(bool on);
    /// To be called when language or document have changed.
    void applyTabs();

 private:
    bool replacesSelection() const;
    void putTyped(const QString& text, const QByteArray& utf8);
    std::vector<QByteArray> frontsOfNewLines() const;
    void breakLine();
    void insertAtCaret(qint64 range, const QByteArray& utf8);

    EditView& m_view;
    ControlSelection& m_selection;
    ControlMacros& m_macros;
    bool m_autoIndent = true;
    bool m_blanksForTabs = false;
    int m_tabWidth = 4;
    int m_lastCommand = 0;
    QElapsedTimer m_sinceTyped;
};
