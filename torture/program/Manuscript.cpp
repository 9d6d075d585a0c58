#include "program/Manuscript.h"

#include "Contents.h"

#include <QString>

#include <unistd.h>

#include <algorithm>
#include <string_view>
#include <utility>

namespace {

constexpr mode_t LinkedMode = 0640;
constexpr qsizetype LineLength = 64;
constexpr qsizetype LargeLength = 900'000;
constexpr qsizetype MostBytesOfALine = 3 * LineLength;
/// The bytes at the beginning of a binary file in which is typed.
constexpr qsizetype MostBytes = 64;
/// A byte view keeps so many steps.
constexpr std::size_t UndoLogLength = 31;
/// A key of so many is a Backspace; of so many, a Return.
constexpr unsigned OneBackspaceOf = 12;
constexpr unsigned OneReturnOf = 40;
constexpr std::string_view Digits = "0123456789abcdef";
constexpr std::string_view Letters = "abcdefghijklmnopqrstuvwxyz ";

QByteArray linkOf(const QByteArray& path) {
    return path + ".link";
}

/// Lines of hexadecimal digits, each of which begins with these other characters.
QString lines(qsizetype length, quint64 seed, const QString& begin) {
    QString text = QString::fromLatin1(noise((length + 1) / 2, seed).toHex().left(length));
    for (qsizetype at = 0; at < length; at += LineLength) {
        if (at > 0)
            text[at] = u'\n';
        if (at + begin.size() < length)
            text.replace(at + 1, begin.size(), begin);
    }
    return text;
}

QByteArray markOf(Manuscript::Kind kind) {
    switch (kind) {
        case Manuscript::Kind::MarkedText:
            return "\xef\xbb\xbf";
        case Manuscript::Kind::Utf16:
            return "\xff\xfe";
        case Manuscript::Kind::Utf16Swapped:
            return "\xfe\xff";
        default:
            return {};
    }
}

/// What shows that the encoding is the right one.
QString lineBeginOf(Manuscript::Kind kind) {
    switch (kind) {
        case Manuscript::Kind::Utf16:
        case Manuscript::Kind::Utf16Swapped:
            return u"\u00e4\u20ac\u4e00\U0001f600"_qs;
        case Manuscript::Kind::Western:
            return u"\u00e4\u20ac\u00fc"_qs;
        default:
            return {};
    }
}

QByteArray pairsOf(const QString& text, bool isLowFirst) {
    QByteArray bytes;
    bytes.reserve(2 * text.size());
    for (const QChar unit : text) {
        bytes += static_cast<char>(isLowFirst ? unit.cell() : unit.row());
        bytes += static_cast<char>(isLowFirst ? unit.row() : unit.cell());
    }
    return bytes;
}

/// The only character here whose code differs from that of Latin-1.
QByteArray westernOf(const QString& text) {
    QByteArray bytes;
    bytes.reserve(text.size());
    for (const QChar unit : text)
        bytes += unit == u'\u20ac' ? '\x80' : unit.toLatin1();
    return bytes;
}

QByteArray encodedAs(Manuscript::Kind kind, bool hasReturns, QString text) {
    if (hasReturns)
        text.replace(u'\n', u"\r\n"_qs);
    if (kind == Manuscript::Kind::Utf16 || kind == Manuscript::Kind::Utf16Swapped)
        return pairsOf(text, kind == Manuscript::Kind::Utf16);
    return kind == Manuscript::Kind::Western ? westernOf(text) : text.toUtf8();
}

}  // namespace

Manuscript::Manuscript(QByteArray path, const Shape& shape, quint64 seed)
    : m_path(std::move(path)), m_kind(shape.kind), m_isTypedAtEnd(shape.isTypedAtEnd), m_hasReturns(shape.hasReturns) {
    if (m_kind == Kind::Bytes) {
        const QByteArray bytes = QByteArray("\0\1\2\3", 4) + noise(shape.length - 4, seed);
        m_states.front().middle = bytes.left(MostBytes);
        m_tail = bytes.mid(MostBytes);
    } else {
        m_head = markOf(m_kind);
        (m_isTypedAtEnd ? m_head : m_tail) +=
            encodedAs(m_kind, m_hasReturns, lines(shape.length, seed, lineBeginOf(m_kind)));
    }
    putBytes(m_path, bytesNow());
    if (shape.hasLink) {
        const bool isLinked = ::link(m_path.constData(), linkOf(m_path).constData()) == 0;
        mustWork(isLinked && ::chmod(m_path.constData(), LinkedMode) == 0, "cannot link " + m_path);
    }
    mustWork(::stat(m_path.constData(), &m_status) == 0, "cannot look at " + m_path);
}

std::string Manuscript::keyOfPlace() const {
    return m_isTypedAtEnd ? "ctrl+End" : "ctrl+Home";
}

