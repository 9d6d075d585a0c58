#pragma once

#include "hex/HexEditMode.h"
#include "hex/HexPanes.h"
#include "hex/HexScans.h"
#include "hex/HexTyping.h"
#include "hex/bytes/HexEdits.h"
#include "hex/bytes/HexStorage.h"
#include "hex/bytes/ObservedBytes.h"
#include "hex/find/HexFindTarget.h"

#include <QWidget>

class HexEditObserver;
class HexReplay;
class Prompts;
class QKeyEvent;
enum class BlockForm;
enum class HexFindDirection : qint16;
struct HexFindState;
struct Options;

/// One file shown and edited byte by byte: a pane of hex digits and one of characters side by side. Reads and writes a
/// working copy; only SaveFile() changes the user's file, and never its length. Owned by a document.
///
/// Connects the parts of the view: the panes show and move, the typing produces bytes, the edits write and undo them.
/// Loads, saves and long searches yield, and the view may be destroyed meanwhile. Errors are reported here.
class ucHex : public QWidget, public HexFindTarget {
    Q_OBJECT
    Q_PROPERTY(int FilePointer READ filePointerNumber)
    Q_PROPERTY(int PageRows READ pageRows CONSTANT)
    Q_PROPERTY(int ActiveGrid READ ActiveGrid)
    Q_PROPERTY(bool FileOpen READ FileOpen)
    Q_PROPERTY(bool Modified READ Modified)
    Q_PROPERTY(int RowHeight READ rowHeight CONSTANT)
    Q_PROPERTY(bool CtrlDown READ ctrlDown)
    Q_PROPERTY(bool OffsetHexMode READ OffsetHexMode)
    Q_PROPERTY(bool ScrollSync READ scrollSync)
    Q_PROPERTY(bool Locked READ Locked WRITE setLocked)
    Q_PROPERTY(QString TempFileName READ TempFileName)
    Q_PROPERTY(QString SaveAsName READ SaveAsName WRITE setSaveAsName)

 public:
    /// Prompts, options and find state outlive it.
    ucHex(Prompts& prompts, const Options& options, HexFindState& findState, QWidget* parent = nullptr,
          const HexStorage& storage = {});

    /// False: the file is empty, then the view is unchanged; or it can't be loaded, then the view is closed.
    Q_INVOKABLE bool OpenFile(const QString& pFileName);
    /// Writes the copy over the file when it was modified, or with `force` in any case.
    Q_INVOKABLE bool SaveFile(const QString& pFileName, bool force);

    /// Makes edits of an earlier process again. Returns whether the bytes are to be shown then.
    using Replay = std::function<bool(HexReplay& replay)>;
    /// Loads the bytes as they were before these edits, and makes the edits again. The view then counts as modified, so
    /// that a save writes all of it. False: the view is closed, and has shown no message; or it was destroyed.
    bool bringBack(const QString& base, const Replay& replay);
    /// Is notified of each change of the bytes from now on. Null: none. It must outlive the view or be removed.
    void setEditObserver(HexEditObserver* observer);
    const HexEdits& edits() const { return m_edits; }
    const WorkingCopy& workingCopy() const { return m_copy; }

    bool FileOpen() const { return m_fileOpen; }
    /// Whether the last SaveFile() wrote the bytes: without a change it had nothing to do.
    bool wasWritten() const { return m_wasWritten; }
    bool Modified() const { return m_edits.modified(); }
    bool Locked() const { return m_locked; }
    void setLocked(bool locked) { m_locked = locked; }
    bool OffsetHexMode() const { return m_panes.offsetsAreHex(); }
    /// The pane in use, 1 or 2; 0: none had the focus yet.
    int ActiveGrid() const { return m_panes.activeNumber(); }
    FilePosition FilePointer() const { return m_panes.paging().FilePointer(); }
    QString TempFileName() const { return m_copy.name(); }
    /// The target of cmdSaveAs(). Always empty unless set; nothing in the program sets it.
    QString SaveAsName() const { return m_saveAsName; }
    void setSaveAsName(const QString& name) { m_saveAsName = name; }

    Q_INVOKABLE QString GetCursorPos() const { return m_panes.cursorText(); }  ///< "Pg 1/3, Pos 0/960"
    /// What a user has to know of the bytes in the view, in a few words; mostly empty.
    QString limitations() const;
    /// Whether nothing runs that a save would disturb. Otherwise the status bar says what does.
    bool maySave();
    QRect cursorRect() const { return m_panes.cursorRect(); }  ///< of the pane in use

    /// A match is shown in the top row.
    Q_INVOKABLE int FindDown(const QString& pStr, qint16 pFindType) override;
    Q_INVOKABLE int FindUp(const QString& pStr, qint16 pFindType) override;
    /// With an empty text the last search again; else from the hex pane a byte sequence, from the other a text.
    Q_INVOKABLE bool FindNextStr(const QString& text);
    Q_INVOKABLE bool FindPrevStr(const QString& text);
    Q_INVOKABLE int CountBytes(const QString& pStr, qint16 pFindType) override;
    Q_INVOKABLE int MarkAll(const QString& pStr, qint16 pFindType) override;
    Q_INVOKABLE int ReplaceAll(const QString& pFind, const QString& pReplace, qint16 pFindType) override;
    Q_INVOKABLE void ReplaceBytes(const QString& pHexText, int position) override;
    bool wasSearchStopped() const override { return m_scans.wasStopped(); }

