#pragma once

#include "document/DocumentView.h"
#include "document/PositionReport.h"
#include "document/SaveFormats.h"

#include <QColor>
#include <QFont>
#include <QList>
#include <QPixmap>
#include <QWidget>

#include <functional>
#include <memory>

class Prompts;
class TextControl;
class TextViewSearch;
struct DocumentServices;
struct EditorGlobals;
struct Options;
struct SearchFlags;
struct SystemError;

/// The text view: a facade of one editing control, through which the program does everything to text. Owned by the
/// document or panel that shows it. Lines and columns count from 0, positions and lengths are UTF-16 units.
///
/// It yields to the message box of a failed load or save, and in its searches. An error of the control is shown in such
/// a box, and false is returned; text, undo and FileChanged are then unchanged.
class rtCM : public QWidget, public DocumentView {
    Q_OBJECT
    Q_PROPERTY(bool IgnoreCmdFailure MEMBER IgnoreCmdFailure)
    Q_PROPERTY(bool FileChanged MEMBER FileChanged)
    Q_PROPERTY(bool ClickLeftMarginBookmark MEMBER ClickLeftMarginBookmark)
    Q_PROPERTY(bool gMyHighlight MEMBER gMyHighlight)
    Q_PROPERTY(QString Text READ Text WRITE setText)
    Q_PROPERTY(QString SelText READ SelText WRITE setSelText)
    Q_PROPERTY(QString TextRTF READ TextRTF)
    Q_PROPERTY(QString SelRTF READ SelRTF)
    Q_PROPERTY(qint64 SelStart READ SelStart WRITE setSelStart)
    Q_PROPERTY(qint64 SelEnd READ SelEnd WRITE setSelEnd)
    Q_PROPERTY(qint64 SelLength READ SelLength WRITE setSelLength)
    Q_PROPERTY(qint64 TotalLines READ TotalLines)
    Q_PROPERTY(qint64 CurrentLine READ CurrentLine)
    Q_PROPERTY(qint64 CurrentColumn READ CurrentColumn)
    Q_PROPERTY(qint64 LastHighlightLine READ LastHighlightLine)
    Q_PROPERTY(bool VScrollVisible READ VScrollVisible WRITE setVScrollVisible)
    Q_PROPERTY(bool HScrollVisible READ HScrollVisible WRITE setHScrollVisible)
    Q_PROPERTY(bool DragDrop READ DragDrop WRITE setDragDrop)
    Q_PROPERTY(qint64 LineNumberStart READ LineNumberStart WRITE setLineNumberStart)
    Q_PROPERTY(QColor BackColor READ BackColor WRITE setBackColor)
    Q_PROPERTY(QFont font READ textFont WRITE setTextFont)
    Q_PROPERTY(bool Enabled READ isEnabled WRITE setEnabled)
    Q_PROPERTY(WId hwnd READ hwnd)
    Q_PROPERTY(bool Locked READ Locked WRITE setLocked)
    Q_PROPERTY(bool LineNumbering READ LineNumbering WRITE setLineNumbering)
    Q_PROPERTY(bool DisplayLeftMargin READ DisplayLeftMargin WRITE setDisplayLeftMargin)
    Q_PROPERTY(bool DisplayWhitespace READ DisplayWhitespace WRITE setDisplayWhitespace)
    Q_PROPERTY(bool BraceMatching READ BraceMatching WRITE setBraceMatching)
    Q_PROPERTY(bool SearchCaseSensitive READ SearchCaseSensitive WRITE setSearchCaseSensitive)
    Q_PROPERTY(bool SearchRegExp READ SearchRegExp WRITE setSearchRegExp)
    Q_PROPERTY(bool SearchWholeWord READ SearchWholeWord WRITE setSearchWholeWord)

 public:
    explicit rtCM(const DocumentServices& services, QWidget* parent = nullptr);
    ~rtCM() override;

    bool IgnoreCmdFailure = false;
    bool FileChanged = false;  ///< edited since the view's last load or save
    bool ClickLeftMarginBookmark = true;
    bool gMyHighlight = false;

    TextControl& control() const { return *m_control; }
    PositionReport::Place caretPlace() const;
    /// First and last selected line in the order they were selected.
    void GetSelStartEnd(qint64& pStart, qint64& pEnd) const;
    /// Whether any of the ranges that are selected has text.
    bool hasSelection() const;
    /// Replaces the text of each selected range by what `change` makes of it, applied as often as the repeat count
    /// says, in one undo step, and leaves the new texts selected forwards; of a rectangle its part of each line. An
    /// exception from `change` reaches the caller, and then nothing has been replaced.
    void changeSelected(QString (*change)(const QString& text));
    /// All matches from the top of the text as the text of a MatchList. The last is left selected. These two yield
    /// whenever 20 ms have passed, so the view may be destroyed when they return; the returned list is valid then too.
    void FindAllMatch(const QString& pFindText, QString& pListResults, bool pRegExp, bool pCaseSensitive,
                      bool pWholeWord);
    /// The list holds where each replacement lies, with the length of `pReplace`. One undo step.
    void ReplaceAllMatch(const QString& pFindText, const QString& pReplace, QString& pListResults, bool pRegExp,
                         bool pCaseSensitive, bool pPreserveCase, bool pWholeWord);
    QWidget* viewWidget() override { return this; }

