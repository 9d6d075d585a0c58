#include "search/SearchAcrossFiles.h"

#include "platform/Yield.h"
#include "platform/YieldPace.h"
#include "search/engine/FileMatches.h"
#include "search/engine/ParallelSearch.h"
#include "search/forms/frmSearching.h"
#include "search/host/SearchHost.h"
#include "search/results/ucSearchResults.h"
#include "text/search/SearchPattern.h"
#include "widgets/Prompts.h"

#include <QElapsedTimer>
#include <QFileInfo>
#include <QLocale>
#include <QPointer>
#include <QScopeGuard>
#include <QStringList>

#include <exception>
#include <utility>

namespace {

/// How long the search waits for files before it runs the event loop again.
constexpr std::chrono::milliseconds Wait{20};
/// After a cancel, how long it waits for the matches that were found in the middle of a file.
constexpr qint64 PatienceAfterCancel = 100;
/// Files of more bytes are not loaded into the hidden editor, which the user would wait for.
constexpr qint64 MostInEditor = 64LL * 1024 * 1024;

/// Of the files that were searched when the cancel came: in a search the one in whose middle it was, in a replacement
/// each that was written.
bool countsAfterCancel(const SearchedStep& step, const SearchRequest& request) {
    const FileFinding& finding = step.finding;
    return !finding.gaveUp && finding.cancelled != request.replaces && !finding.matches.empty();
}

QString withCommas(qint64 number) {
    return QLocale(QLocale::English, QLocale::UnitedStates).toString(number);
}

/// The number right-aligned in six columns; of a longer one its last digits.
QString inSixColumns(std::size_t count) {
    return (u"      "_qs + QString::number(count)).right(6);
}

}  // namespace

SearchAcrossFiles::SearchAcrossFiles(const Parts& parts, QObject* parent) : QObject(parent), m_parts(parts) {}

SearchAcrossFiles::~SearchAcrossFiles() = default;

void SearchAcrossFiles::AbortSearch() {
    m_abort = true;
    if (m_files != nullptr)
        m_files->cancel();
    if (m_text != nullptr)
        m_text->stop();
}

void SearchAcrossFiles::StartSearch(const SearchRequest& request) {
    if (m_running) {
        m_window->show();
        m_window->raise();
        m_window->activateWindow();
        return;
    }
    const QPointer<SearchAcrossFiles> alive(this);
    m_running = true;
    m_found = m_searched = 0;
    m_listed = 0;
    m_passed = 0;
    m_silenced = false;
    m_lastFile.clear();
    m_parts.host.enableClose(false);
    m_parts.host.notice({});
    m_abort = false;
    try {
        search(request);
    } catch (const std::exception& error) {
        if (!alive)
            return;
        m_parts.prompts.message(&m_parts.window, QString::fromLocal8Bit(error.what()));
    }
    if (!alive)
        return;
    m_running = false;
    m_abort = true;
    m_parts.host.enableClose(true);
}

void SearchAcrossFiles::search(const SearchRequest& request) {
    const QPointer<SearchAcrossFiles> alive(this);
    if (m_window == nullptr) {
        m_window = new frmSearching(&m_parts.window);
        connect(m_window, &frmSearching::abortWanted, this, &SearchAcrossFiles::AbortSearch);
    }
    m_window->show();
    // An expression that is none finds nothing, and the search goes its way all the same.
    m_parts.host.notice(SearchPattern(request.text, request.flags).error().sentence);
    if (request.listsResults) {
        m_parts.results.ClearTree();
        m_parts.host.showResults();
    }
    yieldOnce();
    if (!alive)
        return;
    switch (request.in) {
        case SearchIn::FilesListed:
            SearchFileSet(request);
            break;
        case SearchIn::OpenFiles:
            SearchOpenDocuments(request);
            break;
        case SearchIn::ProjectFiles:
            SearchProjectFiles(request);
            break;
    }
    if (!alive)
        return;
    m_window->hide();
    const QString done =
        request.replaces ? u"Replace completed, changed files : "_qs : u"Search completed, files found : "_qs;
    m_parts.host.setResultsTitle(done + QString::number(m_found));
}

