#pragma once

#include "editor/control/EditView.h"
#include "text/search/SearchState.h"

#include <functional>
#include <memory>

class ControlBookmarks;
class ControlBraces;
class ControlClipboard;
class ControlFile;
class ControlLineNumbers;
class ControlLook;
class ControlMacros;
class ControlMouse;
class ControlReplace;
class ControlSearch;
class ControlSelection;
class ControlTyping;

/// The editing control: text with undo, selection, searches, files and signals (see EditView), over Scintilla. Owned by
/// its parent widget. Created by makeEditor() (editor/Editor.h), which adds commands, windows and the accessible
/// object.
///
/// Units: lines and columns from 0; positions and lengths in UTF-16 units from the start of the text, a line end of CR
/// LF counts two. Lines above a certain length are held in pieces; no position or text of the public functions contains
/// the joints. Re-entrancy: searches and macros may run the event loop; the control may be destroyed then. While a
/// macro is played no other code can load into it or type.
class TextControl : public EditView {
    Q_OBJECT
    Q_PROPERTY(QString Text READ Text WRITE setText)
    Q_PROPERTY(QString SelText READ SelText WRITE setSelText)
    Q_PROPERTY(qint64 SelStart READ SelStart WRITE setSelStart)
    Q_PROPERTY(qint64 SelEnd READ SelEnd WRITE setSelEnd)
    Q_PROPERTY(qint64 TotalLines READ TotalLines)
    Q_PROPERTY(qint64 CurrentLine READ CurrentLine)
    Q_PROPERTY(qint64 CurrentColumn READ CurrentColumn)
    Q_PROPERTY(bool Locked READ Locked WRITE setLocked)
    Q_PROPERTY(bool SearchCaseSensitive READ SearchCaseSensitive WRITE setSearchCaseSensitive)
    Q_PROPERTY(bool SearchRegExp READ SearchRegExp WRITE setSearchRegExp)
    Q_PROPERTY(bool SearchWholeWord READ SearchWholeWord WRITE setSearchWholeWord)

 public:
    explicit TextControl(QWidget* parent = nullptr);
    ~TextControl() override;

    // Its parts
    ControlSelection& selected() const { return *m_selection; }
    ControlBookmarks& bookmarks() const { return *m_bookmarks; }
    ControlMacros& macros() const { return *m_macros; }
    ControlClipboard& clipboard() const { return *m_clipboard; }
    ControlMouse& mouse() const { return *m_mouse; }
    ControlTyping& typing() const { return *m_typing; }
    ControlSearch& search() const { return *m_search; }
    ControlReplace& replacing() const { return *m_replace; }
    ControlLineNumbers& lineNumbers() const { return *m_lineNumbers; }
    ControlBraces& braces() const { return *m_braces; }
    ControlLook& look() const { return *m_look; }
    ControlFile& file() const { return *m_file; }

    // The text; functions that only read or append are in EditView
    void setText(const QString& text);
    QString SelText() const;
    void setSelText(const QString& text);
    QString GetLine(qint64 line) const;

    // The selection under its public names; selected() has the rest
    qint64 SelStart() const;
    void setSelStart(qint64 position);
    qint64 SelEnd() const;
    void setSelEnd(qint64 position);
    void setSelection(qint64 anchor, qint64 caret);
    qint64 CurrentLine() const;
    qint64 CurrentColumn() const;
    void SelectAll();

    // Search flags under their public names
    bool SearchCaseSensitive() const { return m_searchState.flags.caseSensitive; }
    void setSearchCaseSensitive(bool on);
    bool SearchRegExp() const { return m_searchState.flags.regExp; }
    void setSearchRegExp(bool on);
    bool SearchWholeWord() const { return m_searchState.flags.wholeWord; }
    void setSearchWholeWord(bool on);

    // Commands
    /// Carries out a command by its number (CommandNumbers.h) as one undo step. Does nothing for an unknown number. A
    /// command that edits does nothing while the text is locked, but uses up the repeat count.
    Q_INVOKABLE void ExecuteCmd(int number, const QString& argument = {}) override;
    /// Carries out a Scintilla message as if its key had been pressed: one edit, one undo step, joints crossed.
    void runCommand(int message);
    void Undo();
    void Redo();
    /// How often the next command, key or typed text is carried out, all of it as one undo step. It sets the count back
    /// to 1, and so does Escape.
    int repeatCount() const { return state().repeatCount; }
    void setRepeatCount(int times);
    /// Sets the count back to 1 and returns what it was, for a command that is carried out by the caller.
    int takeRepeatCount();
    static constexpr int LargestRepeatCount = 9999;
    /// Carries out the numbered commands that are not Scintilla messages; makeEditor() sets it. The control may be
    /// destroyed when it returns.
    using CommandRunner = std::function<void(TextControl& control, int number, const QString& argument)>;
    void setCommandRunner(CommandRunner runner) { m_runner = std::move(runner); }

 protected:
    void followEdits(bool changed, bool moved) override;
    bool canInsertFromMimeData(const QMimeData* source) const override;
    QByteArray fromMimeData(const QMimeData* source, bool& rectangular) const override;
    QMimeData* toMimeData(const QByteArray& text, bool rectangular) const override;
    void changeEvent(QEvent* event) override;
    void contextMenuEvent(QContextMenuEvent* event) override;
    void dragEnterEvent(QDragEnterEvent* event) override;
    void dragMoveEvent(QDragMoveEvent* event) override;
    void dropEvent(QDropEvent* event) override;
    bool event(QEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;
    void inputMethodEvent(QInputMethodEvent* event) override;
    QVariant inputMethodQuery(Qt::InputMethodQuery query) const override;
    void keyPressEvent(QKeyEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;

 private:
    // In the order in which they use each other
    SearchState m_searchState;
    std::unique_ptr<ControlSelection> m_selection;
    std::unique_ptr<ControlBookmarks> m_bookmarks;
    std::unique_ptr<ControlMacros> m_macros;
    std::unique_ptr<ControlClipboard> m_clipboard;
    std::unique_ptr<ControlMouse> m_mouse;
    std::unique_ptr<ControlTyping> m_typing;
    std::unique_ptr<ControlSearch> m_search;
    std::unique_ptr<ControlReplace> m_replace;
    std::unique_ptr<ControlLineNumbers> m_lineNumbers;
    std::unique_ptr<ControlBraces> m_braces;
    std::unique_ptr<ControlLook> m_look;
    std::unique_ptr<ControlFile> m_file;
    CommandRunner m_runner;
};
