#pragma once

#include "editor/control/ControlOptions.h"
#include "editor/held/Colouring.h"
#include "editor/held/JointedCommands.h"
#include "editor/held/LongLines.h"
#include "editor/held/ScintillaText.h"
#include "editor/language/BraceScan.h"
#include "editor/language/TokenLooks.h"
#include "platform/SystemError.h"
#include "text/codec/SaveFlags.h"
#include "text/codec/TextCodec.h"
#include "text/held/TextMap.h"
#include "text/search/MatchScan.h"
#include "text/search/SearchState.h"

#include <QElapsedTimer>
#include <QString>
#include <Qsci/qsciscintillabase.h>

#include <functional>
#include <memory>
#include <optional>
#include <vector>

class ControlGlobals;
class ControlProfile;
class KeptView;
class MacroPlayer;
class MacroRecorder;
class TokenTheme;
struct LoadedText;
struct MacroStep;
struct Replacements;

/// The editing control: text with undo, selection, change events, loading and saving, over Scintilla. Whoever places it
/// owns it. Lines and columns count from 0 here; positions and lengths are UTF-16 units from the start of the text, a
/// line end of CR LF counting two. It yields while it plays a macro that takes long, and then is no other's to load or
/// to type into; and while a search takes long, if its watch does.
///
/// Inside, every text is UTF-8. Lines above a stated length are held in pieces; no position, line number or text that
/// leaves this class knows of the joints.
class TextControl : public QsciScintillaBase {
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
    /// Goes back to where the control was, as long as the text is the same.
    void giveBack(const KeptView& kept);

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
    /// Not the zoom, which comes on top of it.
    void setTextFont(const QString& name, int points);
    void resetZoom();

    bool LineNumbering() const;
    void setLineNumbering(bool on);

    // What else is shown, and how keys and mouse act (ControlLookOptions.cpp)
    /// The number of the first line.
    qint64 LineNumberStart() const { return m_options.lineNumberStart; }
    void setLineNumberStart(qint64 number);
    bool DisplayLeftMargin() const { return m_options.leftMargin; }
    void setDisplayLeftMargin(bool on);
    bool DisplayWhitespace() const;
    void setDisplayWhitespace(bool on);
    bool VScrollVisible() const;
    void setVScrollVisible(bool on);
    bool HScrollVisible() const;
    void setHScrollVisible(bool on);
    /// Whether text can be dragged; files can be dropped in any case. Off also ends a drag in progress.
    bool DragDrop() const { return m_options.dragDrop; }
    void setDragDrop(bool on);
    bool BraceMatching() const { return m_options.braceMatching; }
    void setBraceMatching(bool on);
    bool WordWrap() const;
    void setWordWrap(bool on);
    /// Whether a new line begins with the blanks of the one above.
    bool AutoIndent() const { return m_options.autoIndent; }
    void setAutoIndent(bool on) { m_options.autoIndent = on; }
    static constexpr int LargestTabWidth = 64;
    int TabWidth() const { return m_options.tabWidth; }
    void setTabWidth(int blanks);
    /// Whether Tab and Indent put blanks.
    bool BlanksForTabs() const { return m_options.blanksForTabs; }
    void setBlanksForTabs(bool on);
    /// Elements that have a colour of their own; one that is not valid stands for the desktop's.
    enum Element { BackgroundElement = 0, LeftMarginElement = 1, RowHighlightElement = 2 };
    QColor elementColour(Element element) const;
    void setElementColour(Element element, const QColor& colour);
    /// The line end that typed and pasted ones become, as SC_EOL_.
    int lineEndMode() const { return m_eolMode; }
    /// Makes all line ends this one. Undo does not lead behind it: what a joint is depends on the line ends that a text
    /// has. For the same reason it is not for a text with lines held in pieces.
    bool canConvertLineEnds() const { return !Locked() && m_map.joints().kind() == JointKind::None; }
    void convertLineEnds(int mode);
    /// Loads the file anew by the encoding of a flag word; only while nothing was edited since it was loaded or saved.
    bool canReopen() const;
    SystemError reopenAs(int flagWord);
    /// Colours the text by a language, now and after each load; null: by none. It outlives the control.
    void setLanguage(const LanguageDefinition* language);
    const Colouring& colouring() const { return m_colouring; }
    /// The looks of the token classes, which the control follows from now on; null: those of the program. The theme
    /// outlives the control.
    void setTheme(TokenTheme* theme);
    TokenTheme* theme() const { return m_theme; }
    /// What the text stands on.
    QColor baseColour() const;
    /// The text or the selection in rich text, with its colours.
    QByteArray TextRTF() const;
    QByteArray SelRTF() const;
    /// Take the plain text of rich text. What is none leaves the text as it is: false, and CommandFailed.
    bool setTextRTF(const QString& rtf);
    bool setSelRTF(const QString& rtf);
    /// Pictures for the left margin: the first stands at bookmarks in place of their sign. None: the sign.
    QList<QPixmap> hImageList() const { return m_options.images; }
    void setHImageList(const QList<QPixmap>& images);
    /// The one highlighted line, -1 for none. A colour that adapts is one for dark text on light ground, turned into
    /// its like where the ground is dark; any other is shown as it is.
    enum class HighlightColour { AsItIs, Adapts };
    void setLineHighlight(qint64 line, const QColor& colour, HighlightColour kind = HighlightColour::AsItIs);

