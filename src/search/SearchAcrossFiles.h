#pragma once

#include "search/engine/SearchRequest.h"
#include "search/host/SearchScope.h"

#include <QObject>
#include <QString>

#include <memory>

class FileMatches;
class FileSource;
class ParallelSearch;
class Prompts;
class QWidget;
class SearchHost;
class ucSearchResults;
class YieldPace;
class frmSearching;
struct SearchedStep;

/// Finds or replaces a text in the files of directories, in the open documents, or in the files of the project, and
/// lists what it finds. One search at a time. Owned by the frame.
///
/// Re-entrancy: StartSearch() runs the event loop until the search has ended, with the frame alive. Close of the frame
/// is disabled meanwhile.
class SearchAcrossFiles : public QObject {
    Q_OBJECT

 public:
    /// All outlive this object.
    struct Parts {
        SearchHost& host;
        SearchScope& scope;
        ucSearchResults& results;
        Prompts& prompts;
        QWidget& window;
        qint64 mostListed = 10'000'000;  ///< a search ends at so many matches, a replacement lists no more than these
    };
    explicit SearchAcrossFiles(const Parts& parts, QObject* parent = nullptr);
    ~SearchAcrossFiles() override;

    /// While another search runs, its window is brought to the front instead.
    void StartSearch(const SearchRequest& request);
    /// The search ends at its next step, and in the middle of a file too.
    void AbortSearch();

    bool isRunning() const { return m_running; }
    /// Set also while no search runs.
    bool AbortFlag() const { return m_abort; }
    int FilesFound() const { return m_found; }
    int FilesSearched() const { return m_searched; }

 private:
    void search(const SearchRequest& request);
    void SearchFileSet(const SearchRequest& request);
    void SearchOpenDocuments(const SearchRequest& request);
    void SearchProjectFiles(const SearchRequest& request);

    void searchFiles(const SearchRequest& request, std::unique_ptr<FileSource> source);
    void waitForFiles(ParallelSearch& search, const SearchRequest& request);
    bool take(SearchedStep& step, const SearchRequest& request);
    void takeFile(SearchedStep& step, const SearchRequest& request);
    void searchInEditor(const QString& path, const SearchRequest& request);
    QString searchText(SearchableText& text, const SearchRequest& request);
    void FeedSearchResults(const SearchableText& text, const QString& file, const QString& result,
                           const SearchRequest& request);
    void list(const QString& file, FileMatches matches, const SearchRequest& request);
    void tellUnreadable(const QString& description);
    void showProgress();
    void yieldWhenDue(YieldPace& pace);

    Parts m_parts;
    frmSearching* m_window = nullptr;
    bool m_running = false;
    bool m_abort = true;
    int m_found = 0;
    int m_searched = 0;
    QString m_lastFile;
    bool m_silenced = false;  ///< unreadable directories are not reported any more
    qint64 m_listed = 0;
    int m_passed = 0;  ///< files of a cancelled replacement that were searched, and count if one behind them is written
    ParallelSearch* m_files = nullptr;  ///< that run now
    SearchableText* m_text = nullptr;   ///< that is being searched now
};
