#pragma once

#include <QString>
#include <QStringList>

class CommandEntries;
class DocumentClosing;
class DocumentRecords;
class FileLookup;
class PanelLink;
class ProjectLists;
class Prompts;
class QWidget;
class SidePanel;
class SystemClose;

namespace ProjectFile {
enum class Section;
}

/// The commands that open, save and close projects: a project is a list of files and folders and all that was open when
/// it was saved. Owned by the frame. While a project is opened or closed, Close is disabled and the event loop runs; a
/// command for another project waits until that has ended.
class ProjectCommands {
 public:
    /// Stands for a project that was never saved.
    static constexpr QStringView NewName = u"[New Project]";

    /// `window` is the parent of boxes, `projectFilename` the frame's.
    ProjectCommands(QWidget& window, QString& projectFilename, Prompts& prompts, SystemClose& systemClose,
                    FileLookup& lookup, DocumentClosing& closing, DocumentRecords& records, ProjectLists& lists,
                    PanelLink& panel, SidePanel& sidePanel, CommandEntries& entries);

    /// Closes what is open and opens what the project holds. Returns true when the file was read through. What was
    /// opened before an error stays open, as a project that was never saved.
    bool OpenProject(const QString& pFile);
    /// The list of items, the panel and the open documents as a project file. False: it could not be written, which was
    /// reported.
    bool WriteProjectFile(const QString& pFile);
    /// Closes everything; with `pClose` no project remains, else one that was never saved.
    void CloseCurrentProject(bool pClose);
    /// Shows the name of the project after "OPEN", "SAVE", "NEW" or "CLOSE".
    void ProjectChanged(const QString& pAction, const QString& pFile);
    void SaveProjectFile();
    void SaveProjectFileAs();

    /// While a search runs, projects are neither opened nor closed: what would do so waits until Close of the frame is
    /// enabled again.
    void hold(bool on) { m_atWork = on; }

    // The commands of the menu.
    void ChooseProjectToOpen();
    void NewProject();
    void CloseProject();
    void SaveProject();

 private:
    bool isThere(const QString& file);
    bool readProject(const QString& file);
    void restoreLine(const QString& line, ProjectFile::Section section);
    void restoreStatus(const QString& line);
    void closeWorkspace(bool leaveNone);
    void becomeNew();
    QString askName(const QString& title, const QString& initial);
    bool writeAs(const QString& file);
    void SetProjectMenus(bool changed);
    void rememberProject();
    bool hasOwnFile() const;

    QWidget& m_window;
    QString& m_projectFilename;
    Prompts& m_prompts;
    SystemClose& m_systemClose;
    FileLookup& m_lookup;
    DocumentClosing& m_closing;
    DocumentRecords& m_records;
    ProjectLists& m_lists;
    PanelLink& m_panel;
    SidePanel& m_sidePanel;
    CommandEntries& m_entries;
    bool m_atWork = false;  ///< a project is being opened or closed, or a search runs
};
