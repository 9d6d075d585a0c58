#include "shell/commands/ProjectCommands.h"

#include "platform/FileLookup.h"
#include "platform/Paths.h"
#include "platform/UserFileWriter.h"
#include "platform/Yield.h"
#include "platform/YieldPace.h"
#include "settings/files/OwnTextFile.h"
#include "shell/bars/SidePanel.h"
#include "shell/commands/CommandEntries.h"
#include "shell/documents/DocumentClosing.h"
#include "shell/documents/SystemClose.h"
#include "shell/session/DocumentRecords.h"
#include "shell/session/ProjectLists.h"
#include "widgets/BusyPointer.h"
#include "widgets/Prompts.h"
#include "workspace/panel/PanelLink.h"
#include "workspace/project/ProjectFile.h"

#include <QScopedValueRollback>
#include <QWidget>

#include <algorithm>
#include <exception>
#include <string_view>

using ProjectFile::Section;

namespace {

constexpr int TabCount = 3;
/// Larger files are refused. A project of a million lines is well below.
constexpr qsizetype MostBytes = 256 * 1024 * 1024;
constexpr QStringView Filter = u"Quillmark Project (*.qmp)|*.qmp";

/// Close disabled until the end of a block; what must not run meanwhile waits for it.
class CloseDisabled {
 public:
    explicit CloseDisabled(SystemClose& systemClose) : m_systemClose(systemClose) { m_systemClose.enable(false); }
    ~CloseDisabled() { m_systemClose.enable(true); }
    Q_DISABLE_COPY_MOVE(CloseDisabled)

 private:
    SystemClose& m_systemClose;
};

/// The busy pointer until the end of a block.
class Busy {
 public:
    Busy() { BusyPointer::show(); }
    ~Busy() { BusyPointer::restore(); }
    Q_DISABLE_COPY_MOVE(Busy)
};

struct ActionRow {
    QStringView action;
    QStringView name;  ///< in the title; empty: that of the file
    bool canBeRemoved;
};

constexpr ActionRow Actions[] = {
    {u"OPEN", u"", true},
    {u"SAVE", u"", true},
    {u"NEW", ProjectCommands::NewName, false},
    {u"CLOSE", u"Project", false},
};

}  // namespace

ProjectCommands::ProjectCommands(QWidget& window, QString& projectFilename, Prompts& prompts, SystemClose& systemClose,
                                 FileLookup& lookup, DocumentClosing& closing, DocumentRecords& records,
                                 ProjectLists& lists, PanelLink& panel, SidePanel& sidePanel, CommandEntries& entries)
    : m_window(window),
      m_projectFilename(projectFilename),
      m_prompts(prompts),
      m_systemClose(systemClose),
      m_lookup(lookup),
      m_closing(closing),
      m_records(records),
      m_lists(lists),
      m_panel(panel),
      m_sidePanel(sidePanel),
      m_entries(entries) {}

bool ProjectCommands::OpenProject(const QString& pFile) {
    if (m_atWork) {
        m_systemClose.whenFree([this, pFile] { OpenProject(pFile); });
        return false;
    }
    if (!isThere(pFile)) {
        const QString question =
            u"Project '%1' does not exist.\nDo you want to remove the project from the Favorites?"_qs;
        if (m_prompts.askYesNo(&m_window, question.arg(pFile)))
            m_lists.DeleteFavProject(pFile);
        return false;
    }
    const CloseDisabled noClose(m_systemClose);
    const Busy busy;
    const QScopedValueRollback atWork(m_atWork, true);
    closeWorkspace(false);
    m_projectFilename = pFile;
    rememberProject();
    ProjectChanged(u"OPEN"_qs, pFile);
    const bool read = readProject(pFile);
    if (!read)
        becomeNew();
    return read;
}

/// While the disk does not answer, the event loop runs.
bool ProjectCommands::isThere(const QString& file) {
    const CloseDisabled noClose(m_systemClose);
    const Busy busy;
    const QScopedValueRollback atWork(m_atWork, true);
    return m_lookup.exists(file);
}

/// A file that was not read must not be written over with what is open instead.
void ProjectCommands::becomeNew() {
    m_projectFilename = NewName.toString();
    ProjectChanged(u"NEW"_qs, {});
    SetProjectMenus(true);
}

bool ProjectCommands::readProject(const QString& file) try {
    const OwnTextFile::Content content = OwnTextFile::read(file, MostBytes);
    if (content.error) {
        BusyPointer::restore();
        m_prompts.message(&m_window, content.error.description);
        return false;
    }
    ProjectFile::Reader reader;
    YieldPace pace;  // each yield lays out the list of the project again
    for (const QString& line : OwnTextFile::linesOf(content.bytes)) {
        restoreLine(line, reader.take(line));
        if (pace.due())
            yieldOnce();
    }
    yieldOnce();
    SetProjectMenus(false);
    return true;
} catch (const std::exception& error) {
    BusyPointer::restore();
    m_prompts.message(&m_window, QString::fromLocal8Bit(error.what()));
    return false;
}

void ProjectCommands::restoreLine(const QString& line, Section section) {
    switch (section) {
        case Section::None:
            break;
        case Section::ExplorerStatus:
            restoreStatus(line);
            break;
        case Section::ProjectItems:
            if (const auto item = ProjectFile::readItem(line))
                m_panel.AddProjectItem(item->key, item->type);
            break;
        case Section::Explorer:
            if (m_sidePanel.isShown())
                m_panel.GotoPath(line);
            break;
        case Section::TabPosition:
            if (m_sidePanel.isShown())
                m_panel.RestoreItem(line);
            break;
        case Section::OpenFiles:
            m_records.RestoreDocRecord(line);
            break;
    }
}

