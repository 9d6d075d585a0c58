#include "search/engine/FileSearch.h"

#include "platform/FileReader.h"
#include "platform/WriteWitness.h"
#include "search/engine/PlainText.h"
#include "text/codec/Utf8Text.h"
#include "text/held/Joints.h"
#include "text/search/MatchScan.h"
#include "text/search/Replacements.h"

#include <QCoreApplication>

#include <algorithm>
#include <chrono>
#include <new>

namespace {

/// Bytes that are read or decoded between two looks at whether the search was cancelled.
constexpr qint64 PartSize = 4LL * 1024 * 1024;
/// Files of more bytes are large: one at a time is in memory, and its buffer is released after it.
constexpr qint64 KeptBuffer = 16LL * 1024 * 1024;
/// While another thread has a large file, this one looks so often whether the search was cancelled.
constexpr std::chrono::milliseconds TurnLook{20};

/// Adds matches to a list together with the lines in which they begin.
class MatchLister {
 public:
    MatchLister(FileMatches& matches, std::string_view text, bool ascii) : m_matches(matches), m_finder(text, ascii) {}

    qint64 lengthOf(const TextMatch& match) const { return m_finder.unitsBetween(match.from, match.to); }

    /// `length` is what the list shows.
    void add(const TextMatch& match, qint64 length) {
        const TextPlace place = m_finder.placeOf(match.from);
        if (place.line != m_line) {
            m_line = place.line;
            m_matches.addLine(place.line + 1, m_finder.lineAt(place.lineStart));
        }
        m_matches.addMatch({place.position, static_cast<qint32>(length), 0,
                            static_cast<qint32>(place.position - place.linePosition),
                            static_cast<qint32>(lengthOf(match))});
    }

 private:
    FileMatches& m_matches;
    PlaceFinder m_finder;
    qint64 m_line = -1;
};

/// The line end that a replacement takes: the first of the text.
QString ownLineEnd(std::string_view text) {
    const std::size_t at = text.find_first_of("\r\n");
    if (at == std::string_view::npos || text[at] == '\n')
        return u"\n"_qs;
    return text.substr(at, 2) == "\r\n" ? u"\r\n"_qs : u"\r"_qs;
}

FileFinding cancelledFinding() {
    FileFinding finding;
    finding.cancelled = true;
    return finding;
}

QString leftAsItWas() {
    return QCoreApplication::translate("Search", "A file with more than 10,000,000 matches was left as it was.");
}

}  // namespace

FileSearch::FileSearch(const SearchRequest& request, const std::atomic<bool>& cancelled, LargeFiles& largeFiles)
    : m_request(request), m_cancelled(cancelled), m_largeFiles(largeFiles), m_required(request.text, request.flags) {}

FileSearch::~FileSearch() = default;

const SearchPattern& FileSearch::pattern() {
    std::unique_ptr<SearchPattern>& pattern = m_ascii ? m_asciiPattern : m_pattern;
    if (!pattern)
        pattern = std::make_unique<SearchPattern>(m_request.text, m_request.flags, m_ascii);
    return *pattern;
}

// Reading

FileFinding FileSearch::search(const QString& path, bool isKnownRegular) {
    FileFinding finding;
    try {
        finding = readAndSearch(path, isKnownRegular);
    } catch (const std::bad_alloc&) {
        finding = {};
    }
    releaseLargeBuffers();
    return finding;
}

FileFinding FileSearch::readAndSearch(const QString& path, bool isKnownRegular) {
    FileReader file;
    if (m_request.replaces)
        WriteWitness::settleFile(path);
    if (file.open(path, isKnownRegular ? FileReader::Looked::IsRegular : FileReader::Looked::NotYet) ||
        file.size() > SizeLimit)
        return {};
    std::unique_lock turn(m_largeFiles.turn, std::defer_lock);
    if (file.size() > KeptBuffer && !waitForTurn(turn))
        return cancelledFinding();
    return searchOpen(file);
}

void FileSearch::releaseLargeBuffers() {
    m_text = {};
    if (m_bufferSize > KeptBuffer) {
        m_buffer.reset();
        m_bufferSize = 0;
    }
    // Assigning "{}" would keep the memory.
    if (m_decoded.capacity() > static_cast<std::size_t>(KeptBuffer))
        m_decoded = std::string();
}

/// False when the search was cancelled.
bool FileSearch::waitForTurn(std::unique_lock<std::timed_mutex>& turn) const {
    while (goesOn()) {
        if (turn.try_lock_for(TurnLook))
            return true;
    }
    return false;
}

