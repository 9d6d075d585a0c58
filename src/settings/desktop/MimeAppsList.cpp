#include "settings/desktop/MimeAppsList.h"

#include <QCryptographicHash>

#include <algorithm>
#include <cctype>
#include <utility>

namespace {

using Group = MimeAppsList::Group;

const QByteArray GroupMark = "group ";
const QByteArray LineMark = "line ";
const QByteArray LineEndMark = "end of ";

QByteArray headerOf(Group group) {
    return group == Group::Default ? "[Default Applications]" : "[Added Associations]";
}

/// The marks of an edit: the application was inserted, and its line and group did not exist before.
QByteArray insertedMark(Group group, const QByteArray& type) {
    return "application " + headerOf(group) + type;
}

QByteArray lineMark(Group group, const QByteArray& type) {
    return LineMark + headerOf(group) + type;
}

QByteArray groupMark(Group group) {
    return GroupMark + headerOf(group);
}

bool isHeader(const QByteArray& line) {
    return line.trimmed().startsWith('[');
}

bool isBlank(const QByteArray& line) {
    return line.trimmed().isEmpty();
}

/// Where the value of a line starts, behind "=" and blanks; -1 when it is no line of the type.
qsizetype valueStart(const QByteArray& line, const QByteArray& type) {
    const qsizetype equals = line.indexOf('=');
    if (equals < 0 || line.left(equals).trimmed() != type)
        return -1;
    qsizetype start = equals + 1;
    while (start < line.size() && (line[start] == ' ' || line[start] == '\t'))
        ++start;
    return start;
}

QList<QByteArray> namesIn(const QByteArray& value) {
    QList<QByteArray> names;
    for (const QByteArray& name : value.split(';')) {
        if (!name.trimmed().isEmpty())
            names.append(name.trimmed());
    }
    return names;
}

QList<QByteArray> linesOf(const QByteArray& bytes) {
    QList<QByteArray> lines;
    for (qsizetype start = 0; start < bytes.size();) {
        const qsizetype feed = bytes.indexOf('\n', start);
        const qsizetype end = feed < 0 ? bytes.size() : feed + 1;
        lines.append(bytes.mid(start, end - start));
        start = end;
    }
    return lines;
}

}  // namespace

MimeAppsList::MimeAppsList(const QByteArray& bytes, QByteArray application)
    : m_lines(linesOf(bytes)), m_application(std::move(application)) {}

/// The lines of the group without its header; a group may stand in the file more than once.
QList<qsizetype> MimeAppsList::linesOfGroup(Group group) const {
    QList<qsizetype> lines;
    const QByteArray header = headerOf(group);
    bool isInside = false;
    for (qsizetype i = 0; i < m_lines.size(); ++i) {
        if (isHeader(m_lines[i]))
            isInside = m_lines[i].trimmed() == header;
        else if (isInside)
            lines.append(i);
    }
    return lines;
}

QList<qsizetype> MimeAppsList::linesOfType(Group group, const QByteArray& type) const {
    QList<qsizetype> lines = linesOfGroup(group);
    lines.removeIf([&](qsizetype line) { return valueStart(m_lines[line], type) < 0; });
    return lines;
}

QList<QByteArray> MimeAppsList::applications(Group group, const QByteArray& type) const {
    QList<QByteArray> names;
    for (const qsizetype line : linesOfType(group, type))
        names += namesIn(m_lines[line].mid(valueStart(m_lines[line], type)));
    return names;
}

bool MimeAppsList::isIn(qsizetype line, Group group, const QByteArray& type) const {
    const QList<QByteArray> names = namesIn(m_lines[line].mid(valueStart(m_lines[line], type)));
    return group == Group::Default ? !names.isEmpty() && names.first() == m_application : names.contains(m_application);
}

/// At the end, the separator is put where the others have it: behind the name only if the last one has one.
void MimeAppsList::insertIn(qsizetype line, Group group, const QByteArray& type) {
    QByteArray& text = m_lines[line];
    const qsizetype start = valueStart(text, type);
    if (group == Group::Default) {
        text.insert(start, m_application + ';');
        return;
    }
    qsizetype end = text.size();
    while (end > start && std::isspace(static_cast<unsigned char>(text[end - 1])))
        --end;
    const bool isOpen = end > start && text[end - 1] != ';';
    text.insert(end, isOpen ? ';' + m_application : m_application + ';');
}

/// A type that stands in several lines is changed in each, because readers differ in which of them counts. What others
/// have moved since the last insert is removed there, so that one undo removes all of it.
void MimeAppsList::insert(Group group, const QByteArray& type, Marks& marks) {
    const auto isInLine = [&](qsizetype line) { return isIn(line, group, type); };
    QList<qsizetype> lines = linesOfType(group, type);
    if (!lines.isEmpty() && std::ranges::all_of(lines, isInLine))
        return;
    if (isInserted(group, type, marks)) {
        remove(group, type, marks);
        lines = linesOfType(group, type);
    }
    if (lines.isEmpty()) {
        addLine(group, type, marks);
        return;
    }
    for (const qsizetype line : lines)
        insertIn(line, group, type);
    marks.insert(insertedMark(group, type));
}