std::string Manuscript::nextKey(std::mt19937& random) {
    std::string key;
    m_next.clear();
    m_nextUndo = m_states.back().undo;
    if (m_kind == Kind::Bytes)
        typeByte(random, key);
    else
        typeLetter(random, key);
    return key;
}

/// Two digits and an arrow for each byte. Whether the first digit alone is a change, and which, is left open.
void Manuscript::typeByte(std::mt19937& random, std::string& key) {
    const QByteArray& middle = m_states.back().middle;
    if (m_phase == 2) {
        const bool isLast = m_place + 1 == std::min(middle.size(), MostBytes);
        key = isLast ? keyOfPlace() : "Right";
        m_place = isLast ? 0 : m_place + 1;
        m_phase = 0;
        return;
    }
    const auto digit = static_cast<char>(random() % Digits.size());
    key = Digits[static_cast<std::size_t>(digit)];
    if (m_phase == 0) {
        m_digit = digit;
        const auto low = static_cast<char>(middle.at(m_place) & 0x0F);
        for (const char half : {static_cast<char>(m_digit << 4 | low), m_digit, middle.at(m_place)}) {
            m_next.push_back(middle);
            m_next.back()[m_place] = half;
        }
        m_phase = 1;
    } else {
        m_next.push_back(middle);
        m_next.back()[m_place] = static_cast<char>(m_digit << 4 | digit);
        m_nextUndo.push_back({m_place, middle.at(m_place)});
        if (m_nextUndo.size() > UndoLogLength)
            m_nextUndo.erase(m_nextUndo.begin());
        m_phase = 2;
    }
}

void Manuscript::typeLetter(std::mt19937& random, std::string& key) {
    QByteArray middle = m_states.back().middle;
    const qsizetype place = m_isTypedAtEnd ? middle.size() : m_place;
    // A line that began with a blank would indent the next one.
    const char before = place > 0 ? middle.at(place - 1) : '\n';
    const bool isLineBegin = before == '\n' || (m_typed == 0 && !m_isTypedAtEnd);
    // The line ends of a file of one line are not known.
    const bool mayBreak = m_typed > 0 && length() > MostBytesOfALine;
    if (m_typed > 1 && random() % OneBackspaceOf == 0) {
        key = "BackSpace";
        middle.remove(place - 1, 1);
        --m_typed;
        --m_place;
    } else {
        const char letter = Letters[random() % (Letters.size() - (isLineBegin ? 1 : 0))];
        const bool breaks = mayBreak && random() % OneReturnOf == 0;
        key = breaks ? "Return" : letter == ' ' ? "space" : std::string(1, letter);
        middle.insert(place, breaks ? '\n' : letter);
        ++m_typed;
        ++m_place;
    }
    m_next.push_back(middle);
}

void Manuscript::pressed() {
    const Clock::time_point now = Clock::now();
    for (QByteArray& middle : m_next)
        m_states.push_back({now, std::move(middle), m_nextUndo, m_phase == 1});
    m_next.clear();
}

void Manuscript::undone() {
    m_nextUndo = m_states.back().undo;
    const Undo step = m_nextUndo.back();
    m_nextUndo.pop_back();
    m_next = {m_states.back().middle};
    m_next.back()[step.place] = step.byte;
    m_place = step.place;
    m_phase = 0;
    pressed();
}

void Manuscript::filled(qsizetype first, qsizetype last, char byte) {
    m_nextUndo = m_states.back().undo;
    m_next = {m_states.back().middle};
    std::fill(m_next.back().begin() + first, m_next.back().begin() + last + 1, byte);
    pressed();
}

/// The journal begins again with a save, and what was typed before it is not undone after a kill.
void Manuscript::saveBegan() {
    for (State& state : m_states)
        state.undo.clear();
    m_saves.push_back(qsizetype(m_states.size()) - 1);
}

bool Manuscript::isInFile() const {
    struct stat status {};
    const QByteArray& middle = m_states.back().middle;
    if (::stat(m_path.constData(), &status) != 0 || status.st_size != length() + encoded(middle).size())
        return false;
    const std::optional<QByteArray> bytes = ::bytesOf(m_path);
    return bytes && holds(*bytes, middle);
}

void Manuscript::saveEnded() {
    m_inFile = m_saves.back();
    m_saves.clear();
    m_hasSaveEnded = true;
}

void Manuscript::givenUp(bool isCertain) {
    if (isCertain)
        forget();
    m_isGivenUp = true;
}

/// As the file holds it.
QByteArray Manuscript::encoded(const QByteArray& middle) const {
    return m_kind == Kind::Bytes ? middle : encodedAs(m_kind, m_hasReturns, QString::fromLatin1(middle));
}

QByteArray Manuscript::bytesOf(const QByteArray& middle) const {
    return m_head + encoded(middle) + m_tail;
}

