#include "shell/recovery/DifferenceRows.h"

#include "text/lines/LineDiff.h"

#include <algorithm>
#include <iterator>
#include <utility>

namespace {

using Lines = std::vector<std::string_view>;

/// So many bytes of a long line are shown before the first that differs.
constexpr std::size_t Lead = 200;

struct LineEnd {
    std::string_view bytes;
    const char* name;
};

constexpr LineEnd LineEnds[] = {{"\r\n", " [CR LF]"}, {"\n", " [LF]"}, {"\r", " [CR]"}, {"", " [no line end]"}};

const LineEnd& endOf(std::string_view line) {
    return *std::ranges::find_if(LineEnds, [line](const LineEnd& end) { return line.ends_with(end.bytes); });
}

/// A long line is shown from a little before the first byte in which it differs from the line in its place.
std::size_t shownFrom(std::string_view line, std::string_view other) {
    const auto differing = std::ranges::mismatch(line, other).in1;
    auto first = static_cast<std::size_t>(differing - line.begin());
    const auto longer = std::max(std::ssize(line), std::ssize(other));
    if (longer <= DifferenceRows::LongestLine || first < Lead)
        return 0;
    first -= Lead;
    while (first > 0 && (static_cast<unsigned char>(line[first]) & 0xc0U) == 0x80U)  // within a character
        --first;
    return first;
}

QString shownText(std::string_view line, bool namesEnd, std::size_t from = 0) {
    const LineEnd& end = endOf(line);
    line.remove_suffix(end.bytes.size());
    line.remove_prefix(std::min(from, line.size()));
    // A cut within a character shows as one that cannot be read.
    const bool isLong = std::ssize(line) > DifferenceRows::LongestLine;
    QString text = QString::fromUtf8(line.data(), std::min<qint64>(std::ssize(line), DifferenceRows::LongestLine));
    if (from > 0)
        text.prepend(u'\u2026');
    if (isLong)
        text += u'\u2026';
    for (QChar& character : text) {
        // These would break the row.
        if (character == QChar::LineSeparator || character == QChar::ParagraphSeparator || character == u'\v' ||
            character == u'\f' || character == u'\0')
            character = QChar::ReplacementCharacter;
    }
    return namesEnd ? text + QLatin1String(end.name) : text;
}

/// Lists rows up to their limit.
class RowList {
 public:
    RowList(const Lines& oldLines, const Lines& newLines, DifferenceRows& list)
        : m_old(oldLines), m_new(newLines), m_list(list) {}

    void addSame(qint64 oldLine, qint64 newLine) {
        add({DifferenceRow::Kind::Same, oldLine + 1, newLine + 1, shownText(m_old[at(oldLine)], false)});
    }
    void addGap() { add({DifferenceRow::Kind::Gap, 0, 0, {}}); }
    void addChange(const LineDiff::Change& change) {
        const bool namesEnds = differInEnds(change);
        const Side old{m_old, change.oldFirst, change.oldCount};
        const Side fresh{m_new, change.newFirst, change.newCount};
        for (qint64 i = 0; i < old.count && hasRoom(); ++i)
            add({DifferenceRow::Kind::Removed, old.first + i + 1, 0, changedText(old, fresh, i, namesEnds)});
        for (qint64 i = 0; i < fresh.count && hasRoom(); ++i)
            add({DifferenceRow::Kind::Added, 0, fresh.first + i + 1, changedText(fresh, old, i, namesEnds)});
    }

 private:
    /// The lines of one text that a change concerns.
    struct Side {
        const Lines& lines;
        qint64 first;
        qint64 count;

        std::string_view line(qint64 number) const {
            return number < count ? lines[static_cast<std::size_t>(first + number)] : std::string_view();
        }
    };

    static QString changedText(const Side& side, const Side& other, qint64 number, bool namesEnd) {
        const std::string_view line = side.line(number);
        return shownText(line, namesEnd, shownFrom(line, other.line(number)));
    }
    static std::size_t at(qint64 line) { return static_cast<std::size_t>(line); }

