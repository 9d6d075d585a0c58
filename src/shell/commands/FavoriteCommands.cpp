#include "shell/commands/FavoriteCommands.h"

#include "shell/session/ProjectLists.h"
#include "widgets/Prompts.h"

FavoriteCommands::FavoriteCommands(QWidget& window, Prompts& prompts, const QString& projectFilename,
                                   ProjectLists& projects)
    : m_window(window), m_prompts(prompts), m_projectFilename(projectFilename), m_projects(projects) {}

void FavoriteCommands::AddFavorite() {
    if (m_projectFilename.isEmpty())
        m_prompts.message(&m_window, u"Please save the current project before adding to the favorites."_qs);
    else
        m_projects.AddFavProject(m_projectFilename);
}

void FavoriteCommands::DeleteFavorite() {
    if (m_projectFilename.isEmpty())
        return;
    // The blank before the second quotation mark belongs to the text.
    const QString asked = u"Delete project \"%1 \" from favorites ?"_qs.arg(ProjectDisplayName(m_projectFilename));
    if (m_prompts.askYesNo(&m_window, asked))
        m_projects.DeleteFavProject(m_projectFilename);
}
