#include "shell/recovery/Comparisons.h"

#include "platform/FileReader.h"
#include "platform/Paths.h"
#include "text/codec/TextCodec.h"

#include <algorithm>
#include <string>
#include <vector>

namespace {

constexpr qint64 BlockSize = 1024LL * 1024;
constexpr std::size_t MostRanges = 200;

DifferencesFound only(const QString& summary) {
    return {summary, {}, {}};
}

/// A count with its noun, which forms its plural with an s.
QString counted(qint64 count, const char* noun) {
    return u"%1 %2%3"_qs.arg(count).arg(QLatin1String(noun), count == 1 ? QString() : u"s"_qs);
}

/// What is said of the file before the differences; empty for one that is there.
QString remarkOn(const QString& path) {
    if (path.isEmpty())
        return u"The document has no file yet. "_qs;
    return fileExists(path) ? QString() : u"The file is gone. "_qs;
}

/// Reads at most MostBytes and one more. An error text is returned; empty: it was read.
QString readAll(const QString& path, std::string& bytes, const std::atomic<bool>& cancelled) {
    FileReader reader;
    if (const SystemError error = reader.open(path))
        return error.description;
    while (!cancelled && std::ssize(bytes) <= Comparisons::MostBytes) {
        const auto before = bytes.size();
        bytes.resize(before + BlockSize);
        const qint64 count = reader.read(bytes.data() + before, BlockSize);
        if (count < 0)
            return reader.error().description;
        bytes.resize(before + static_cast<std::size_t>(count));
        if (count < BlockSize)
            break;
    }
    return {};
}

QString summaryOf(const DifferenceRows& rows) {
    if (rows.areEqual())
        return u"The recovered text is the same as that of the file."_qs;
    const QString shown =
        rows.leftOut > 0 ? u" %1 more are not shown."_qs.arg(counted(rows.leftOut, "changed line")) : QString();
    return u"- in the file as it is now: %1.  + recovered: %2.%3"_qs.arg(counted(rows.removed, "line"),
                                                                         counted(rows.added, "line"), shown);
}

/// Bytes that differ, one after the other.
struct Range {
    qint64 first;
    qint64 length;
};

/// Compares two files as far as both reach.
class ByteComparison {
 public:
    qint64 differing = 0;
    std::vector<Range> ranges;  ///< the first ones
    bool hasMore = false;

    void compare(const std::string& one, const std::string& other, qint64 offset) {
        for (std::size_t i = 0; i < std::min(one.size(), other.size()); ++i) {
            if (one[i] != other[i])
                note(offset + static_cast<qint64>(i), 1);
        }
    }
    void note(qint64 at, qint64 length) {
        differing += length;
        if (!ranges.empty() && !hasMore && ranges.back().first + ranges.back().length == at)
            ranges.back().length += length;
        else if (ranges.size() < MostRanges)
            ranges.push_back({at, length});
        else
            hasMore = true;
    }
    QString toText() const {
        QString text;
        for (const Range& range : ranges) {
            text += u"%1 - %2   %3\n"_qs.arg(range.first, 8, 16, QChar(u'0'))
                        .arg(range.first + range.length - 1, 8, 16, QChar(u'0'))
                        .arg(counted(range.length, "byte"));
        }
        return hasMore ? text + u'\u22EE' : text.chopped(text.isEmpty() ? 0 : 1);
    }
};

/// The next block of a file; empty at its end.
QString readBlock(FileReader& reader, std::string& block) {
    block.resize(BlockSize);
    const qint64 count = reader.read(block.data(), BlockSize);
    block.resize(static_cast<std::size_t>(std::max<qint64>(count, 0)));
    return count < 0 ? reader.error().description : QString();
}

}  // namespace

DifferencesFound Comparisons::ofTexts(const QString& path, const QByteArray& recovered,
                                      const std::atomic<bool>& cancelled) {
    const QString remark = remarkOn(path);
    std::string bytes;
    if (remark.isEmpty()) {
        if (const QString error = readAll(path, bytes, cancelled); !error.isEmpty())
            return only(error);
    }
    if (std::max<qint64>(std::ssize(bytes), recovered.size()) > MostBytes)
        return only(u"The text is too large to be compared line by line."_qs);
    const std::string text = decodeText(bytes).utf8;
    const auto rows =
        DifferenceRows::between(text, {recovered.constData(), static_cast<std::size_t>(recovered.size())}, cancelled);
    if (!rows)
        return {};
    return {remark + summaryOf(*rows), *rows, {}};
}

DifferencesFound Comparisons::ofBytes(const QString& path, const QString& recovered,
                                      const std::atomic<bool>& cancelled) {
    const QString remark = remarkOn(path);
    if (!remark.isEmpty())
        return only(remark.trimmed());
    FileReader readers[2];
    for (const auto& [reader, file] : {std::pair(&readers[0], path), std::pair(&readers[1], recovered)}) {
        if (const SystemError error = reader->open(file))
            return only(error.description);
    }
    ByteComparison comparison;
    std::string blocks[2];
    qint64 offset = 0;
    do {
        for (int i = 0; i < 2; ++i) {
            if (const QString error = readBlock(readers[i], blocks[i]); !error.isEmpty())
                return only(error);
        }
        comparison.compare(blocks[0], blocks[1], offset);
        const auto common = std::min(blocks[0].size(), blocks[1].size());
        const auto longer = std::max(blocks[0].size(), blocks[1].size());
        if (longer > common)
            comparison.note(offset + static_cast<qint64>(common), static_cast<qint64>(longer - common));
        offset += static_cast<qint64>(longer);
    } while (!cancelled && (!blocks[0].empty() || !blocks[1].empty()));
    if (comparison.differing == 0)
        return only(u"The recovered bytes are the same as those of the file."_qs);
    const QString verb = comparison.differing == 1 ? u"differs"_qs : u"differ"_qs;
    return {u"%1 %2 from the file as it is now."_qs.arg(counted(comparison.differing, "byte"), verb),
            {},
            comparison.toText()};
}