bool Manuscript::holds(const QByteArray& bytes, const QByteArray& middle) const {
    const QByteArray typed = encoded(middle);
    return bytes.size() == length() + typed.size() &&
           QByteArrayView(bytes).sliced(m_head.size(), typed.size()) == typed && bytes.startsWith(m_head) &&
           bytes.endsWith(m_tail);
}

bool Manuscript::isTornEasily() const {
    return m_kind != Kind::Bytes && !m_isTypedAtEnd && length() > LargeLength;
}

bool Manuscript::isTorn() const {
    const auto isIn = [&](const QByteArray& bytes, qsizetype state) {
        return holds(bytes, m_states[static_cast<std::size_t>(state)].middle);
    };
    if (m_saves.empty())
        return false;
    const std::optional<QByteArray> bytes = ::bytesOf(m_path);
    return bytes && !isIn(*bytes, m_inFile) &&
           std::ranges::none_of(m_saves, [&](qsizetype state) { return isIn(*bytes, state); });
}

std::optional<QByteArray> Manuscript::problemOfFile() {
    struct stat status {};
    if (::lstat(m_path.constData(), &status) != 0 || !S_ISREG(status.st_mode))
        return "is gone";
    if (status.st_ino != m_status.st_ino || status.st_mode != m_status.st_mode || status.st_nlink != m_status.st_nlink)
        return "has another inode, mode or number of links";
    const std::optional<QByteArray> bytes = ::bytesOf(m_path);
    if (!bytes)
        return "cannot be read";
    const Save ended = std::exchange(m_hasSaveEnded, false) ? Save::Done : Save::None;
    m_lastSave = m_saves.empty() ? ended : Save::Undone;
    const qsizetype newest = m_saves.empty() ? m_inFile : m_saves.back();
    m_saves.push_back(m_inFile);
    const auto held = std::ranges::find_if(m_saves.rbegin(), m_saves.rend(), [&](qsizetype state) {
        return holds(*bytes, m_states[static_cast<std::size_t>(state)].middle);
    });
    if (held == m_saves.rend())
        return "has neither the old nor the new bytes, but " + QByteArray::number(bytes->size()) + " others";
    m_inFile = *held;
    if (m_lastSave != Save::None && m_inFile == newest)
        m_lastSave = Save::Done;
    m_saves.clear();
    return {};
}

/// The time of the last key that must not be lost.
Manuscript::Clock::time_point Manuscript::lastKept(const Kill& kill) const {
    Clock::time_point kept = Clock::time_point::min();
    for (std::size_t i = 1; i < m_states.size(); ++i) {
        const Clock::time_point when = m_states[i].when;
        const Clock::time_point next = i + 1 < m_states.size() ? m_states[i + 1].when : kill.when;
        if (when <= kill.when - kill.whileTyping || (next != when && when <= next - kill.afterPause))
            kept = when;
    }
    return kept;
}

Manuscript::Match Manuscript::match(const QByteArray& bytes, const Kill& kill) {
    qsizetype fitting = qsizetype(m_states.size()) - 1;
    while (fitting >= 0 && !holds(bytes, m_states[static_cast<std::size_t>(fitting)].middle))
        --fitting;
    if (fitting < 0)
        return Match::None;
    // All states that a key made possible are as good.
    const Clock::time_point when = m_states[static_cast<std::size_t>(fitting)].when;
    const auto next = std::ranges::find_if(m_states, [when](const State& state) { return state.when > when; });
    const bool isLate = next != m_states.end() && next->when <= lastKept(kill) && !m_isGivenUp;
    const bool isFitting = fitting >= m_inFile && !isLate;
    m_lostKeys = m_states.end() - next;
    const State& state = m_states[static_cast<std::size_t>(fitting)];
    // Bytes that are those of the file are not brought back.
    const bool isOfFile = state.middle == m_states[static_cast<std::size_t>(m_inFile)].middle;
    m_hasUndoBack = !isOfFile && !state.undo.empty() && !state.isHalf && !m_isGivenUp;
    const std::vector<Undo> undo = state.undo;
    rest(fitting);
    m_states.front().undo = undo;
    return isFitting ? Match::Fits : Match::Early;
}

void Manuscript::forget() {
    rest(m_inFile);
}

/// The state is the only one, which the file holds, or is about to hold.
void Manuscript::rest(qsizetype state) {
    m_states = {State{Clock::time_point::min(), m_states[static_cast<std::size_t>(state)].middle}};
    m_saves.clear();
    m_inFile = 0;
    m_typed = 0;
    m_place = 0;
    m_phase = 0;
    m_isGivenUp = false;
}

void Manuscript::remove() const {
    ::unlink(m_path.constData());
    ::unlink(linkOf(m_path).constData());
}