 public Q_SLOTS:
    bool OpenFile(const QString& pFilename, bool bIgnoreError = false);
    /// Loads without choosing the language again. A format other than AsLoaded is the encoding of the file; without one
    /// it is detected.
    bool ReloadFile(const QString& pFilename, bool bIgnoreError = false, int pFormat = SaveFormats::AsLoaded);
    bool SaveFile(const QString& pFilename, int pFormat);
    /// These two return false on failure, without a message.
    bool SaveToTmp(const QString& pFilename);
    bool LoadFromTmp(const QString& pFilename);

    /// Chooses the language by the file's name; one that no language claims leaves it unchanged.
    void SetLangFromFile(const QString& pFilename);
    /// Name of the language in upper case, "" for none.
    QString GetLang() const;
    /// An unknown name leaves the language unchanged.
    void SetLang(const QString& pLang);
    /// Reads the stored properties of the control, and stores those that all controls have in common.
    void PropertiesLoad();
    void PropertiesSave();

    /// What was switched off for this text because of its size, as a sentence for the status bar; empty: nothing.
    QString limitations() const override;
    bool hasContent() const override;
    /// What a screen reader calls the text.
    void setTextName(const QString& name);

    QString Text() const;
    void setText(const QString& text);
    QString SelText() const;
    void setSelText(const QString& text);
    void AddText(const QString& pStr);
    QString GetLine(qint64 pLine) const;
    qint64 TotalLines() const;

    qint64 SelStart() const;
    void setSelStart(qint64 position);
    qint64 SelEnd() const;
    void setSelEnd(qint64 position);
    qint64 SelLength() const;
    void setSelLength(qint64 length);
    qint64 SelTotalLines() const;
    qint64 CurrentLine() const;
    qint64 CurrentColumn() const;
    void GotoTextLine(qint64 pLine);

    bool LineNumbering() const;
    void setLineNumbering(bool on);
    void Redraw();

    QString FontName() const;
    int FontSize() const;
    void setTextFont(const QString& name, int points);
    QFont textFont() const;
    void setTextFont(const QFont& font);
    void IncreaseFontSize();
    void DecreaseFontSize();
    void DefaultFontSize();

    void SpacesToTabs();
    void TabsToSpaces();

    // Commands of the control, by their numbers; CommandNumbers.h describes them.
    void ToUppercase();
    void ToLowercase();
    void ToCapitalize();
    void ToUppercaseSel();
    void ToLowercaseSel();
    void LineDeleteToStart();
    void LineDeleteToEnd();
    void LineDelete();
    void LineCut();
    void SelectPara();
    void SelectLine();
    void SelectWord();
    void Indent();
    void Unindent();
    void SortLineAscending();
    void SortLineDescending();
    void SetRepeatCount();
    /// How often the next command is carried out.
    int repeatCount() const;
    void GotoLine();
    void RecordMacro();
    /// Ends a recording of this view, which is to be closed; returns when the user has decided what becomes of it. Runs
    /// the event loop.
    void finishRecording();
    /// Plays macro `n`, from 1 to 10; any other number does nothing.
    void ExecMacro(int n);
    void Properties();
    /// Prints the text under a file's path or a document's name, with the dialog for printers. Yields, and nothing can
    /// be done to the text meanwhile.
    void PrintContent(const QString& pName = {});
    /// The dialog for the page; its settings are those of all texts.
    void PrintSetup();

    // Properties of the control (rtCMProperties.cpp)
    QString TextRTF() const;
    QString SelRTF() const;
    /// The setters insert the plain text. For anything but rich text they leave the text unchanged and return false.
    bool setTextRTF(const QString& pRTF);
    bool setSelRTF(const QString& pRTF);
    /// Pictures of the left margin, the first of them for bookmarks.
    QList<QPixmap> hImageList() const;
    void setHImageList(const QList<QPixmap>& images);
    WId hwnd() const;
    bool DisplayLeftMargin() const;
    void setDisplayLeftMargin(bool on);
    bool DisplayWhitespace() const;
    void setDisplayWhitespace(bool on);
    bool BraceMatching() const;
    void setBraceMatching(bool on);
    bool VScrollVisible() const;
    void setVScrollVisible(bool on);
    bool HScrollVisible() const;
    void setHScrollVisible(bool on);
    /// Off also ends a drag in progress.
    bool DragDrop() const;
    void setDragDrop(bool on);
    /// The number of the first line.
    qint64 LineNumberStart() const;
    void setLineNumberStart(qint64 number);
    void ShowLineNumber(bool on) { setLineNumbering(on); }