    /// Carries out a command by its number (ControlCommands has the table), as one undo step. Does nothing for a number
    /// that stands for none, and for a command that edits while the text is locked.
    Q_INVOKABLE void ExecuteCmd(int number, const QString& argument = {});

    /// How often the next command, key or typed text is carried out, all of it as one undo step. Used up by it;
    /// Escape sets it back to 1.
    int repeatCount() const { return m_repeatCount; }
    void setRepeatCount(int times);
    static constexpr int LargestRepeatCount = 9999;

    /// Carries out a Scintilla message as if its key had been pressed: one edit, one undo step, joints crossed.
    void runCommand(int message);
    /// Types a text at the caret, as the keyboard or an input method would.
    void type(const QString& text);

    // Hot keys and macros (ControlMacros.cpp). Without globals there are neither, and keys are those of EditorKeys.
    ControlGlobals* globals() const { return m_globals; }
    void setGlobals(ControlGlobals& globals) { m_globals = &globals; }
    /// The recording that follows this control; null: none does.
    MacroRecorder* recording() const;
    /// For a recording: what happens while this lives is told in another way, or not worth telling.
    class Unrecorded;
    /// Notes a search that was carried out, as a command that goes by the present text and flags.
    void noteSearch(int command);
    /// Tells a status bar of something (see Notice), until it is told otherwise or the next key.
    void notice(const QString& text);
    /// Whether a macro is being played, which may yield.
    bool isPlaying() const { return m_player != nullptr; }

    /// Where characters and lines lie; for those who read the text for a screen reader or a search.
    const TextMap& map() const { return m_map; }
    const HeldText& heldText() const { return m_text; }
    /// The text from one byte to another as UTF-8, without joints.
    QByteArray bytes(qint64 from, qint64 to) const;

    // Searching (ControlSearch.cpp). Text and flags stay until they are set anew. A search begins at the selection and
    // leaves its match selected; at the end of the text it goes on by itself from the other end.
    bool SearchCaseSensitive() const { return m_search.flags.caseSensitive; }
    void setSearchCaseSensitive(bool on);
    bool SearchRegExp() const { return m_search.flags.regExp; }
    void setSearchRegExp(bool on);
    bool SearchWholeWord() const { return m_search.flags.wholeWord; }
    void setSearchWholeWord(bool on);
    bool PreserveCase() const { return m_search.preserveCase; }
    void setPreserveCase(bool on) { m_search.preserveCase = on; }
    QString searchText() const { return m_search.text; }
    void setSearchText(const QString& text);
    QString replacementText() const { return m_search.replacement; }
    void setReplacementText(const QString& text) { m_search.replacement = text; }
    /// What was searched for by all controls, newest first, divided by line feeds.
    static QString FindHistory();

    /// Asked every 20 ms while a search goes on; false stops it. It is told whether the search takes so long by now
    /// that a Notice says so. It may yield: the search ends by itself when the text was changed meanwhile, and does not
    /// touch a control that is gone.
    void setSearchWatch(std::function<bool(bool takesLong)> goesOn) { m_searchWatch = std::move(goesOn); }

