#pragma once

#include "search/engine/FileSearch.h"
#include "search/engine/FileWalk.h"
#include "search/engine/SearchRequest.h"

#include <chrono>
#include <memory>
#include <vector>

class BackgroundWork;

/// A step of a search and what was found there.
struct SearchedStep {
    WalkStep step;
    FileFinding finding;
    bool isWritten = false;  ///< the replacements are in the file
};

/// Searches the files of a source in other threads, and hands over what they have found in the order of the source, as
/// if one file had been searched after the other. At most a bounded number of files is searched ahead.
///
/// Replacements are written by the same threads: a file's only when all files before it were searched, so that after a
/// cancel the files that were changed are those up to one of them. Behind a directory that cannot be listed, and a file
/// in which the expression gave up, nothing is written until take() is called again. A file that was changed meanwhile,
/// by this search under another name or by somebody else, is searched again before it is written.
///
/// Created, used and destroyed in one thread, which never waits for a file: destroying it cancels the search, and its
/// threads end by themselves. It does not run the event loop.
class ParallelSearch {
 public:
    ParallelSearch(const SearchRequest& request, std::unique_ptr<FileSource> source);
    ~ParallelSearch();
    ParallelSearch(const ParallelSearch&) = delete;
    ParallelSearch& operator=(const ParallelSearch&) = delete;

    /// The steps that come next, as soon as there are many of them, the search has ended or the time is over; none when
    /// the next one is not ready yet.
    std::vector<SearchedStep> take(std::chrono::milliseconds limit);
    /// Whether all steps were taken.
    bool atEnd() const;
    /// Whether steps are ready to be taken, or will be because their files are being written.
    bool hasMoreToTake() const;

    /// The search ends within 100 ms, in the middle of a file too, but for files that are just being written. Steps
    /// that are ready can still be taken, the last of them perhaps with the matches of a part of its file; the search
    /// is at its end when no file is being searched or written any more.
    void cancel();

 private:
    struct State;
    class Worker;

    std::shared_ptr<State> m_state;
    std::vector<std::unique_ptr<BackgroundWork>> m_threads;
};
