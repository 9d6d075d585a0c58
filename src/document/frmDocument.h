#pragma once

#include "document/PositionReport.h"
#include "document/RecoveryOutcome.h"
#include "document/SaveFormats.h"
#include "platform/FileState.h"

#include <QPointer>
#include <QWidget>

#include <memory>
#include <optional>
#include <vector>

class ContextMenus;
class DocumentHost;
class DocumentJournal;
class DocumentView;
class FoundJournal;
class HexJournal;
class HexView;
class Prompts;
class RecoveredBar;
class rtCM;
class ucHex;
struct DocumentServices;
struct JournalBase;
struct Options;

/// One open file: a child window of the frame with a text view and a hex view of the same file, of which exactly one is
/// visible; which one it is, is called the mode. The widget of a QMdiSubWindow, owned by it.
///
/// Opening and switching yield to the event loop before the load, opening and saving as hex after each block, and all
/// of them wherever a box is shown. A close event that arrives meanwhile is ignored. A failed load or save is reported
/// by the view; filename, isChange and isNew then stay.
class frmDocument : public QWidget {
    Q_OBJECT
    Q_PROPERTY(QString fIdx MEMBER fIdx)
    Q_PROPERTY(QString filename MEMBER filename)
    Q_PROPERTY(bool isChange MEMBER isChange)
    Q_PROPERTY(bool isNew MEMBER isNew)
    Q_PROPERTY(bool isReadOnly MEMBER isReadOnly)
    Q_PROPERTY(QString LastUpdate MEMBER LastUpdate)
    Q_PROPERTY(QString KnownUpdate MEMBER KnownUpdate)
    Q_PROPERTY(bool Locked READ Locked WRITE setLocked)
    Q_PROPERTY(bool TextEdit READ TextEdit WRITE setTextEdit)
    Q_PROPERTY(bool DocEnabled READ DocEnabled WRITE setDocEnabled)
    Q_PROPERTY(QString Caption READ Caption WRITE setCaption)
    Q_PROPERTY(int DocIcon READ DocIcon WRITE SetDocIcon)
    Q_PROPERTY(qint64 SelStart READ SelStart WRITE setSelStart)
    Q_PROPERTY(qint64 SelLength READ SelLength WRITE setSelLength)
    Q_PROPERTY(bool LineNumbering READ LineNumbering WRITE setLineNumbering)
    Q_PROPERTY(bool DisplayLeftMargin READ DisplayLeftMargin WRITE setDisplayLeftMargin)
    Q_PROPERTY(bool DisplayWhitespace READ DisplayWhitespace WRITE setDisplayWhitespace)
    Q_PROPERTY(bool BraceMatching READ BraceMatching WRITE setBraceMatching)
    Q_PROPERTY(bool RowHighlight READ RowHighlight WRITE setRowHighlight)

 public:
    /// The services belong to the frame and outlive the document.
    frmDocument(DocumentHost* parent, const DocumentServices& services);
    ~frmDocument() override;

    QString fIdx;
    DocumentHost* gParent = nullptr;
    QString filename;
    bool isChange = false;
    bool isNew = true;
    bool isReadOnly = false;
    QString LastUpdate;
    QString KnownUpdate;

    QString Caption() const;
    void setCaption(const QString& caption);

    Q_INVOKABLE bool OpenFile(const QString& pFilename, bool pReadonly, bool pCheckBinary, bool pTextMode);
    /// `pFormat` is one of SaveFormats and concerns the text view alone; `pFlag` (write even when nothing was edited)
    /// the hex view alone.
    Q_INVOKABLE bool SaveFile(const QString& pFilename, int pFormat = SaveFormats::AsLoaded, bool pFlag = false);
    /// Whether a save may begin. Otherwise the status bar says why not, until what is running has ended.
    bool maySave();
    Q_INVOKABLE void ReloadFile();
    /// Whether the visible view shows what was loaded from `filename` or saved to it. False for an untitled document,
    /// and after a load that failed: such a view is not to be written over the file unless the user names it.
    bool holdsFile() const;
    /// After a save in an encoding: reads the file back by the encoding of pFormat (2 to 5). With AsLoaded the encoding
    /// is found out.
    Q_INVOKABLE void ReloadTextFile(const QString& pFilename, int pFormat = SaveFormats::AsLoaded);
    void LastUpdateTime(QString& pLastUpdate, QString& pFileSize) const;
    Q_INVOKABLE bool FileNeedToReload();
    /// Whether the file is there with other bytes than those last loaded, saved, or told of by FileNeedToReload().
    /// Unlike that it sees a change within the same second.
    Q_INVOKABLE bool IsChangedOnDisk() const;
    Q_INVOKABLE void ChangeToReadOnly();
    /// Of the visible view: the text view can be locked by itself, when its control can only show the text.
    bool Locked() const;
    void setLocked(bool locked);
    bool TextEdit() const;
    /// Switches, see SwitchMode; also to the current mode, which loads the file again.
    void setTextEdit(bool text);
    /// To text when `New_Mode` is true, else to hex. When the other view has changes, the user is asked about them
    /// first.
    void SwitchMode(bool New_Mode);
    bool DocEnabled() const;
    void setDocEnabled(bool enabled);
    rtCM* GetEditor() const { return m_text; }
    Q_INVOKABLE QString GetCursorPos() const;
    /// What a user has to know of the visible view; mostly empty.
    QString limitations() const;
    Q_INVOKABLE QString GetLang() const;
    Q_INVOKABLE void SetLang(const QString& pLang);

