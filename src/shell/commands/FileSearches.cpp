#include "shell/commands/FileSearches.h"

#include "document/DocumentServices.h"
#include "document/frmDocument.h"
#include "document/rtCM.h"
#include "editor/control/SearchHistory.h"
#include "platform/Yield.h"
#include "search/results/ucSearchResults.h"
#include "shell/bars/SearchPanel.h"
#include "shell/bars/StatusPanels.h"
#include "shell/commands/ProjectCommands.h"
#include "shell/commands/SearchedTexts.h"
#include "shell/documents/ActiveDocument.h"
#include "shell/documents/DocumentOpening.h"
#include "shell/documents/MdiChildren.h"
#include "shell/documents/SystemClose.h"
#include "shell/start/IgnoringErrors.h"
#include "workspace/panel/PanelLink.h"

#include <algorithm>

namespace {

ucSearchResults& makeResults(const FileSearches::Parts& parts) {
    auto* results = new ucSearchResults(parts.services.prompts, &parts.panel);
    results->setObjectName(u"ucSearchResults1"_qs);
    parts.panel.hold(results);
    return *results;
}

}  // namespace

FileSearches::FileSearches(const Parts& parts)
    : m_parts(parts),
      m_results(makeResults(parts)),
      m_search({*this, *this, m_results, parts.services.prompts, parts.window}) {
    QObject::connect(&m_results, &ucSearchResults::ItemAction, &m_search,
                     [this](const QString& file, const QString& tag, const QString& flag) {
                         ignoringErrors("ItemAction", [&] { ItemAction(file, tag, flag); });
                     });
}

FileSearches::~FileSearches() = default;

// Dialogs

/// One object each, created when it is first needed.
template <typename Form>
Form& FileSearches::form(Form*& form) {
    if (form == nullptr)
        form = new Form(m_parts.services.prompts, &m_parts.window);
    return *form;
}

void FileSearches::FindInFiles() {
    ShowSearchInFiles({});
}

void FileSearches::ShowSearchInFiles(const QString& pDir) {
    if (const auto request = ask(m_searchForm, pDir))
        StartSearch(*request);
}

void FileSearches::ReplaceInFiles() {
    if (const auto request = ask(m_replaceForm, {}))
        StartSearch(*request);
}

/// The frame is not shown before it has loaded, and the search would run for all that time without it.
void FileSearches::searchAfterLoad(const QString& directories) {
    const auto request = ask(m_searchForm, directories);
    if (!request)
        return;
    const auto start = [this, request] { StartSearch(*request); };
    QMetaObject::invokeMethod(&m_search, start, Qt::QueuedConnection);
}

/// Nothing when the user wants no search, or one is running, whose window comes to the front.
template <typename Form>
std::optional<SearchRequest> FileSearches::ask(Form*& shown, const QString& directories) {
    if (m_search.isRunning()) {
        m_search.StartSearch({});
        return std::nullopt;
    }
    SearchDialog& dialog = form(shown);
    if (!dialog.ask(hasProject(), directories))
        return std::nullopt;
    yieldOnce();
    return dialog.request();
}

void FileSearches::StartSearch(const SearchRequest& request) {
    if (!m_search.isRunning()) {
        SearchHistory::ofFinds().add(request.text);
        if (request.replaces)
            SearchHistory::ofReplacements().add(request.replacement);
    }
    m_search.StartSearch(request);
}

// What the search asks of the frame

void FileSearches::showResults() {
    m_parts.panel.setShown(true);
}

void FileSearches::setResultsTitle(const QString& title) {
    m_parts.panel.setTitle(title);
}

void FileSearches::enableClose(bool on) {
    m_parts.projects.hold(!on);
    m_parts.systemClose.enable(on);
}

void FileSearches::notice(const QString& sentence) {
    m_parts.status.ShowNotice(sentence);
}

std::vector<std::unique_ptr<SearchableText>> FileSearches::openDocuments() {
    std::vector<std::unique_ptr<SearchableText>> texts;
    for (frmDocument* document : m_parts.children.documents())
        texts.push_back(std::make_unique<SearchedDocument>(document));
    return texts;
}

HiddenEditor& FileSearches::hiddenEditor() {
    if (!m_hidden) {
        auto* view = new rtCM(m_parts.services, &m_parts.window);
        view->setObjectName(u"rtCM1"_qs);
        view->hide();
        m_hidden = std::make_unique<SearchedView>(view);
    }
    return *m_hidden;
}

bool FileSearches::hasProject() const {
    return !m_parts.projectFilename.isEmpty();
}

int FileSearches::projectItemCount() const {
    return m_parts.sidePanel.PjtItemCount();
}

SearchScope::ProjectItem FileSearches::projectItem(int index) const {
    ProjectItem item;
    m_parts.sidePanel.PjtItem(index, item.name, item.type);
    return item;
}

// Results

/// A step that fails does not keep the next from being done. A tag without a match, "-1" or none, only opens the file,
/// and the place in it stays.
void FileSearches::ItemAction(const QString& pFile, const QString& pTag, const QString& pFlag) {
    const QStringList fields = pTag.split(u',');
    const auto number = [&fields](qsizetype at) { return fields.value(at).toLongLong(); };
    const QList<frmDocument*>& documents = m_parts.children.documents();
    const auto open = std::ranges::find(documents, pFile, [](const frmDocument* each) { return each->filename; });
    const bool isOpen = open != documents.end();
    const bool isInFront = isOpen && *open == m_parts.active.get();
    ignoringErrors("openMatch", [&] {
        if (isOpen)
            m_parts.active.activate(*open);
        else
            m_parts.opening.OpenFile(pFile, 0, true, true);
    });
    // Not for each of many matches of the same document.
    if (!isInFront)
        yieldOnce();
    frmDocument* document = m_parts.active.get();
    if (document == nullptr || fields.size() < 3)
        return;
    ignoringErrors("GotoTextLine", [&] { document->GotoTextLine(number(0)); });
    ignoringErrors("selectMatch", [&] {
        document->setSelStart(number(1));
        document->setSelLength(number(2));
    });
    if (pFlag == u"BOOKMARK")
        ignoringErrors("EnableBookmarkAt", [&] { document->EnableBookmarkAt(number(0), true); });
}
