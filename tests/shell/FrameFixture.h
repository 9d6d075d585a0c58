#pragma once

#include "document/DocumentServices.h"
#include "document/EditorGlobals.h"
#include "document/frmDocument.h"
#include "document/rtCM.h"
#include "editor/control/CommandNumbers.h"
#include "keys/GlobalObject.h"
#include "keys/HotKeys.h"
#include "settings/Options.h"
#include "settings/Settings.h"
#include "settings/registry/MemoryRegistry.h"
#include "shell/bars/DocumentTabs.h"
#include "shell/bars/StatusPanels.h"
#include "shell/bars/TabStrip.h"
#include "shell/commands/CommandEntries.h"
#include "shell/commands/MenuSlots.h"
#include "shell/commands/MenuText.h"
#include "shell/documents/MdiChildren.h"
#include "shell/frame/House.h"
#include "shell/frame/frmMain.h"
#include "support/ScriptedPrintDialogs.h"
#include "support/ScriptedPrompts.h"
#include "workspace/host/WorkspaceServices.h"
#include "workspace/panel/PanelLink.h"

#include <QAction>
#include <QApplication>
#include <QFile>
#include <QMdiSubWindow>
#include <QMenu>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <QTest>

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <memory>
#include <stdexcept>

/// A side panel that records the calls to it.
class NotedExplorer : public PanelLink {
 public:
    QStringList calls;
    bool busy = false;
    bool fails = false;  ///< SetFile throws, once it is noted

    QStringList take() { return std::exchange(calls, {}); }

    void InitObjects() override { calls << u"InitObjects"_qs; }
    void AddFile(const QString& caption, const QString& key) override {
        calls << u"AddFile %1 %2"_qs.arg(caption, key);
    }
    void SetFile(const QString& file, const QString& key, int image) override {
        calls << u"SetFile %1 %2 %3"_qs.arg(file, key).arg(image);
        if (fails)
            throw std::runtime_error("the panel is not ready");
    }
    void RemoveFile(const QString& key) override { calls << u"RemoveFile "_qs + key; }
    void FileSelected(const QString& key) override { calls << u"FileSelected "_qs + key; }
    bool Busy() const override { return busy; }
    void OpenSelectedFiles() override { calls << u"OpenSelectedFiles"_qs; }
    void setDefaultSysIcon(bool on) override { calls << u"setDefaultSysIcon %1"_qs.arg(on); }

    QWidget* widget() override { return nullptr; }
    void OpenTab(int pTab) override { calls << u"OpenTab %1"_qs.arg(pTab); }
    void CloseTab(int pTab) override { calls << u"CloseTab %1"_qs.arg(pTab); }
    void OpenAllTabs(bool) override { calls << u"OpenAllTabs"_qs; }
    void ClearExplorer() override { calls << u"ClearExplorer"_qs; }
    void SetProjectName(const QString& pPath, const QString& pName) override {
        calls << u"SetProjectName %1 %2"_qs.arg(pPath, pName);
    }
    void AddProjectItem(const QString& pName, const QString& pType) override {
        calls << u"AddProjectItem %1 %2"_qs.arg(pName, pType);
    }
    void PjtItem(int, QString& pName, QString& pType) const override {
        pName.clear();
        pType.clear();
    }
    int PjtItemCount() const override { return 0; }
    void GotoPath(const QString& pKey) override { calls << u"GotoPath "_qs + pKey; }
    QStringList SaveItem(bool) const override { return {}; }
    void RestoreItem(const QString& pLine) override { calls << u"RestoreItem "_qs + pLine; }
};

/// A whole frame with scripted answers, a registry in memory and a folder for its files.
class FrameFixture : public testing::Test {
 protected:
    /// Brings the frame up without showing it.
    void load(const QString& tail = {}) {
        FrameServices services{m_prompts,
                               m_registry,
                               m_makePanel,
                               tail,
                               [this](const char* step) { m_steps << QLatin1String(step); },
                               m_programFolder.path(),
                               m_shareFolder,
                               m_fileExists,
                               m_printDialogs};
        services.journals = m_journals;
        m_frame = std::make_unique<frmMain>(services);
        m_frame->resize(900, 600);
        m_frame->Load();
    }