    // Unsaved changes (frmDocumentRecovery.cpp)
    /// Shows the recovered changes of an earlier run, which must have been restored, as a changed document with a bar
    /// over its view, and goes on with their journal. If it cannot, the text is unchanged, and a document whose bytes
    /// were to be shown loads its file again. Yields for bytes.
    RecoveryOutcome bringBack(std::unique_ptr<FoundJournal> found, RecoveredAs as = RecoveredAs::Document);
    /// The user does not want the changes to be saved: the next start does not bring them back.
    void forgetChanges();
    /// The process ends and leaves the document as it is: its journals get what they need to be of use by themselves.
    void completeJournals();
    /// The file on the disk is not the one that was loaded or saved, and the changes stay: the same, a little later.
    void noteFileChange();
    /// Changes were brought back, and were neither kept nor edited yet.
    bool isUntouchedRecovery() const { return m_isUntouchedRecovery; }
    /// Null: none is shown.
    QWidget* recoveredBar() const;
    /// Of the file whose unsaved changes were brought back; empty: there was none.
    const QString& recoveredPath() const { return m_recoveredPath; }
    /// The open file with the present bytes of the hex view, for who reads it as a whole; -1: there is none. Stays the
    /// view's, which may close it at any time.
    int bytesHandle() const;

    /// The icon by state: 0 normal, 1 changed, 2 read-only.
    int DocIcon() const { return m_icon; }
    Q_INVOKABLE void SetDocIcon(int icon);

    /// While true a close event of this window is ignored: the Close item is disabled.
    void setCloseGreyed(bool greyed) { m_closeGreyed = greyed; }

    // Searches and bookmarks (frmDocumentSearch.cpp). Those of one match show a box when there is none; those of all
    // matches yield, and the document does not close meanwhile.
    Q_INVOKABLE bool FindText(const QString& pText, bool RegExpOn, bool CaseSensitiveOn, bool WholeWord);
    void FindAllMatch(const QString& pFindText, QString& pListResults, bool pRegExp, bool pCaseSensitive,
                      bool pWholeWord);
    void ReplaceAllMatch(const QString& pFindText, const QString& pReplace, QString& pListResults, bool pRegExp,
                         bool pCaseSensitive, bool pPreserveCase, bool pWholeWord);
    /// Ends one of the two above, which return what they have found so far.
    Q_INVOKABLE void StopSearch();
    /// The line counts from 1.
    Q_INVOKABLE void EnableBookmarkAt(qint64 pLine, bool pBookmarked);
    /// The line counts from 0.
    Q_INVOKABLE void GotoTextLine(qint64 pLine);
    qint64 SelStart() const;
    void setSelStart(qint64 position);
    qint64 SelLength() const;
    void setSelLength(qint64 length);

    /// What the text view shows, as the View menu toggles it.
    bool LineNumbering() const;
    void setLineNumbering(bool on);
    bool DisplayLeftMargin() const;
    void setDisplayLeftMargin(bool on);
    bool DisplayWhitespace() const;
    void setDisplayWhitespace(bool on);
    bool BraceMatching() const;
    void setBraceMatching(bool on);
    bool RowHighlight() const;
    void setRowHighlight(bool on);

 public Q_SLOTS:
    // What the menus call on a document; frmDocumentCommands.cpp states which of it acts in which mode.
    void Undo();
    void Redo();
    void Cut();
    void Copy();
    void Paste();
    void SelectAll();
    void SelectLine();
    void SelectWord();
    void SelectPara();
    void SelectBlock();
    void ToUppercaseSel();
    void ToLowercaseSel();
    void ToUppercase();
    void ToLowercase();
    void ToCapitalize();
    void LineCut();
    void LineDelete();
    void LineDeleteToStart();
    void LineDeleteToEnd();
    void AlignLeft();
    void AlignRight();
    void AlignCenter();
    void TrimTailed();
    void SortLineAscending();
    void SortLineDescending();
    void Indent();
    void Unindent();
    void TabsToSpaces();
    void SpacesToTabs();
    void SetRepeatCount();
    void GotoLine();
    void GotoPage();
    void GotoOffset();
    void CountAll();
    void IncreaseFontSize();
    void DecreaseFontSize();
    void DefaultFontSize();
    void Properties();
    void PrintContent();
    void PrintSetup();
    void Spelling();
    void RecordMarco();
    void ExecMacro(int n);
    void Find();
    void ReplaceText();
    void IncrementalSearch();
    void ReverseIncrementalSearch();
    void FindNext(const QString& pFindText);
    void FindPrev(const QString& pFindText);
    void ToggleBookmark();
    void NextBookmark();
    void PrevBookmark();
    void FirstBookmark();
    void LastBookmark();
    void ClearAllBookmark();
    void DeleteBookmark();