void SearchAcrossFiles::showProgress() {
    if (m_lastFile.isEmpty() && m_searched == 0)
        return;
    m_window->setStatus(m_lastFile, m_searched, m_found);
    m_parts.host.setResultsTitle(u"Searching '"_qs + m_lastFile + u"'"_qs);
}

void SearchAcrossFiles::yieldWhenDue(YieldPace& pace) {
    if (!pace.due())
        return;
    showProgress();
    yieldOnce();
}

// Files

void SearchAcrossFiles::SearchFileSet(const SearchRequest& request) {
    searchFiles(request, std::make_unique<FileWalk>(request));
}

void SearchAcrossFiles::SearchProjectFiles(const SearchRequest& request) {
    if (m_abort || !m_parts.scope.hasProject())
        return;
    std::vector<WalkStep> steps;
    for (int i = 1; i <= m_parts.scope.projectItemCount(); ++i) {
        const SearchScope::ProjectItem item = m_parts.scope.projectItem(i);
        const bool isFile = !item.name.isEmpty() && item.type == u"FILE";
        steps.push_back({isFile ? WalkStep::File : WalkStep::CountedOnly, item.name, {}});
    }
    searchFiles(request, std::make_unique<ListedFiles>(std::move(steps)));
}

void SearchAcrossFiles::searchFiles(const SearchRequest& request, std::unique_ptr<FileSource> source) {
    const QPointer<SearchAcrossFiles> alive(this);
    {
        ParallelSearch search(request, std::move(source));
        const auto forget = qScopeGuard([&alive] {
            if (alive)
                alive->m_files = nullptr;
        });
        m_files = &search;
        if (m_abort)
            search.cancel();
        waitForFiles(search, request);
    }
    if (!alive)
        return;
    showProgress();
    yieldOnce();
}

void SearchAcrossFiles::waitForFiles(ParallelSearch& search, const SearchRequest& request) {
    const QPointer<SearchAcrossFiles> alive(this);
    YieldPace pace;
    QElapsedTimer sinceCancel;
    while (!search.atEnd()) {
        for (SearchedStep& step : search.take(Wait)) {
            if (!take(step, request))
                return;
            yieldWhenDue(pace);
            if (!alive)
                return;
        }
        yieldWhenDue(pace);
        if (!alive)
            return;
        if (m_abort && !sinceCancel.isValid())
            sinceCancel.start();
        if (m_abort && !search.hasMoreToTake() && sinceCancel.hasExpired(PatienceAfterCancel))
            return;
    }
}

/// False: the search has ended before this step, or this object was destroyed. After a cancel every file is still taken
/// that was written.
bool SearchAcrossFiles::take(SearchedStep& step, const SearchRequest& request) {
    const QPointer<SearchAcrossFiles> alive(this);
    if (m_abort && !countsAfterCancel(step, request)) {
        m_passed += step.step.kind == WalkStep::Unreadable ? 0 : 1;
        return request.replaces;
    }
    if (step.step.kind == WalkStep::Unreadable) {
        tellUnreadable(step.step.error.description);
    } else {
        m_searched += 1 + std::exchange(m_passed, 0);
        if (step.step.kind == WalkStep::File)
            takeFile(step, request);
    }
    return alive;
}

void SearchAcrossFiles::takeFile(SearchedStep& step, const SearchRequest& request) {
    const QString& path = step.step.path;
    m_lastFile = path;
    FileFinding& finding = step.finding;
    if (finding.gaveUp && QFileInfo(path).size() <= MostInEditor)
        return searchInEditor(path, request);
    if (finding.gaveUp)
        m_parts.host.notice(tr("'%1' was not searched to its end: the expression takes too long.").arg(path));
    if (finding.gaveUp && request.replaces)
        return;
    if (!finding.error.isEmpty())
        m_parts.host.notice(finding.error);
    if (finding.matches.empty())
        return;
    ++m_found;
    const bool tooMany = finding.tooMany;
    list(path, std::move(finding.matches), request);
    if (request.replaces || (!tooMany && m_listed < m_parts.mostListed))
        return;
    m_parts.host.notice(tr("The search was ended at %1 matches.").arg(withCommas(m_parts.mostListed)));
    AbortSearch();
}

