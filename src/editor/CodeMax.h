#pragma once

#include <Qsci/qsciscintillabase.h>

#include <memory>

#include <QString>

#include "platform/SystemError.h"

class EditorText;

/// Flag words of a save.
namespace SaveFlags {
inline constexpr int AsLoaded = 0;
inline constexpr int ClearHistory = 1;
inline constexpr int Ansi = 16;
inline constexpr int Utf8WithMark = 32;
inline constexpr int Utf16WithMark = 64;
inline constexpr int Utf8 = 128;
}  // namespace SaveFlags

/// The editing control: text with undo, selection, change events, loading and saving, over Scintilla. Whoever places it
/// owns it. Lines and columns count from 0 here; positions and lengths are UTF-16 units from the start of the text, a line
/// end of CR LF counting two. It runs no event loop of its own and so yields to nothing.
///
/// Inside, every text is UTF-8. Lines above a stated length are held in pieces; no position, line number or text that
/// leaves this class knows of the joints.
class CodeMax : public QsciScintillaBase {
    Q_OBJECT
    Q_PROPERTY(QString Text READ Text WRITE setText)
    Q_PROPERTY(QString SelText READ SelText WRITE setSelText)
    Q_PROPERTY(qint64 SelStart READ SelStart WRITE setSelStart)
    Q_PROPERTY(qint64 SelEnd READ SelEnd WRITE setSelEnd)
    Q_PROPERTY(qint64 TotalLines READ TotalLines)
    Q_PROPERTY(qint64 CurrentLine READ CurrentLine)
    Q_PROPERTY(qint64 CurrentColumn READ CurrentColumn)
    Q_PROPERTY(bool Locked READ Locked WRITE setLocked)

public:
    explicit CodeMax(QWidget* parent = nullptr);
    ~CodeMax() override;

    /// Loads the file, telling its encoding by itself. On failure the text stays as it was.
    SystemError OpenFile(const QString& path);
    /// Loads the file by the encoding of a flag word of SaveFlags (without detection); AsLoaded: by detection.
    SystemError OpenFileAs(const QString& path, int flagWord);
    /// Writes the text in place under a flag word. On failure the text stays changed.
    SystemError SaveFile(const QString& path, int flagWord);

    QString Text() const;
    void setText(const QString& text);
    QString SelText() const;
    void setSelText(const QString& text);
    void AddText(const QString& text);
    QString GetLine(qint64 line) const;
    qint64 TotalLines() const;

    qint64 SelStart() const;
    void setSelStart(qint64 position);
    qint64 SelEnd() const;
    void setSelEnd(qint64 position);
    void setSelection(qint64 anchor, qint64 caret);

    /// The selection object: where it began and where the caret is.
    qint64 StartLineNo() const;
    qint64 EndLineNo() const;
    qint64 EndColNo() const;
    qint64 CurrentLine() const { return EndLineNo(); }
    qint64 CurrentColumn() const { return EndColNo(); }

    bool Locked() const;
    /// Ignored with false while the text can only be looked at (see limitations()).
    void setLocked(bool locked);

    bool CanUndo() const;
    bool CanRedo() const;
    void Undo();
    void Redo();
    void Cut();
    void Copy();
    void Paste();
    void SelectAll();
    void GotoTextLine(qint64 line);
    void Redraw();

    QString FontName() const;
    int FontSize() const;
    void setTextFont(const QString& name, int points);

    bool LineNumbering() const;
    void setLineNumbering(bool on);
    /// The one highlighted line, -1 for none.
    void setLineHighlight(qint64 line, const QColor& colour);

    /// What was switched off for this text because of its size, as a sentence for the status bar; empty: nothing.
    QString limitations() const;

Q_SIGNALS:
    /// The text changed; not raised by a load.
    void Change();
    /// Anchor or caret moved.
    void SelChange();
    void MouseDown(Qt::MouseButton button, int x, int y);
    /// The right button came up, or the menu key was pressed, at this place of the control.
    void ShowMenu(int x, int y);
    /// Once a file dropped on the control.
    void DropFile(const QString& path);
};