    SearchOutcome findNext();
    SearchOutcome findPrevious();
    /// The same for a text that is still being typed: the history knows nothing of it. Backwards it takes the last
    /// match that begins in front of the selection, or where that begins if `alsoHere`, however far it goes: what is
    /// typed further makes it longer.
    SearchOutcome findTyped(bool backwards, bool alsoHere = false);
    /// The text made ready for a search; null when there is none or it is no valid expression.
    std::shared_ptr<const SearchPattern> searchPattern();
    /// Finds the next match and puts the replacement in its place, which is selected then.
    SearchOutcome replaceNext();
    /// Replaces the selection when it is a match, and goes on to the next one.
    SearchOutcome replaceSelectedMatch();
    /// Why the last search failed, beyond that there was nothing to find.
    const SearchError& searchError() const { return m_search.error; }
    /// Visits all matches from the start of the text on, until `take` answers false. The last one is selected then, or
    /// the caret stands at the start. `take` may yield: the text can't be edited meanwhile, and the visit ends when
    /// another one was loaded or the control is gone. Returns the number of matches.
    qint64 findAll(const std::function<bool(const MatchPlace&)>& take);
    /// Replaces all matches as one undo step; the number of them.
    qint64 replaceAll(const ReplaceWatch& watch = {});
    /// The same for those within a range of held bytes, which is selected then.
    qint64 replaceAllIn(const TextMatch& range);
    /// How many matches there are, in the whole text or within a range of held bytes. The selection stays as it is.
    qint64 countMatches();
    qint64 countMatches(const TextMatch& range);
    TextMatch selectedBytes() const;
    /// Whether what is selected is what a search has found, and not a choice of the person's.
    bool isMatchSelected() const { return m_search.selected == selectedBytes(); }
    /// A widget of the caller's that takes the lowest lines of the control while it is shown; null: none any more.
    void setBottomBar(QWidget* bar);
    /// Counts edits and loads: a place in the text is good as long as this is the same.
    quint64 changeCount() const { return m_changes; }
    /// Anchor and caret, as positions.
    qint64 AnchorPosition() const;
    qint64 CaretPosition() const;

    // Bookmarks (ControlBookmarks.cpp), one a line; a line held in pieces is one line. Lines count from 0.
    bool BookmarkAt(qint64 line) const;
    void setBookmarkAt(qint64 line, bool bookmarked);
    void ToggleBookmark();
    void ClearAllBookmarks();
    /// These move the caret to the start of a marked line, the middle two around the ends of the text.
    void FirstBookmark();
    void NextBookmark();
    void PrevBookmark();
    void LastBookmark();
    /// The line at a place of the control, the last one for a place below it.
    qint64 lineAtPoint(int x, int y) const;

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
    /// The find or replace dialog has searched, or was closed: text and flags are those of its last search.
    void AfterFind();
    /// What is searched for is another text, or is taken in another way.
    void SearchChanged();
    /// A search went on from the other end of the text.
    void FindWrapped();
    /// A command could not do what it is for, a search that finds nothing among them.
    void CommandFailed();
    /// Something that a status bar shows as long as it is true; empty: it is no more.
    void Notice(const QString& text);
    /// The properties dialog has changed what a profile tells.
    void PropertiesChanged(const ControlProfile& before, const ControlProfile& after);