    bool hasRoom() const { return std::ssize(m_list.rows) < DifferenceRows::MostRows; }
    void add(DifferenceRow row) {
        if (hasRoom())
            m_list.rows.push_back(std::move(row));
    }

    /// Whether the ends of the lines on one side are not all those of the other side too.
    bool differInEnds(const LineDiff::Change& change) const {
        if (change.oldCount == 0 || change.newCount == 0)
            return false;
        const char* first = endOf(m_old[at(change.oldFirst)]).name;
        const auto isOther = [first](std::string_view line) { return endOf(line).name != first; };
        const auto old = m_old.begin() + change.oldFirst;
        const auto fresh = m_new.begin() + change.newFirst;
        return std::any_of(old, old + change.oldCount, isOther) || std::any_of(fresh, fresh + change.newCount, isOther);
    }

    const Lines& m_old;
    const Lines& m_new;
    DifferenceRows& m_list;
};

/// The rows of one change, with the equal lines before it and those after it up to the next one.
void listAll(RowList& list, const std::vector<LineDiff::Change>& changes, qint64 oldCount) {
    qint64 listed = 0;  // lines of the old text
    for (std::size_t i = 0; i < changes.size(); ++i) {
        const LineDiff::Change& change = changes[i];
        const qint64 shift = change.newFirst - change.oldFirst;
        const qint64 first = std::max(listed, change.oldFirst - DifferenceRows::Around);
        if (first > listed)
            list.addGap();
        for (qint64 line = first; line < change.oldFirst; ++line)
            list.addSame(line, line + shift);
        list.addChange(change);
        const qint64 end = change.oldFirst + change.oldCount;
        const qint64 next = i + 1 < changes.size() ? changes[i + 1].oldFirst : oldCount;
        listed = std::min(next, end + DifferenceRows::Around);
        const qint64 shiftBehind = change.newFirst + change.newCount - end;
        for (qint64 line = end; line < listed; ++line)
            list.addSame(line, line + shiftBehind);
    }
    if (!changes.empty() && listed < oldCount)
        list.addGap();
}

}  // namespace

std::optional<DifferenceRows> DifferenceRows::between(std::string_view fileText, std::string_view recoveredText,
                                                      const std::atomic<bool>& cancelled) {
    const Lines oldLines = LineDiff::linesOf(fileText);
    const Lines newLines = LineDiff::linesOf(recoveredText);
    const auto changes = LineDiff::compare(oldLines, newLines, cancelled);
    if (!changes)
        return std::nullopt;
    DifferenceRows list;
    for (const LineDiff::Change& change : *changes) {
        list.removed += change.oldCount;
        list.added += change.newCount;
    }
    RowList rows(oldLines, newLines, list);
    listAll(rows, *changes, std::ssize(oldLines));
    const auto isChanged = [](const DifferenceRow& row) {
        return row.kind == DifferenceRow::Kind::Removed || row.kind == DifferenceRow::Kind::Added;
    };
    list.leftOut = list.removed + list.added - std::ranges::count_if(list.rows, isChanged);
    return list;
}

int DifferenceRows::digits() const {
    qint64 last = 1;
    for (const DifferenceRow& row : rows)
        last = std::max({last, row.oldLine, row.newLine});
    return static_cast<int>(QString::number(last).size());
}

QString DifferenceRows::textOf(const DifferenceRow& row, int digits) {
    if (row.kind == DifferenceRow::Kind::Gap)
        return QString(digits, u' ') + u'\u22EE';
    const auto number = [digits](qint64 line) {
        return (line == 0 ? QString() : QString::number(line)).rightJustified(digits);
    };
    const QChar sign = row.kind == DifferenceRow::Kind::Removed ? u'-'
                       : row.kind == DifferenceRow::Kind::Added ? u'+'
                                                                : u' ';
    return number(row.oldLine) + u' ' + number(row.newLine) + u' ' + sign + u' ' + row.text;
}

QString DifferenceRows::toText() const {
    const int width = digits();
    QString text;
    for (const DifferenceRow& row : rows)
        text += textOf(row, width) + u'\n';
    text.chop(1);
    return text;
}
