#pragma once

#include "platform/FileState.h"
#include "search/engine/FileMatches.h"
#include "search/engine/RequiredText.h"
#include "search/engine/SearchRequest.h"
#include "text/codec/TextCodec.h"

#include <QString>

#include <atomic>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <string_view>

class FileReader;
class MatchScan;
class PlaceFinder;
class SearchPattern;
struct MatchPlace;
struct Replacements;

/// What the search of one file has found.
struct FileFinding {
    bool loaded = false;     ///< false: it could not be read, and nothing was found
    bool tooMany = false;    ///< the search was ended at MostMatches
    bool gaveUp = false;     ///< the expression took too long somewhere, so a search in an editing view may find more
    bool cancelled = false;  ///< the search was ended before the end of the text
    FileMatches matches;
    QString error;  ///< why the expression cannot be searched for, or why nothing is replaced in this file

    // For a replacement
    std::string newText;             ///< UTF-8; the whole text with all replacements, when there are matches
    TextFormat format;               ///< of the file's bytes
    std::optional<FileState> state;  ///< of the file just before it was read
};

/// Shared by the searches of several threads: large files are in memory one at a time.
struct LargeFiles {
    std::timed_mutex turn;
};

/// Searches files one after another, each read into memory, decoded as a load does and searched as the editing control
/// does; it shows nothing and runs no event loop. It also works out the text with all replacements, but writes nothing.
///
/// Use it in one thread. Errors: a file that cannot be read has no findings.
class FileSearch {
 public:
    /// Files of more bytes are not loaded, as in the editing control.
    static constexpr qint64 SizeLimit = 2'147'483'647;
    /// A text that uses all line ends and has a line of so many bytes is locked in the editing control, and so it takes
    /// no replacement.
    static constexpr qint64 LockedLine = 8LL * 1024 * 1024;

    /// `cancelled` is read often: when it is set the search ends within 100 ms. Both outlive this object.
    FileSearch(const SearchRequest& request, const std::atomic<bool>& cancelled, LargeFiles& largeFiles);
    ~FileSearch();
    FileSearch(const FileSearch&) = delete;
    FileSearch& operator=(const FileSearch&) = delete;

    /// A search for nothing in particular must not fill the memory with its matches: finding ends here, and a file that
    /// has more is not replaced in.
    static constexpr std::size_t MostMatches = 10'000'000;

    FileFinding search(const QString& path, bool isKnownRegular = false);
    /// The same in bytes that are in memory already.
    FileFinding searchBytes(std::string_view bytes);

 private:
    FileFinding searchOpen(FileReader& file);
    bool waitForTurn(std::unique_lock<std::timed_mutex>& turn) const;
    FileFinding readAndSearch(const QString& path, bool isKnownRegular);
    void releaseLargeBuffers();
    bool read(FileReader& file);
    bool decode(std::string_view bytes);
    std::optional<bool> decodeBy(TextDecoder& decoder, std::string_view bytes);
    void take(std::string_view part);
    const SearchPattern& pattern();
    bool isLocked() const;
    void find(FileFinding& finding);
    void replace(FileFinding& finding);
    void splice(const Replacements& found, FileFinding& finding) const;
    bool append(std::string_view part, std::string& text) const;
    bool hasLineOf(qint64 length) const;
    bool goesOn() const { return !m_cancelled.load(std::memory_order_relaxed); }

    const SearchRequest m_request;
    const std::atomic<bool>& m_cancelled;
    LargeFiles& m_largeFiles;
    const RequiredText m_required;
    std::unique_ptr<SearchPattern> m_pattern;       ///< for any text
    std::unique_ptr<SearchPattern> m_asciiPattern;  ///< for a text of ASCII alone

    // Of the present file
    std::unique_ptr<char[]> m_buffer;
    qint64 m_bufferSize = 0;
    qint64 m_length = 0;      ///< of the bytes in the buffer
    std::string_view m_text;  ///< decoded; lies in the bytes or in m_decoded
    std::string m_decoded;
    std::string m_scratch;
    TextFormat m_format;
    bool m_ascii = true;
};