 Q_SIGNALS:
    /// The changed or locked state has changed.
    void FileChange(frmDocument* document);
    /// Each edit.
    void DocChange(frmDocument* document);
    void SelChange(frmDocument* document);
    /// The result of GetCursorPos may have changed; emitted once for an edit that moves the caret too.
    void PositionChange(frmDocument* document);
    /// A text for the status bar; empty: there is none any more.
    void Notice(const QString& text);
    /// The same for a text that disappears by itself.
    void PassingNotice(const QString& text);
    /// What limitations() returns may be another text.
    void LimitationsChange(frmDocument* document);
    /// The next command of the text view will be carried out another number of times.
    void RepeatCountChange(frmDocument* document);
    /// The properties dialog of the text view has changed how text is shown.
    void ViewChange(frmDocument* document);
    /// The user wants to see what the recovered changes are.
    void DifferencesRequest(frmDocument* document);
    /// The hex view requests the desktop's properties of a file, the desktop's calculator, or the choice of the
    /// program's language.
    void PropertiesRequest(const QString& path);
    void CalculatorRequest();
    void LanguageRequest();
    /// A find or replace dialog of the document has searched, or was closed after it had searched.
    void AfterFind(const QString& text, bool caseSensitive, bool regExp, bool wholeWord);

 protected:
    void closeEvent(QCloseEvent* event) override;

 private:
    enum class Life { Open, Unloading, Unloaded };

    void layOut();
    void connectTextView();
    void connectHexView();
    void makeMenus();
    void showMenu(const QString& key, const QPoint& globalPosition);
    bool loadChosenView(const QString& path, bool readOnly, bool checkBinary, bool textMode);
    DocumentView& viewFor(bool text) const;
    DocumentView& visibleView() const;
    DocumentView& savedView() const;
    void bringUp(DocumentView& chosen);
    void takeFile(const QString& path, bool readOnly);
    void takeSaved(const QString& path, const DocumentView& view);
    void takeFileState(bool saved);
    RecoveryOutcome bringBackText(FoundJournal& found, RecoveredAs as);
    RecoveryOutcome bringBackBytes(FoundJournal& found);
    void dropChanges(bool ofBytes);
    void leaveChanges(bool ofBytes);
    void keepBytes(const DocumentView& loaded, const std::optional<FileState>& state);
    bool settleChanges(bool toText);
    bool askToReload();
    void refreshUpdateTimes();
    void MarkChanged();
    void inTextMode(void (rtCM::*operation)());
    void inHexMode(void (ucHex::*operation)());
    void changeLinesBy(void (rtCM::*operation)());
    void changeLines(QString (*operation)(const QString& text));
    void RefreshLineColours();
    void refreshLines(qint64 beyondLast);
    void reportDialogSearch();
    void reportHexSearch(const QString& text, qint16 findType);
    QString checkText();
    static void answerSearch(bool found, const QPointer<frmDocument>& alive);
    void unload();
    void keepJournal();
    void takeRecovered(const JournalBase& base, RecoveredAs as);
    void keepApart(const FoundJournal& found);
    void showRecoveredBar(const QString& sentence);
    void hideRecoveredBar();
    void discardRecovered();

    Prompts& m_prompts;
    const Options& m_options;
    const DocumentServices& m_services;
    rtCM* m_text;
    std::unique_ptr<HexView> m_hex;
    std::unique_ptr<HexJournal> m_hexJournal;
    ContextMenus* m_menus = nullptr;
    std::vector<DocumentView*> m_views;
    std::unique_ptr<DocumentJournal> m_journal;  ///< of the text view; null: no journals are kept
    RecoveredBar* m_recoveredBar = nullptr;
    bool m_isUntouchedRecovery = false;
    bool m_leavesChanges = false;  ///< a load that replaces the changes leaves their journal for the next start
    QString m_recoveredPath;
    const DocumentView* m_holder = nullptr;  ///< the view that holds the file
    std::optional<FileState> m_fileState;    ///< that the user knows of
    PositionReport m_positionReport;
    int m_icon = 0;
    bool m_closeGreyed = false;
    int m_loads = 0;            ///< operations that run the event loop
    int m_openings = 0;         ///< those of them that load a file
    bool m_wasRefused = false;  ///< a save, while a file was being loaded
    Life m_life = Life::Open;
};