void MimeAppsList::addLine(Group group, const QByteArray& type, Marks& marks) {
    const QByteArray header = headerOf(group);
    const auto isOurHeader = [&](const QByteArray& line) { return line.trimmed() == header; };
    qsizetype place = m_lines.size();
    const auto found = std::ranges::find_if(m_lines, isOurHeader);
    if (found == m_lines.end()) {
        endLastLine(marks);
        m_lines.append(header + '\n');
        marks.insert(groupMark(group));
        place = m_lines.size();
    } else {
        place = found - m_lines.begin() + 1;
        while (place < m_lines.size() && !isHeader(m_lines[place]) && !isBlank(m_lines[place]))
            ++place;
        if (place == m_lines.size())
            endLastLine(marks);
    }
    m_lines.insert(place, type + '=' + m_application + ";\n");
    marks.insert(lineMark(group, type));
    marks.insert(insertedMark(group, type));
}

void MimeAppsList::endLastLine(Marks& marks) {
    if (m_lines.isEmpty() || m_lines.last().endsWith('\n'))
        return;
    marks.insert(lineEndMark(m_lines.last()));
    m_lines.last() += '\n';
}

void MimeAppsList::remove(Group group, const QByteArray& type, Marks& marks) {
    if (!marks.remove(insertedMark(group, type)))
        return;
    const bool ownsLine = marks.remove(lineMark(group, type));
    QList<qsizetype> lines = linesOfType(group, type);
    std::ranges::reverse(lines);
    for (const qsizetype line : lines) {
        removeFrom(line, group);
        if (ownsLine && isBlank(m_lines[line].mid(valueStart(m_lines[line], type))))
            m_lines.removeAt(line);
    }
    removeEmptyGroup(group, marks);
    removeLineEnd(marks);
}

/// Removes the mention that was inserted, the first or the last one, with the separator behind it, or else before it.
void MimeAppsList::removeFrom(qsizetype line, Group group) {
    QByteArray& text = m_lines[line];
    qsizetype found = -1;
    for (qsizetype start = text.indexOf('=') + 1; start < text.size();) {
        const qsizetype semicolon = text.indexOf(';', start);
        const qsizetype end = semicolon < 0 ? text.size() : semicolon;
        if (text.mid(start, end - start).trimmed() == m_application) {
            found = text.indexOf(m_application, start);
            if (group == Group::Default)
                break;
        }
        start = end + 1;
    }
    if (found < 0)
        return;
    const qsizetype length = m_application.size();
    const bool hasSeparator = text.mid(found + length, 1) == ";";
    const bool isBehindOne = !hasSeparator && text[found - 1] == ';';
    text.remove(isBehindOne ? found - 1 : found, length + (hasSeparator || isBehindOne ? 1 : 0));
}

void MimeAppsList::removeEmptyGroup(Group group, Marks& marks) {
    if (!marks.contains(groupMark(group)))
        return;
    const QList<qsizetype> lines = linesOfGroup(group);
    if (!std::ranges::all_of(lines, [this](qsizetype line) { return isBlank(m_lines[line]); }))
        return;
    const QByteArray header = headerOf(group);
    const auto found = std::ranges::find_if(m_lines, [&](const QByteArray& line) { return line.trimmed() == header; });
    if (found != m_lines.end())
        m_lines.erase(found);
    marks.remove(groupMark(group));
}

/// Waits until all added lines are removed again: only then is the last line possibly the one that had no end.
void MimeAppsList::removeLineEnd(Marks& marks) {
    const bool hasAdded = std::ranges::any_of(
        marks, [](const QByteArray& mark) { return mark.startsWith(GroupMark) || mark.startsWith(LineMark); });
    if (hasAdded || m_lines.isEmpty() || !m_lines.last().endsWith('\n'))
        return;
    const QByteArray line = m_lines.last().chopped(1);
    if (marks.remove(lineEndMark(line)))
        m_lines.last() = line;
}

/// Identifies a line, whether it mentions the application or not.
QByteArray MimeAppsList::lineEndMark(const QByteArray& line) const {
    QByteArray bare = line;
    bare.replace(m_application, QByteArray()).replace(';', QByteArray());
    return LineEndMark + QCryptographicHash::hash(bare, QCryptographicHash::Sha256).toHex();
}

bool MimeAppsList::isInserted(Group group, const QByteArray& type, const Marks& marks) {
    return marks.contains(insertedMark(group, type));
}
