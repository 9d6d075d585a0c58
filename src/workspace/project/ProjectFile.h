#pragma once

#include <QString>
#include <QStringList>

#include <optional>

/// A row of a project: a file with its path, or a folder with its folder tree key.
struct ProjectItem {
    QString type;  ///< "FILE" or "FOLDER"
    QString key;

    bool operator==(const ProjectItem&) const = default;
};

/// State of the side panel in a project file.
struct PanelStatus {
    bool visible = false;
    std::optional<int> left;  ///< of the splitter, in twips; nothing when the file has no number there

    bool operator==(const PanelStatus&) const = default;
};

/// What a project file holds, each part as the lines of its section.
struct ProjectContent {
    PanelStatus status;
    QStringList panel;  ///< project items, selected folder and tabs, with their marker lines, as the panel gives them
    QStringList openFiles;  ///< document records
};

/// The text form of a project: sections of lines, each section after a marker line that starts with "<<". Nothing here
/// touches a file. A key or path that contains a tab or a line break cannot stand in a line and is left out.
namespace ProjectFile {

/// What a line belongs to.
enum class Section { None, ExplorerStatus, ProjectItems, Explorer, TabPosition, OpenFiles };

/// The marker line that opens the section; empty for None.
QString marker(Section section);

/// Goes through the lines of a project file in their order.
class Reader {
 public:
    /// Takes the next line. Returns its section when the line is one of a known section that is to be read, and None
    /// for marker lines, blank lines and those of unknown sections. A line that starts with "<<" begins a section;
    /// markers are compared exactly.
    Section take(const QString& line);

 private:
    Section m_section = Section::None;
};

/// The line of a project item; nothing when it cannot be written.
std::optional<QString> itemLine(const ProjectItem& item);
/// Nothing when the line has no tab; fields after the second are ignored.
std::optional<ProjectItem> readItem(const QString& line);

QString statusLine(const PanelStatus& status);
/// Nothing when the line has no tab.
std::optional<PanelStatus> readStatus(const QString& line);

/// All lines of the file.
QStringList lines(const ProjectContent& content);

}  // namespace ProjectFile