    Q_INVOKABLE void AddBookMark(const QString& hexText, const QString& decimalText, bool silent);

    /// The actions of the dialogs; numbers of more than 32 bits do nothing.
    Q_INVOKABLE void gotoOffset(qint64 offset);
    Q_INVOKABLE void gotoPage(qint64 page);
    void copyBlock(Offset one, Offset other, BlockForm form);
    void fillBlock(Offset one, Offset other, quint8 byte);  ///< nothing in a locked view

 public Q_SLOTS:
    void FillGrid() override;
    void MoveFirstPage();
    void MovePreviousPage();
    void MovePreviousLine();
    void MoveNextLine();
    void MoveNextPage();
    void MoveLastPage();
    void SetOffsetPosition();
    void SetScrollPosition();
    void SaveData(int row, int col);
    void DoUndos();
    void cmdUndo();
    void cmdCopy();
    void finishNibble();  ///< a byte of which one digit was typed is complete
    void cmdGoOffset();
    void cmdGoPage();
    void SelectBlock();
    /// Writes the copy over SaveAsName(), whether it was modified or not.
    void cmdSaveAs();
    /// These three only send a request: they need the desktop or the settings.
    void cmdProperties();
    void cmdCalculator();
    void cmdLanguage();
    void cmdConversion();
    void cmdCharTable();
    void cmdBookmark();
    void cmdBookmark_old();  ///< what older scripts call
    void cmdFirstBookmark();
    void cmdLastBookmark();
    void cmdPreviousBookmark();
    void cmdNextBookmark();
    void cmdClearBookmark();
    void DeleteBookmark();
    void FindNextItem();
    /// Each opens the form at the page that fits the pane in use, whatever the value of the flag.
    void FindDialog(bool flag = false);
    void ReplaceDialog(bool flag = false);
    void cmdFindHex();
    void cmdFindText();
    void cmdReplaceHex();
    void cmdReplaceText();

 Q_SIGNALS:
    void HexEnabled();
    void HexDisabled();
    void PositionChanged();
    void DataChanged();
    void SearchDone(const QString& text, qint16 findType);
    void Notice(const QString& text);  ///< for the status bar; an empty one removes it
    void LimitationsChanged();
    /// Key "HEX" or "BOOK"; the position is the pointer's in the parent's coordinates.
    void ContextMenuRequest(int x, int y, const QString& key);
    /// The desktop's properties of a file, its calculator, and the chooser of the program's language. The path is
    /// empty.
    void PropertiesRequest(const QString& path);
    void CalculatorRequest();
    void LanguageRequest();

 protected:
    void changeEvent(QEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;  ///< the pane in use gets the focus

 private:
    int filePointerNumber() const { return static_cast<int>(FilePointer().number()); }
    int pageRows() const { return HexPaging::PageRows; }
    int rowHeight() const;
    bool ctrlDown() const { return m_ctrlDown; }
    bool scrollSync() const { return m_panes.isScrolling(); }

    void connectPanes();
    void connectPane(int number);
    void connectParts();
    void DisableHexControls();
    void EnableHexControls();
    bool openAs(const QString& path, const Replay& replay);
    bool LoadFile(const QString& pFileName, const Replay& replay);
    SystemError fillCopy(const QString& path, const Replay& replay);
    void reportHalf(HexCell cell);
    CopyProgress SetProgress();
    void setFree();
    bool writeOver(const QString& target);
    void setHasUnmarked(bool hasUnmarked);
    void pageAfter(bool (HexPaging::*step)());
    void turnWheel(int notches);
    void toggleOffsetMode();
    void toggleEditMode();
    bool HandleKey(const QKeyEvent& event);
    bool refusesTyping() const { return m_ctrlDown || m_locked || !m_fileOpen; }
    /// Shows the page unchanged, and the error later: the edit may be part of another step.
    void refuseEdit(const SystemError& error);
    void showFindForm(const QString& key, const QString& caption);
    void repeatSearch(const QString& notFound);
    int search(const QString& text, HexFindType type, HexFindDirection direction);
    bool searchFromBar(const QString& text, HexFindDirection direction);
    void GotoSelectedBookmark();
    void requestContextMenu(const QWidget* from, const QPoint& at, const QString& key);

    Prompts& m_prompts;
    const Options& m_options;
    HexFindState& m_findState;
    WorkingCopy m_copy;
    ObservedBytes m_bytes;
    HexEditObserver* m_observer = nullptr;
    HexEdits m_edits;
    HexPanes m_panes;
    HexTyping m_typing;
    HexEditMode m_editMode;
    HexScans m_scans;
    bool m_fileOpen = false;
    bool m_locked = false;
    bool m_ctrlDown = false;
    QString m_saveAsName;
    bool m_wasWritten = false;
    bool m_isBusy = false;       ///< a load or save is running
    bool m_wasRefused = false;   ///< a save, while another one was running
    bool m_hasUnmarked = false;  ///< bytes were replaced or filled since the last load or save
};