void SearchAcrossFiles::tellUnreadable(const QString& description) {
    if (m_silenced)
        return;
    showProgress();
    const QPointer<SearchAcrossFiles> alive(this);
    const bool silenced =
        m_parts.prompts.messageWithCheck(&m_parts.window, description, u"Do not show this again in this search"_qs);
    if (alive)
        m_silenced = silenced;
}

// Texts in editing views

QString SearchAcrossFiles::searchText(SearchableText& text, const SearchRequest& request) {
    const QPointer<SearchAcrossFiles> alive(this);
    const auto forget = qScopeGuard([&alive] {
        if (alive)
            alive->m_text = nullptr;
    });
    m_text = &text;
    return request.replaces ? text.replaceAll(request) : text.findAll(request);
}

/// An expression that takes very long at some place is searched for as in any document.
void SearchAcrossFiles::searchInEditor(const QString& path, const SearchRequest& request) {
    const QPointer<SearchAcrossFiles> alive(this);
    HiddenEditor& editor = m_parts.scope.hiddenEditor();
    const QString result = editor.openFile(path) ? searchText(editor, request) : QString();
    if (!alive || result.isEmpty())
        return;
    ++m_found;
    if (request.replaces)
        editor.saveFile(path);
    FeedSearchResults(editor, path, result, request);
}

void SearchAcrossFiles::SearchOpenDocuments(const SearchRequest& request) {
    const QPointer<SearchAcrossFiles> alive(this);
    YieldPace pace;
    for (const std::unique_ptr<SearchableText>& document : m_parts.scope.openDocuments()) {
        if (m_abort)
            break;
        if (!document->isAlive())
            continue;
        ++m_searched;
        m_lastFile = document->filename();
        const QString result = searchText(*document, request);
        if (!alive)
            return;
        m_found += result.isEmpty() ? 0 : 1;
        if (document->isAlive())
            FeedSearchResults(*document, m_lastFile, result, request);
        yieldWhenDue(pace);
        if (!alive)
            return;
    }
    showProgress();
    yieldOnce();
}

// Results

/// Takes the records of a MatchList apart. Positions in them are those of the text as it is now.
void SearchAcrossFiles::FeedSearchResults(const SearchableText& text, const QString& file, const QString& result,
                                          const SearchRequest& request) {
    FileMatches matches;
    qint64 lastLine = -1;
    qint64 lineStart = 0;
    for (const QStringView record : QStringView(result).split(u'\t', Qt::SkipEmptyParts)) {
        const QList<QStringView> fields = record.split(u',');
        if (fields.size() < 3)
            continue;
        const qint64 line = fields[0].toLongLong();
        const qint64 start = fields[1].toLongLong();
        const auto length = static_cast<qint32>(fields[2].toLongLong());
        if (line != lastLine) {
            matches.addLine(line + 1, text.line(line));
            lineStart = text.positionOfLine(line);
            lastLine = line;
        }
        matches.addMatch({start, length, 0, static_cast<qint32>(start - lineStart), length});
    }
    list(file, std::move(matches), request);
}

void SearchAcrossFiles::list(const QString& file, FileMatches matches, const SearchRequest& request) {
    if (!request.listsResults || matches.empty())
        return;
    if (m_listed >= m_parts.mostListed) {  // a replacement is not ended for the list's sake
        m_parts.host.notice(tr("Only the first %1 matches are listed.").arg(withCommas(m_parts.mostListed)));
        return;
    }
    const std::size_t count = matches.matches().size();
    m_listed += static_cast<qint64>(count);
    m_parts.results.addMatches(file, std::move(matches));
    m_parts.results.SetNodeText(
        file, u"Find "_qs + inSixColumns(count) + u" '"_qs + request.text + u"'  in '"_qs + file + u"'"_qs);
}
