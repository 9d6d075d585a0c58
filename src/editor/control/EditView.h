#pragma once

#include "editor/control/EditState.h"
#include "editor/held/EditReport.h"
#include "editor/held/JointedCommands.h"
#include "editor/held/LongLines.h"
#include "editor/held/ScintillaText.h"
#include "text/held/TextMap.h"

#include <QEvent>
#include <Qsci/qsciscintillabase.h>

#include <memory>
#include <string_view>
#include <vector>

class Colouring;
class ControlProfile;
class MarkHistory;
class QMimeData;

/// The Scintilla widget with the text it holds: the parts of a control (ControlSearch, ControlTyping, ...) work on it.
/// TextControl is the complete control and the only class that derives from this one.
///
/// Text is UTF-8 here and offsets are bytes of the held text, joints included; the map converts them into lines and
/// positions without joints.
class EditView : public QsciScintillaBase {
    Q_OBJECT

 public:
    ~EditView() override;

    // Scintilla
    qint64 send(unsigned message, qint64 first = 0, qint64 second = 0) const;
    /// Replaces bytes of the held text, NUL bytes allowed; the selection is where Scintilla leaves it. Returns the
    /// length of the new text in bytes.
    qint64 replaceBytes(qint64 from, qint64 to, const QByteArray& utf8);
    /// Carries out a Scintilla command across joints. No undo step, no signal: see TextControl::runCommand().
    void runAcrossJoints(int message) { m_jointed.run(message); }
    /// The library's own handling of an input event, as if it were of this type.
    void passToLibrary(QEvent::Type type, QEvent& event);
    /// Whether the dropped or pasted text was copied from a rectangle.
    bool isRectangular(const QMimeData& mime) const;

    // The text
    const HeldText& heldText() const { return m_text; }
    const TextMap& map() const { return m_map; }
    TextMap& map() { return m_map; }
    LongLines& longLines() { return m_longLines; }
    Colouring& colouring() const { return *m_colouring; }
    MarkHistory& marks() const { return *m_marks; }
    EditReport& edits() { return m_edits; }
    qint64 TotalLines() const { return m_map.lineCount(); }
    QString Text() const;
    void AddText(const QString& text);
    /// The text between two bytes as UTF-8, without joints; the second in runs that are valid until the next change.
    QByteArray bytes(qint64 from, qint64 to) const;
    std::vector<std::string_view> plainRuns(qint64 from, qint64 to) const;
    /// The bytes by which a text is inserted. Normally the text's own; in a text with joints its line ends become those
    /// of the text, so that none is taken for a joint.
    QByteArray heldForm(const QString& text) const;
    QByteArray withOwnLineEnds(const QString& text) const;
    /// Whether so many bytes more at the caret make its line too long to be held in one piece.
    bool wouldOutgrow(qint64 bytes) const;
    /// Counts edits and loads: a place in the text is valid as long as this stays the same.
    quint64 changeCount() const { return m_state.changes; }
    bool Locked() const { return m_state.locked || m_state.forcedLock; }
    /// Ignored with false while the text can only be looked at (see ControlFile::limitations()).
    void setLocked(bool locked);
    bool CanUndo() const;
    bool CanRedo() const;

    // The selection in bytes; ControlSelection has the rest
    ByteSelection selection() const;
    void setSelectionBytes(qint64 anchor, qint64 caret);
    /// For the caret after an edit, which is scrolled into view when the edit has ended.
    void placeCaret(qint64 byte);
    void replaceSelection(const QByteArray& utf8);
    void GotoTextLine(qint64 line);

    // The action in progress
    EditState& state() { return m_state; }
    const EditState& state() const { return m_state; }
    /// Called by EditScope.
    void openScope(bool grouped);
    void closeScope();
    /// The next typed text begins a new undo step.
    void breakUndo();
    /// Reports a command that had nothing to do, or a search that found nothing.
    void commandFailed();

    /// See TextControl::ExecuteCmd().
    virtual void ExecuteCmd(int number, const QString& argument) = 0;
    void Redraw();
    /// Paints those of the lines of the held text again that exist and can be seen; with a last line behind the text
    /// all that stands below too.
    void redrawLines(qint64 first, qint64 last);
    /// A widget of the caller's that occupies the lowest lines of the control while it is shown; null: none any more.
    void setBottomBar(QWidget* bar);
    /// Shows a text in the status bar (signal Notice) until the next key or the next call.
    void notice(const QString& text);

 Q_SIGNALS:
    /// The text changed; not emitted by a load.
    void Change();
    /// Anchor or caret moved.
    void SelChange();
    /// Before an edit, in held bytes, while the map still describes the text before it; changeCount() has counted the
    /// edit already. For accessible objects, and for ranges and marks that move along.
    void aboutToChange(qint64 at, qint64 length, bool inserts);
    /// The control is about to be destroyed but still complete: windows that use it must delete themselves.
    void aboutToBeDestroyed();
    void MouseDown(Qt::MouseButton button, int x, int y);
    /// The left button was pressed beside this line, in the part of the margins where a click sets a bookmark. Not
    /// emitted while no margin is shown there. Follows MouseDown.
    void bookmarkMarginClicked(qint64 line);
    /// The right button was released, or the menu key pressed, at this place of the control.
    void ShowMenu(int x, int y);
    /// Once for each file dropped on the control.
    void DropFile(const QString& path);
    /// A find or replace dialog has searched, or was closed after it had searched; text and flags are those of its last
    /// search.
    void AfterFind();
    /// Search text or flags changed.
    void SearchChanged();
    /// A search continued from the other end of the text.
    void FindWrapped();
    /// A command had nothing to do, or a search found nothing.
    void CommandFailed();
    /// A text for the status bar; empty: none any more.
    void Notice(const QString& text);
    /// The repeat count of the next command is another one.
    void RepeatCountChanged();
    /// The properties dialog changed settings that belong to a profile.
    void PropertiesChanged(const ControlProfile& before, const ControlProfile& after);

 protected:
    explicit EditView(QWidget* parent);
    /// The outermost scope has closed, Change and SelChange are about to be emitted: everything shown beside the text
    /// is updated.
    virtual void followEdits(bool changed, bool moved) = 0;
    void resizeEvent(QResizeEvent* event) override;

 private:
    void setUpScintilla();
    void textAboutToChange(qint64 at, int type, qint64 length);
    void checkSelectionLater();
    void placeBottomBar();

    ScintillaText m_text{*this};
    TextMap m_map{m_text};
    EditState m_state;
    EditReport m_edits{m_text, m_map};
    LongLines m_longLines{*this, m_text, m_map};
    JointedCommands m_jointed{*this, m_text, m_map};
    std::unique_ptr<Colouring> m_colouring;
    std::unique_ptr<MarkHistory> m_marks;
    bool m_noticed = false;
    QWidget* m_bottomBar = nullptr;
};