FileFinding FileSearch::searchOpen(FileReader& file) {
    const std::optional<FileState> state = m_request.replaces ? FileState::of(file.handle()) : std::nullopt;
    if (!read(file))
        return goesOn() ? FileFinding() : cancelledFinding();
    FileFinding finding = searchBytes({m_buffer.get(), static_cast<std::size_t>(m_length)});
    finding.state = state;
    return finding;
}

/// Reads to the end of the file, also when it has grown. False: it failed, or the search was cancelled.
bool FileSearch::read(FileReader& file) {
    m_length = 0;
    for (qint64 room = file.size() + 1;; room = m_bufferSize * 2) {
        if (room > m_bufferSize) {
            std::unique_ptr<char[]> larger(new char[static_cast<std::size_t>(room)]);
            std::copy_n(m_buffer.get(), m_length, larger.get());
            m_buffer = std::move(larger);
            m_bufferSize = room;
        }
        while (m_length < m_bufferSize) {
            const qint64 wanted = std::min(m_bufferSize - m_length, PartSize);
            const qint64 got = goesOn() ? file.read(m_buffer.get() + m_length, wanted) : -1;
            if (got < 0)
                return false;
            m_length += got;
            if (got < wanted)
                return m_length <= SizeLimit;
        }
        if (m_length > SizeLimit)
            return false;
    }
}

// Decoding

/// False when the search was cancelled.
bool FileSearch::decode(std::string_view bytes) {
    TextDecoder decoder;
    for (;; decoder.startOver()) {
        m_text = {};
        m_decoded.clear();
        const std::optional<bool> right = decodeBy(decoder, bytes);
        if (!right)
            return false;
        if (*right)
            break;
    }
    m_format = decoder.format();
    m_ascii = decoder.ascii();
    return true;
}

/// Whether the decoder's guess was right; nothing when the search was cancelled. Parts are cut between characters, so
/// that what is UTF-8 already is decoded without being copied.
std::optional<bool> FileSearch::decodeBy(TextDecoder& decoder, std::string_view bytes) {
    for (std::size_t from = 0; from < bytes.size();) {
        if (!goesOn())
            return std::nullopt;
        std::size_t to = std::min(bytes.size(), from + static_cast<std::size_t>(PartSize));
        for (int back = 0; back < 3 && to < bytes.size() && isContinuation(bytes[to]); ++back)
            --to;
        const std::optional<std::string_view> part = decoder.decode(bytes.substr(from, to - from), m_scratch);
        if (!part)
            return false;
        take(*part);
        from = to;
    }
    const std::optional<std::string_view> rest = decoder.finish(m_scratch);
    if (rest)
        take(*rest);
    return rest.has_value();
}

void FileSearch::take(std::string_view part) {
    if (part.empty())
        return;
    const bool inScratch = part.data() >= m_scratch.data() && part.data() <= m_scratch.data() + m_scratch.size();
    if (m_decoded.empty() && !inScratch && (m_text.empty() || m_text.data() + m_text.size() == part.data())) {
        m_text = {m_text.empty() ? part.data() : m_text.data(), m_text.size() + part.size()};
        return;
    }
    if (m_decoded.empty())
        m_decoded = m_text;
    m_decoded += part;
    m_text = m_decoded;
}

// Searching

FileFinding FileSearch::searchBytes(std::string_view bytes) {
    FileFinding finding;
    finding.loaded = true;
    for (std::size_t from = 0;; from += static_cast<std::size_t>(PartSize)) {
        const std::size_t overlap = static_cast<std::size_t>(m_required.text().size());
        const bool last = bytes.size() - from <= static_cast<std::size_t>(PartSize);
        if (m_required.mayBeIn(bytes.substr(from, static_cast<std::size_t>(PartSize) + overlap)))
            break;
        finding.cancelled = !goesOn();
        if (last || finding.cancelled)
            return finding;
    }
    finding.cancelled = !decode(bytes);
    if (finding.cancelled || m_text.empty())
        return finding;
    if (const SearchError& error = pattern().error()) {
        finding.error = error.sentence;
        return finding;
    }
    m_request.replaces ? replace(finding) : find(finding);
    finding.matches.squeeze();
    return finding;
}

