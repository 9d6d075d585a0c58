#pragma once

#include "hex/HexParts.h"
#include "hex/bytes/BlockExport.h"
#include "hex/bytes/HexBlock.h"
#include "hex/bytes/HexChanges.h"
#include "hex/bytes/HexFindState.h"
#include "hex/bytes/HexPaging.h"
#include "hex/bytes/HexStorage.h"
#include "hex/bytes/HexUndoLog.h"
#include "hex/bytes/WorkingCopy.h"
#include "hex/find/HexFindTarget.h"
#include "hex/grid/Grid.h"

#include <QPointer>
#include <QWidget>

class Prompts;
struct Options;
class QKeyEvent;

/// One file shown and edited byte by byte: a pane of hex digits and one of characters side by side, kept in step. Reads
/// and writes a working copy; the user's file changes by SaveFile() alone, and its length never. Belongs to a document.
///
/// An edit by a key goes into the copy at once and into the undo log. Replacing and filling do not: they leave no undo
/// and do not set Modified. Loading and saving yield after each block; the view may go meanwhile. Errors are told here.
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
    ~ucHex() override;

    /// False: the file has no byte, then the view stays as it was; or it can't be loaded, then the view is shut.
    Q_INVOKABLE bool OpenFile(const QString& pFileName);
    /// Writes the copy over the file when it was modified, or with `force` in any case.
    Q_INVOKABLE bool SaveFile(const QString& pFileName, bool force);

    bool FileOpen() const { return m_fileOpen; }
    bool Modified() const { return m_modified; }
    bool Locked() const { return m_locked; }
    void setLocked(bool locked) { m_locked = locked; }
    bool OffsetHexMode() const { return m_offsetHexMode; }
    /// 1: the hex pane has the focus, 2: the text pane, 0: none had it yet.
    int ActiveGrid() const { return m_activeGrid; }
    FilePosition FilePointer() const { return m_paging.FilePointer(); }
    QString TempFileName() const { return m_copy.name(); }
    /// Where cmdSaveAs() writes to. Empty unless somebody sets it, and nobody in the program does: its own saving under
    /// another name is SaveFile().
    QString SaveAsName() const { return m_saveAsName; }
    void setSaveAsName(const QString& name) { m_saveAsName = name; }

    /// "Pg 1/3, Pos 0/960"
    Q_INVOKABLE QString GetCursorPos() const;

    /// Each search gives the position of the match, -1 when there is none, and shows it in the top row.
    Q_INVOKABLE int FindDown(const QString& pStr, qint16 pFindType) override;
    Q_INVOKABLE int FindUp(const QString& pStr, qint16 pFindType) override;
    /// With an empty text the last search again; else from the hex pane a byte sequence, from the other a text.
    Q_INVOKABLE bool FindNextStr(const QString& text);
    Q_INVOKABLE bool FindPrevStr(const QString& text);
    Q_INVOKABLE int CountBytes(const QString& pStr, qint16 pFindType) override;
    Q_INVOKABLE int MarkAll(const QString& pStr, qint16 pFindType) override;
    Q_INVOKABLE int ReplaceAll(const QString& pFind, const QString& pReplace, qint16 pFindType) override;
    Q_INVOKABLE void ReplaceBytes(const QString& pHexText, int position) override;

    Q_INVOKABLE void AddBookMark(const QString& hexText, const QString& decimalText, bool silent);

    /// The places that the dialogs ask for; 32-bit numbers, others do nothing.
    Q_INVOKABLE void gotoOffset(qint64 offset);
    Q_INVOKABLE void gotoPage(qint64 page);
    void copyBlock(Offset one, Offset other, BlockForm form);
    void fillBlock(Offset one, Offset other, quint8 byte);

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
    /// A byte of which one digit was typed is written with that one.
    void finishNibble();
    void cmdGoOffset();
    void cmdGoPage();
    void SelectBlock();
    /// Writes the copy over SaveAsName(), whether it was modified or not.
    void cmdSaveAs();
    /// These three need the desktop or the settings, so whoever hears the request does it.
    void cmdProperties();
    void cmdCalculator();
    void cmdLanguage();
    void cmdConversion();
    void cmdCharTable();
    void cmdBookmark();
    /// What older scripts call.
    void cmdBookmark_old();
    void cmdFirstBookmark();
    void cmdLastBookmark();
    void cmdPreviousBookmark();
    void cmdNextBookmark();
    void cmdClearBookmark();
    void DeleteBookmark();
    void FindNextItem();
    /// The form for finding, open at the page that fits the pane in use. The flag is not looked at.
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
    /// Key "HEX" or "BOOK"; the position is the pointer's in the parent's coordinates.
    void ContextMenuRequest(int x, int y, const QString& key);
    /// The desktop's properties of a file; the path is empty.
    void PropertiesRequest(const QString& path);
    /// The desktop's calculator.
    void CalculatorRequest();
    /// The chooser of the program's language; the choice goes to setting "Language" of section "General".
    void LanguageRequest();

 protected:
    void changeEvent(QEvent* event) override;
    /// Goes on to the pane in use.
    void focusInEvent(QFocusEvent* event) override;

 private:
    int filePointerNumber() const { return static_cast<int>(FilePointer().number()); }
    int pageRows() const { return HexPaging::PageRows; }
    int rowHeight() const;
    bool ctrlDown() const { return m_ctrlDown; }
    bool scrollSync() const { return m_scrollSync; }

    void connectGrid(int number);
    void connectPane(int number);
    void connectParts();
    void DisableHexControls();
    void EnableHexControls();
    void setControlsEnabled(bool enabled);
    bool LoadFile(const QString& pFileName);
    CopyProgress SetProgress();
    bool writeOver(const QString& target);

    void pageAfter(bool (HexPaging::*step)());
    void turnWheel(int notches);
    void fillCells();
    /// Whether a byte of the page is told apart as typed.
    bool isChanged(HexCell cell) const;
    void forgetChanges();
    void PaintOffsets();
    QStringList offsetTexts(bool toEndOfFile) const;
    void toggleOffsetMode();
    void toggleEditMode();
    void paintEditMode(bool isHex);
    void showCell(HexCell cell);
    void enterCell(int number, HexCell cell);
    void enterPane(int number);
    /// Gives it the keyboard, or makes it the one to get it while another window has it.
    void usePane(int number);
    Grid& grid(int number) { return number == 1 ? m_grid1 : m_grid2; }
    GridPane* pane(int number) const { return number == 1 ? m_parts.PicHex : m_parts.PicText; }
    GridPane* activePane() const { return pane(m_activeGrid == 2 ? 2 : 1); }

    bool HandleKey(const QKeyEvent& event);
    bool refusesTyping() const { return m_ctrlDown || m_locked || !m_fileOpen; }
    void typeHex(const QString& text);
    void typeNibble(QChar digit);
    void typeText(const QString& text);
    /// Shows what there is, and tells why with the next pass of the event loop: an edit may be the first step of
    /// something else.
    void refuseEdit(const SystemError& error);
    void finishNibble(HexCell cell);

    /// A form over the window that the view is in; goes with the view. It is no child of the view: the area of a child
    /// window would take the keys of its tabs.
    template <typename Form, typename... Arguments>
    QPointer<Form> makeForm(Arguments&&... arguments);
    void showFindForm(const QString& key, const QString& caption);
    void placeClearOfTopRow(QWidget& form) const;
    void selectInBoth(HexCell cell);
    void repeatSearch(const QString& notFound);
    int search(const QString& text, HexFindType type, HexFindDirection direction);
    bool searchFromBar(const QString& text, HexFindDirection direction);
    int showMatch(FilePosition match);

    int selectedBookmark() const;
    void selectBookmark(int index);
    void GotoSelectedBookmark();
    void tellContextMenu(const QWidget* from, const QPoint& at, const QString& key);

    Prompts& m_prompts;
    const Options& m_options;
    HexFindState& m_findState;
    WorkingCopy m_copy;
    HexPaging m_paging;
    HexUndoLog m_undoLog;
    HexChanges m_changes;
    Grid m_grid1;
    Grid m_grid2;
    HexParts m_parts;
    int m_activeGrid = 0;
    bool m_fileOpen = false;
    bool m_modified = false;
    bool m_locked = false;
    bool m_ctrlDown = false;
    bool m_offsetHexMode = false;
    bool m_scrollSync = false;  ///< the program moves the scroll bar
    QString m_saveAsName;
    bool m_isBusy = false;  ///< a load or save is under way
};