    // Colours of the control's elements; an invalid one means the desktop's.
    QColor BackColor() const;
    void setBackColor(const QColor& pColor);
    void SetLeftMarginColor(const QColor& pColor);
    /// Marks the view as the active one, and as inactive.
    void SetActiveMargin(const QColor& pColor = {});
    void SetInactiveMargin();

    // Searches (rtCMSearch.cpp) and bookmarks (rtCMBookmarks.cpp). FindNext and FindPrev use the program-wide flags,
    // the others those that are passed; with ContinueSearch a search continues from the other end of the text. A search
    // that finds nothing leaves the selection unchanged, runs the event loop once and returns false.
    bool SearchCaseSensitive() const;
    void setSearchCaseSensitive(bool on);
    bool SearchRegExp() const;
    void setSearchRegExp(bool on);
    bool SearchWholeWord() const;
    void setSearchWholeWord(bool on);
    void SetFindText(const QString& pFindText);
    /// These open the control's dialogs and its bar for the search while typing.
    void Find() override;
    void ReplaceText() override;
    void IncrementalSearch() override;
    void ReverseIncrementalSearch() override;
    /// An empty text repeats the last one.
    bool FindNext(const QString& pFindText) override;
    bool FindPrev(const QString& pFindText) override;
    bool FindText(const QString& pText, bool RegExpOn, bool CaseSensitiveOn, bool WholeWord) override;
    bool wasSearchStopped() const override;
    /// Called while FindAllMatch or ReplaceAllMatch yields: it ends with what it has found.
    void StopSearch();

    void ToggleBookmark() override;
    void NextBookmark() override;
    void PrevBookmark() override;
    void BookmarkFirst() override;
    void BookmarkLast() override;
    void ClearAllBookmark() override;
    /// The line counts from 1.
    void EnableBookmarkAt(qint64 pLine, bool pBookmarked);

    qint64 TotalWords() const;
    qint64 TotalChars() const;
    qint64 TotalCharsNoSpace() const;
    qint64 SelTotalWords() const;
    qint64 SelTotalChars() const;
    qint64 SelTotalCharsNoSpace() const;

    /// Moves the row highlight to the caret's line, or removes it when it is off.
    void HighLightLine();
    void UnHighLightLine(qint64 pLine);
    qint64 LastHighlightLine() const { return m_lastHighlightLine; }

    bool load(const QString& path) override;
    bool save(const QString& path, int format, bool force) override;
    bool isModified() const override { return FileChanged; }
    bool Locked() const override;
    void setLocked(bool locked) override;
    void Undo() override;
    void Redo() override;
    void Cut() override;
    void Copy() override;
    void Paste() override;
    void SelectAll() override;
    QString GetCursorPos() const override;

 Q_SIGNALS:
    /// The text changed; FileChanged is set already.
    void Change();
    /// Selection or caret moved; the row highlight has followed already.
    void SelChange();
    void MouseDown(Qt::MouseButton Button, int x, int y);
    /// The owner should show its context menu at this place of the view.
    void ShowMenu(int x, int y);
    void ClickLeftMargin(qint64 pLineNo, bool pBookmarked);
    /// The control's find or replace dialog has searched, or was closed after it had searched.
    void AfterFind();
    void DropFile(const QString& pFilename);
    /// A sentence for the status bar, shown while it holds; empty: it no longer does.
    void Notice(const QString& text);
    /// The next command will be carried out another number of times.
    void RepeatCountChanged();
    /// The control's properties dialog changed something.
    void propertiesChanged();

 protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

 private:
    void connectControl();
    bool loadAs(const QString& path, int flagWord, bool ignoreError);
    bool report(const SystemError& error, bool ignoreError);
    void stepFontSize(int step, int last);
    QByteArray wholeText() const;
    qint64 sumOfSelected(qint64 (*count)(QStringView text)) const;

    void connectSearch();
    void openSearchWindow(int command);
    bool reportFind(const std::function<bool()>& find);
    bool prepareList(const QString& text, const SearchFlags& flags);
    void clickLeftMargin(qint64 line);
    void pickLanguage(const QString& path);

    Prompts& m_prompts;
    const Options& m_options;
    EditorGlobals& m_globals;
    TextControl* m_control;
    std::unique_ptr<TextViewSearch> m_search;
    QString m_language;        ///< upper case; empty without one
    QString m_languagePicked;  ///< the path by which a language was last picked; a save to it picks none again
    qint64 m_lastHighlightLine = -1;
};