void FileSearch::find(FileFinding& finding) {
    const PlainText text(m_text);
    TextMap map(text);
    map.reset(m_ascii, JointKind::None, {});
    MatchLister lister(finding.matches, m_text, m_ascii);
    MatchScan scan(pattern(), text, map, 0);
    scan.watchedBy([this] { return goesOn(); });
    while (scan.next()) {
        lister.add(scan.match(), lister.lengthOf(scan.match()));
        finding.tooMany = finding.matches.matches().size() >= MostMatches;
        if (finding.tooMany || !goesOn())
            scan.stop();
    }
    finding.cancelled = !goesOn();
    finding.gaveUp = !finding.cancelled && !finding.tooMany && static_cast<bool>(scan.error());
}

bool FileSearch::isLocked() const {
    if (static_cast<qint64>(m_text.size()) < LockedLine)
        return false;
    LineEndsSeen seen;
    seen.look(m_text);
    return jointKindFor(seen) == JointKind::Listed && hasLineOf(LockedLine);
}

/// Also false when the search was cancelled.
bool FileSearch::hasLineOf(qint64 length) const {
    const auto wanted = static_cast<std::size_t>(length);
    std::size_t lineStart = 0;
    for (std::size_t from = 0; from < m_text.size() && goesOn(); from += static_cast<std::size_t>(PartSize)) {
        const std::string_view text = m_text.substr(0, from + static_cast<std::size_t>(PartSize));
        for (;;) {
            const std::size_t end = std::min(text.find_first_of("\r\n", std::max(from, lineStart)), text.size());
            if (end - lineStart >= wanted)
                return true;
            if (end == text.size())
                break;
            lineStart = end + 1;
        }
    }
    return false;
}

/// A cancelled search replaces nothing in the file that it was in.
void FileSearch::replace(FileFinding& finding) {
    if (isLocked())
        return;
    const PlainText text(m_text);
    TextMap map(text);
    map.reset(m_ascii, JointKind::None, {});
    const QString lineEnd = ownLineEnd(m_text);
    const Replacement replacement(m_request.replacement, {m_request.flags.regExp, m_request.preserveCase},
                                  [&lineEnd](const QString& literal) { return utf8WithLineEnds(literal, lineEnd); });
    Replacements found;
    ReplacementCollector collector(found, replacement, text);
    MatchScan scan(pattern(), text, map, 0);
    scan.watchedBy([this] { return goesOn(); });
    while (scan.next()) {
        if (found.edits.size() >= MostMatches) {
            finding.error = leftAsItWas();
            return;
        }
        collector.add(scan);
        if (!goesOn())
            scan.stop();
    }
    finding.cancelled = !goesOn();
    finding.gaveUp = !finding.cancelled && static_cast<bool>(scan.error());
    if (finding.cancelled || found.edits.empty())
        return;
    splice(found, finding);
    if (goesOn())
        return;
    finding.cancelled = true;
    finding.matches = {};
    finding.newText = std::string();
}

/// In parts: a large one takes long. False when the search was cancelled.
bool FileSearch::append(std::string_view part, std::string& text) const {
    for (std::size_t from = 0; from < part.size() && goesOn(); from += static_cast<std::size_t>(PartSize))
        text += part.substr(from, static_cast<std::size_t>(PartSize));
    return goesOn();
}

/// Puts the replacements into the text, and lists where each of them stands then. A cancelled search leaves that
/// unfinished.
void FileSearch::splice(const Replacements& found, FileFinding& finding) const {
    std::string& text = finding.newText;
    text.reserve(m_text.size());
    std::size_t kept = 0;
    for (const Replacements::Edit& edit : found.edits) {
        const auto from = static_cast<std::size_t>(edit.match.from);
        if (!append(m_text.substr(kept, from - kept), text))
            return;
        text.append(found.texts.constData() + edit.textFrom, static_cast<std::size_t>(edit.textLength));
        kept = static_cast<std::size_t>(edit.match.to);
    }
    if (!append(m_text.substr(kept), text))
        return;
    finding.format = m_format;

    const bool ascii =
        m_ascii && std::ranges::all_of(found.texts, [](char byte) { return static_cast<unsigned char>(byte) < 0x80; });
    MatchLister lister(finding.matches, text, ascii);
    qint64 grown = 0;
    for (const Replacements::Edit& edit : found.edits) {
        const qint64 from = edit.match.from + grown;
        grown += edit.textLength - (edit.match.to - edit.match.from);
        lister.add({from, from + edit.textLength}, m_request.replacement.size());
        if (!goesOn())
            return;
    }
}