 protected:
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
    void resizeEvent(QResizeEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;

 private:
    class EditScope;
    friend class EditScope;
    friend class MacroPlayer;

    struct Selection {
        qint64 anchor = 0;
        qint64 caret = 0;
        bool operator==(const Selection&) const = default;
    };

    qint64 send(unsigned message, qint64 first = 0, qint64 second = 0) const;
    Selection selection() const;
    void setSelectionBytes(qint64 anchor, qint64 caret);
    void placeCaret(qint64 byte);
    void replaceSelection(const QByteArray& utf8);
    QByteArray heldForm(const QString& text) const;
    QByteArray withOwnLineEnds(const QString& text) const;
    void dropText(QDropEvent* event);
    void dropFiles(QDropEvent* event);
    void endDragMark();
    bool isInMargin(int x) const;
    bool isSelected(qint64 byte) const;
    QString textOfRanges() const;
    void textAboutToChange(qint64 at, int type, qint64 length);
    void lookAtSelectionLater();
    void closeScope();
    void breakUndo();
    int takeRepeatCount();
    void carryOut(int message);
    void tabKey(int message);
    void putTyped(const QString& text, const QByteArray& utf8);

    bool takeHotKey(const QKeyEvent& key);
    void leaveHotKey();
    void tellBegunHotKey();
    void recordMacro();
    void playMacro(int n);
    bool playStep(const MacroStep& step);
    void playText(const QString& text);
    bool failedIdly() const;
    void noteCommand(int number, const QString& argument, int times);
    void noteTyped(const QString& text, int times);
    void noteSteps(MacroRecorder& recorder, const MacroStep& step, int times);
    void noteSearchState(MacroRecorder& recorder, int command) const;
    void commandFailed();

    void setUpView();
    void applyColours();
    void applyDocumentState();
    void showLineNumbers();
    void numberVisiblePieces();
    bool numbersAreTexts() const;
    void applyTabs();
    void applyLeftMargin();
    void showBookmarkSign();
    static QColor ControlOptions::*elementMember(Element element);
    TokenLooks looks() const;
    TokenLook textLook() const;
    void applyTokenLooks();
    void followPieces();
    void showBraces();
    BraceScan::Match braceMatchAt(qint64 place) const;
    void clearBraces();
    void newLine();
    std::vector<QByteArray> frontsOfNewLines() const;
    void insertAtCaret(qint64 range, const QByteArray& utf8);
    QByteArray richText(qint64 from, qint64 to) const;
    void takeLoaded(LoadedText loaded);
    std::vector<std::string_view> plainRuns(qint64 from, qint64 to) const;
    bool isStream() const;
    void loosenRectangle();
    void loosenAtTop();
    void cutRectangleAnew();
    void knowColumn();
    void chooseColumn();

    template <typename Value>
    void changeSearch(Value& part, const Value& value);
    std::shared_ptr<const SearchPattern> patternToFind();
    std::shared_ptr<const SearchPattern> notedPattern();
    SearchOutcome findNoted(bool backwards);
    SearchOutcome find(bool backwards);
    SearchOutcome findOnward(const SearchPattern& pattern);
    SearchOutcome findBackward(const SearchPattern& pattern);
    template <typename Rule>
    SearchOutcome findLast(Rule lastMatch, const SearchPattern& pattern, bool alsoHere);
    void placeBottomBar();
    SearchOutcome outcomeOf(const std::optional<TextMatch>& match, bool wrapped);
    SearchOutcome fail(const SearchError& error = {});
    bool isEmptyMatchTaken(const TextMatch& match) const;
    void selectMatch(const TextMatch& match);
    void replaceMatch(const MatchScan& scan);
    MatchScan::Watch watchOfSearch();
    std::unique_ptr<MatchScan> foundOnward(const SearchPattern& pattern, bool& wrapped, SearchError& error);
    std::shared_ptr<const SearchPattern> patternToReplace();
    bool isSelected(const TextMatch& match) const;
    MatchPlace placeOf(const TextMatch& match) const;
    bool collect(Replacements& found, const SearchPattern& pattern, const TextMatch& range, const ReplaceWatch& watch);
    void apply(const Replacements& found, const ReplaceWatch& watch);
    qint64 replaceAllMatches(const ReplaceWatch& watch);
    struct Pieces {
        qint64 first;
        qint64 end;
    };
    Pieces piecesOf(qint64 line) const;
    void goToHeldLine(qint64 held);
    void goToBookmark(qint64 first, qint64 second, unsigned message);

    ScintillaText m_text{*this};
    TextMap m_map{m_text};
    LongLines m_longLines{*this, m_text, m_map};
    JointedCommands m_commands{*this, m_text, m_map};
    Colouring m_colouring{*this, m_text};
    TokenTheme* m_theme = nullptr;

    TextFormat m_format;
    bool m_coloured = true;
    bool m_colouredInPieces = false;
    bool m_locked = false;
    bool m_forcedLock = false;
    int m_eolMode = SC_EOL_LF;

    SearchState m_search;
    std::function<bool(bool)> m_searchWatch;
    quint64 m_changes = 0;
    QWidget* m_bottomBar = nullptr;

    int m_scopes = 0;
    bool m_grouped = false;
    bool m_changed = false;
    bool m_scrollDue = false;
    qint64 m_touchedFrom = 0;
    qint64 m_touchedTo = 0;
    Selection m_toldSelection;
    bool m_typing = false;
    int m_lastCommand = 0;
    QElapsedTimer m_sinceTyped;
    int m_repeatCount = 1;
    ControlGlobals* m_globals = nullptr;
    MacroPlayer* m_player = nullptr;  ///< while a macro is played
    bool m_failed = false;            ///< the present command
    bool m_noted = false;             ///< what the present scope did is a step of the recording
    int m_unrecorded = 0;             ///< how many Unrecorded live
    bool m_noticed = false;
    bool m_pressedInSelection = false;
    bool m_dragging = false;   ///< out of the selection, as long as the drag lasts
    bool m_addsRange = false;  ///< by a press with Ctrl, until the button comes up
    bool m_copying = false;
    struct Place {
        qint64 caret = -1;
        quint64 changes = 0;
        bool operator==(const Place&) const = default;
    };
    Place m_columnKnownAt;  ///< where the caret stood when Scintilla last knew the column that it keeps to

    QString m_fontName;
    int m_fontSize = 10;
    bool m_lineNumbering = false;
    qint64 m_numberedLines = -1;
    QColor m_highlight;
    HighlightColour m_highlightKind = HighlightColour::AsItIs;
    ControlOptions m_options;
    QString m_path;
    bool m_converted = false;  ///< line ends, since the last load or save
    bool m_bracesShown = false;
    int m_wheelTurned = 0;  ///< with Ctrl held, in eighths of a degree
};
