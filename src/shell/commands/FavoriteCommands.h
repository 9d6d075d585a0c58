#pragma once

class ProjectLists;
class Prompts;
class QString;
class QWidget;

/// The commands that add the open project to the favourites and remove it from them. Owned by the frame.
class FavoriteCommands {
 public:
    /// `window` is the parent of boxes; `projectFilename` is the frame's.
    FavoriteCommands(QWidget& window, Prompts& prompts, const QString& projectFilename, ProjectLists& projects);

    /// Adds a project that was not saved yet too, by the name that stands for its path.
    void AddFavorite();
    void DeleteFavorite();

 private:
    QWidget& m_window;
    Prompts& m_prompts;
    const QString& m_projectFilename;
    ProjectLists& m_projects;
};
