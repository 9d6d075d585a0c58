#pragma once

#include "document/DocumentHost.h"
#include "shell/frame/FrameLists.h"
#include "shell/frame/FrameServices.h"

#include <functional>
#include <memory>
#include <vector>

struct CommandTarget;
struct FrameStep;
struct House;

/// The one top-level window: a frame with any number of documents as child windows and a tab for each. Owned by the
/// program. It creates its parts (House), connects them and forwards to them; the classes beside it do the work. Close
/// events are ignored while an operation runs that disables Close; nothing else prevents the frame from closing.
class frmMain : public FrameLists, public DocumentHost {
    Q_OBJECT
    Q_PROPERTY(QString ProjectFilename MEMBER ProjectFilename)
    Q_PROPERTY(bool AbortFlag READ AbortFlag)
    Q_PROPERTY(int FilesFound READ FilesFound)
    Q_PROPERTY(int FilesSearched READ FilesSearched)

 public:
    explicit frmMain(const FrameServices& services);
    ~frmMain() override;

    /// Path of the open project, empty without one.
    QString ProjectFilename;

    /// Loads everything, in its order; the frame must be shown after it.
    void Load();
    bool isLoaded() const { return m_loaded; }

    // The end from outside (frmMainUnload.cpp): by a signal or with the desktop session.
    /// Writes session and lists as the end of the program does, with all documents open and without a question. Without
    /// effect while the frame is still being loaded; after it was closed, the session is not written again.
    void writeKept();
    /// writeKept(), and then `end`, which has to end the process: now, or when the operation has ended that disables
    /// Close, but in a moment in any case. May be called while a modal box or a menu is shown.
    void endFromOutside(std::function<void()> end);
    /// Whether the frame has closed all documents and written its lists.
    bool hasEnded() const { return m_hasEnded; }

    Q_INVOKABLE void OpenFileFromCmd(const QString& pFile);
    Q_INVOKABLE void NewDocument();
    Q_INVOKABLE void SaveAll();
    Q_INVOKABLE void CheckFileUpdate();
    Q_INVOKABLE bool FindOpenDocument(const QString& pFile);
    /// Every document but `pExcept`, which may be null.
    Q_INVOKABLE void CloseAll(frmDocument* pExcept);
    /// A find dialog has searched: find bar and search toggles show its text and flags.
    Q_INVOKABLE void AfterFind(const QString& pText, bool pCaseSensitive, bool pRegExp, bool pWholeWord);
    Q_INVOKABLE void SetDocumentEnv(frmDocument* pForm);
    Q_INVOKABLE void SetProjectMenus(bool pFlag);
    Q_INVOKABLE void RefreshCheckedItems();
    Q_INVOKABLE void UpdateMacroMenu();

    // The search across files (frmMainProcedures.cpp); a search runs the event loop until it has ended.
    Q_INVOKABLE void ShowSearchInFiles(const QString& pDir);
    void StartSearch(const QString& pPath, const QString& pFilter, bool pSubDir, const QString& pSearch, bool pRegExpOn,
                     bool pCaseSensitiveOn, bool pPreserveCase, bool pWholeWordOn, int pOption, bool pSearchOnly,
                     const QString& pReplaceText, bool pListResults);
    Q_INVOKABLE void AbortSearch();
    bool AbortFlag() const;
    int FilesFound() const;
    int FilesSearched() const;

    // The reports of a document, and single steps of the procedures above (frmMainProcedures.cpp).
    Q_INVOKABLE void AddDocumentTab(frmDocument* pForm);
    /// The document has become the active child.
    Q_INVOKABLE void ActiveFormChange(frmDocument* pForm);
    /// Its cursor moved. Shows only while it is the active one.
    Q_INVOKABLE void SelChange(frmDocument* pForm);
    /// Its changed or locked state moved.
    Q_INVOKABLE void FileChange(frmDocument* pForm);
    /// It was edited, which concerns nothing of the frame.
    Q_INVOKABLE void DocChange(frmDocument* pForm);
    Q_INVOKABLE void ShowCursorPosition(frmDocument* pForm);
    Q_INVOKABLE void ShowDocumentInfo(frmDocument* pForm);
    Q_INVOKABLE void CheckLangMenu(frmDocument* pForm) override;
    /// Greys the Close item of the form, the frame or a document: its close events are ignored. For the frame it nests.
    Q_INVOKABLE void EnableSystemClose(QWidget* pForm, bool pEnable);
    Q_INVOKABLE void CheckMenuItem(const QString& pMenu, bool pChecked);
    Q_INVOKABLE void SetWholeWordOption(bool pOn);
    Q_INVOKABLE void SetRegExpOption(bool pOn);
    Q_INVOKABLE void SetCaseOption(bool pOn);
    Q_INVOKABLE void SetContinueSearchOption(bool pOn);
    Q_INVOKABLE void AddSearchKey(const QString& pText, bool pMoveToTop);

    // Kept for callers from outside, without effect: the list of documents in the Window menu is created again whenever
    // the menu opens. `pKey` is a document's key or file.
    Q_INVOKABLE void AddMenu(const QString& /*pCaption*/, const QString& /*pKey*/) {}
    Q_INVOKABLE void SetMenuCaption(const QString& /*pCaption*/, const QString& /*pKey*/) {}
    Q_INVOKABLE void UnloadMenuItem(const QString& /*pKey*/) {}

    Q_INVOKABLE void OpenFile(const QString& path, int flags, bool checkBinary, bool openTextMode) override;
    Q_INVOKABLE void SaveDocument(frmDocument* document, bool activeTab, int format) override;
    Q_INVOKABLE void SetTabCaption(frmDocument* document, bool activeTab) override;
    Q_INVOKABLE void SetEditModeIcon(frmDocument* document) override;
    Q_INVOKABLE void ChangeReadOnly() override;
    Q_INVOKABLE void DocClose(frmDocument* document) override;
    Q_INVOKABLE void DelTab(frmDocument* document) override;

 protected:
    void closeEvent(QCloseEvent* event) override;
    void dragEnterEvent(QDragEnterEvent* event) override;
    void dropEvent(QDropEvent* event) override;
    House& house() const override { return *m_house; }

 private:
    friend class FrameFixture;  // the tests use the parts of the frame

    void connectListeners();
    void addKeys();
    void addKey(const char* key, std::function<void()> action);
    void run(const CommandTarget& target);
    std::vector<FrameStep> loadSteps();
    std::vector<FrameStep> unloadSteps();
    std::vector<FrameStep> keepingSteps();

    FrameServices m_services;
    std::unique_ptr<House> m_house;
    bool m_loaded = false;
    bool m_isComplete = false;  ///< the load sequence has ended
    bool m_unloaded = false;    ///< the end has begun
    bool m_hasEnded = false;
    bool m_endsFromOutside = false;
};