    void start(const QString& tail = {}) {
        load(tail);
        m_frame->show();
        QCoreApplication::processEvents();
        m_explorer.calls.clear();
    }

    void set(const char* key, const char* value) {
        Settings(m_registry).write(QString::fromLatin1(key), QString::fromLatin1(value));
    }

    /// Assigns the hot key Ctrl and a letter to macro `n`, as stored by an earlier run.
    void bindMacro(int n, char16_t letter) {
        HotKeys keys(GlobalObject::defaultHotKeys());
        keys.load(m_registry);
        keys.bind(Command::MacroBase + n, {{HotKeyStroke::Ctrl, QString(QChar(letter))}, {}});
        keys.save(m_registry);
    }

    /// A file of the program's own.
    QString ownFile(const char* name) const { return m_programFolder.filePath(QString::fromLatin1(name)); }
    QString path(const QString& name) const { return m_folder.filePath(name); }
    QString fileOf(const QByteArray& bytes, const QString& name = u"a.txt"_qs) const {
        QFile file(path(name));
        EXPECT_TRUE(file.open(QIODevice::WriteOnly | QIODevice::Truncate));
        file.write(bytes);
        return path(name);
    }
    QByteArray bytesOf(const QString& file) const {
        QFile opened(file);
        EXPECT_TRUE(opened.open(QIODevice::ReadOnly)) << file.toStdString();
        return opened.readAll();
    }

    EditorGlobals& globals() { return house().globals; }
    House& house() { return *m_frame->m_house; }
    const QList<frmDocument*>& documents() { return house().children.documents(); }
    frmDocument* active() { return house().children.active(); }
    TextControl& control() { return active()->GetEditor()->control(); }
    /// The same as a widget, for code that need not include the control.
    QWidget& textWidget() { return *active()->GetEditor()->focusProxy(); }
    QString text() { return active()->GetEditor()->Text(); }
    void select(qint64 anchor, qint64 caret);
    bool canUndo();
    bool isBookmarked(qint64 line);
    void execute(int command);
    void setRepeatCount(int times);
    void type(const QString& text);
    TabStrip& strip() { return *m_frame->findChild<TabStrip*>(u"TabStrip1"_qs); }
    QAction* entry(const char* name) { return house().entries.entry(name); }
    QAction* button(const char* key) { return house().entries.button(key); }
    QAction* slot(const char* array, int number) { return house().menuSlots.slot(array, number); }
    /// The captions of the slots that are in use.
    QStringList captionsOf(const char* array) {
        QStringList captions;
        for (int i = 1; const QAction* one = slot(array, i); ++i) {
            if (one->isVisible())
                captions << MenuText::captionOf(*one);
        }
        return captions;
    }
    QStringList recentFiles() { return captionsOf("mnuFiles"); }
    QAction* languageEntry(const char* name) {
        for (QAction* one : house().entries.menu("mnuLanguages")->actions()) {
            if (one->data().isValid() && MenuText::captionOf(*one) == QLatin1String(name))
                return one;
        }
        return nullptr;
    }
    void run(const char* name) { entry(name)->trigger(); }
    /// The project that was asked for last; its file does not exist, and the question about that was answered before.
    QString missingProject() {
        static const QRegularExpression asked(u"^Project '(.*)' does not exist\\."_qs);
        return m_prompts.questions.isEmpty() ? QString() : asked.match(m_prompts.questions.takeLast()).captured(1);
    }
    void open(const QString& file, int flags = 0) { m_frame->OpenFile(file, flags, true, true); }

    QStringList tabs() {
        QStringList texts;
        for (int i = 0; i < strip().count(); ++i)
            texts << strip().tabText(i);
        return texts;
    }

    QTemporaryDir m_folder;
    QTemporaryDir m_programFolder;
    QString m_shareFolder;
    FileLookup::Exists m_fileExists = fileExists;  ///< called in another thread
    ScriptedPrompts m_prompts;
    ScriptedPrintDialogs m_printDialogs;
    MemoryRegistry m_registry;
    Journals* m_journals = nullptr;  ///< outlives the frame; null: unsaved changes are not kept
    NotedExplorer m_explorer;
    FrameServices::PanelMaker m_makePanel = [this](const WorkspaceServices&) -> PanelLink& { return m_explorer; };
    QStringList m_steps;
    std::unique_ptr<frmMain> m_frame;
};
