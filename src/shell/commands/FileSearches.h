#pragma once

#include "search/SearchAcrossFiles.h"
#include "search/forms/frmReplaceInFiles.h"
#include "search/forms/frmSearchInFiles.h"
#include "search/host/SearchHost.h"
#include "search/host/SearchScope.h"

#include <QString>

#include <memory>
#include <optional>

class ActiveDocument;
class DocumentOpening;
class MdiChildren;
class PanelLink;
class ProjectCommands;
class QWidget;
class SearchPanel;
class SearchedView;
class StatusPanels;
class SystemClose;
class ucSearchResults;
struct DocumentServices;

/// The commands of the search across files: its dialogs, the search itself, and what the user does with its results.
/// It gives the search the documents, the project and the panel of the frame. Owned by the frame. Its commands run the
/// event loop.
class FileSearches : public SearchHost, public SearchScope {
 public:
    struct Parts {
        QWidget& window;  ///< the frame
        QString& projectFilename;
        const DocumentServices& services;
        MdiChildren& children;
        ActiveDocument& active;
        DocumentOpening& opening;
        SystemClose& systemClose;
        StatusPanels& status;
        SearchPanel& panel;
        PanelLink& sidePanel;
        ProjectCommands& projects;
    };
    /// All outlive this object.
    explicit FileSearches(const Parts& parts);
    ~FileSearches() override;

    void FindInFiles();
    void ReplaceInFiles();
    /// The same as FindInFiles() with directories to begin with.
    void ShowSearchInFiles(const QString& pDir);
    /// The same while the frame loads: the search itself begins in the event loop afterwards.
    void searchAfterLoad(const QString& directories);

    SearchAcrossFiles& search() { return m_search; }
    void StartSearch(const SearchRequest& request);
    /// What the results ask for: the match is shown in its document, and its line is marked for "BOOKMARK".
    void ItemAction(const QString& pFile, const QString& pTag, const QString& pFlag);

 private:
    template <typename Form>
    Form& form(Form*& form);
    template <typename Form>
    std::optional<SearchRequest> ask(Form*& shown, const QString& directories);

    void showResults() override;
    void setResultsTitle(const QString& title) override;
    void enableClose(bool on) override;
    void notice(const QString& sentence) override;

    std::vector<std::unique_ptr<SearchableText>> openDocuments() override;
    HiddenEditor& hiddenEditor() override;
    bool hasProject() const override;
    int projectItemCount() const override;
    ProjectItem projectItem(int index) const override;

    Parts m_parts;
    ucSearchResults& m_results;
    SearchAcrossFiles m_search;
    frmSearchInFiles* m_searchForm = nullptr;
    frmReplaceInFiles* m_replaceForm = nullptr;
    std::unique_ptr<SearchedView> m_hidden;
};