void ProjectCommands::restoreStatus(const QString& line) {
    const auto status = ProjectFile::readStatus(line);
    if (!status)
        return;
    m_sidePanel.setShown(status->visible);
    if (status->visible && status->left)
        m_sidePanel.setSplitterLeft(*status->left);
}

bool ProjectCommands::WriteProjectFile(const QString& pFile) {
    BusyPointer::show();
    const ProjectContent content{
        {m_sidePanel.isShown(), m_sidePanel.splitterLeft()}, m_panel.SaveItem(), m_records.writeAll()};
    const QByteArray bytes = OwnTextFile::bytesOf(ProjectFile::lines(content));
    const std::string_view piece(bytes.constData(), static_cast<std::size_t>(bytes.size()));
    const SystemError error = UserFileWriter().write(pFile, {&piece, 1}).error;
    BusyPointer::restore();
    if (error)
        m_prompts.message(&m_window, error.description);
    return !error;
}

void ProjectCommands::CloseCurrentProject(bool pClose) {
    if (m_atWork) {
        m_systemClose.whenFree([this, pClose] { CloseCurrentProject(pClose); });
        return;
    }
    const CloseDisabled noClose(m_systemClose);
    const QScopedValueRollback atWork(m_atWork, true);
    closeWorkspace(pClose);
}

void ProjectCommands::closeWorkspace(bool leaveNone) {
    if (!m_projectFilename.isEmpty() && m_prompts.askYesNo(&m_window, u"Save the current project ?"_qs))
        WriteProjectFile(m_projectFilename);
    const Busy busy;
    m_closing.CloseAll(nullptr);
    for (int tab = 0; tab < TabCount; ++tab)
        m_panel.OpenTab(tab);
    m_panel.OpenAllTabs();
    m_panel.ClearExplorer();
    if (!leaveNone) {
        becomeNew();
        return;
    }
    m_projectFilename.clear();
    ProjectChanged(u"CLOSE"_qs, {});
    SetProjectMenus(true);
}

void ProjectCommands::ProjectChanged(const QString& pAction, const QString& pFile) {
    const auto* const row = std::ranges::find(Actions, QStringView(pAction), &ActionRow::action);
    if (row == std::end(Actions))
        return;
    m_panel.SetProjectName(pFile, row->name.isEmpty() ? ProjectDisplayName(pFile) : row->name.toString());
    m_entries.entry("mnuDeleteFavorite")->setEnabled(row->canBeRemoved);
}

bool ProjectCommands::hasOwnFile() const {
    return !m_projectFilename.isEmpty() && m_projectFilename != NewName;
}

void ProjectCommands::rememberProject() {
    if (hasOwnFile())
        m_lists.AddLRUProject(m_projectFilename);
}

void ProjectCommands::SetProjectMenus(bool changed) {
    m_entries.SetProjectMenus(m_projectFilename, changed);
}

bool ProjectCommands::writeAs(const QString& file) {
    if (!WriteProjectFile(file))
        return false;
    m_projectFilename = file;
    rememberProject();
    ProjectChanged(u"SAVE"_qs, file);
    return true;
}

void ProjectCommands::SaveProjectFile() {
    const QString file = m_projectFilename.isEmpty() ? askName(u"Save Project"_qs, {}) : m_projectFilename;
    if (!file.isEmpty() && writeAs(file))
        SetProjectMenus(false);
}

void ProjectCommands::SaveProjectFileAs() {
    const QString file = askName(u"Save Project As"_qs, m_projectFilename);
    if (!file.isEmpty())
        writeAs(file);
}

/// Asks until the name is new, or may be replaced; empty when cancelled.
QString ProjectCommands::askName(const QString& title, const QString& initial) {
    for (;;) {
        QString file = m_prompts.askFileToSave(&m_window, {title, {}, initial, Filter.toString()});
        if (file.isEmpty() || !fileExists(file) ||
            m_prompts.askYesNo(&m_window, file + u" already exist !\nOverwrite it ?"_qs))
            return file;
    }
}

void ProjectCommands::ChooseProjectToOpen() {
    const OpenAnswer answer =
        m_prompts.askFilesToOpen(&m_window, {u"Open Project"_qs, {}, {}, Filter.toString(), FileQuestion::OneFile});
    if (answer.files.isEmpty())
        return;
    const QString file = answer.files.first();
    if (!isThere(file)) {
        m_prompts.message(&m_window, u"File not exist!"_qs);
        return;
    }
    OpenProject(file);
}

void ProjectCommands::NewProject() {
    if (m_prompts.askYesNo(&m_window, u"Create [New Project] ?"_qs))
        CloseCurrentProject(false);
}

void ProjectCommands::CloseProject() {
    if (m_atWork)
        return m_systemClose.whenFree([this] { CloseProject(); });
    if (m_projectFilename.isEmpty() || !m_prompts.askYesNo(&m_window, u"Close the current project?"_qs))
        return;
    CloseCurrentProject(true);
    if (m_atWork)
        return;
    m_projectFilename.clear();
    SetProjectMenus(false);
}

void ProjectCommands::SaveProject() {
    if (hasOwnFile())
        SaveProjectFile();
    else
        SaveProjectFileAs();
}
