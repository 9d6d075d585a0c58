#pragma once

#include <QByteArray>
#include <QList>
#include <QSet>

/// The text of a mimeapps.list, the file in which a user's programs for each file type are chosen. Many programs write
/// it, so everything in it that is not asked to change stays byte for byte: comments, order, unknown groups, lines that
/// make no sense. Owned by whoever edits the file; works on bytes alone.
///
/// What an edit inserted is noted as a set of marks, which the caller keeps until it is undone. By these, undoing all
/// edits in any order returns the original bytes, and what others changed meanwhile stays.
class MimeAppsList {
 public:
    enum class Group { Default, Added };
    using Marks = QSet<QByteArray>;

    /// `application`: the file name of the desktop entry that is inserted and removed.
    MimeAppsList(const QByteArray& bytes, QByteArray application);

    QByteArray bytes() const { return m_lines.join(); }
    /// The programs of the type, the preferred one first.
    QList<QByteArray> applications(Group group, const QByteArray& type) const;

    /// Makes the application the first one of the type in the group of defaults, and one among the added ones, behind
    /// those that are there. Changes nothing when it already is.
    void insert(Group group, const QByteArray& type, Marks& marks);
    /// Removes what an insert() of the same type inserted; nothing without its mark.
    void remove(Group group, const QByteArray& type, Marks& marks);
    /// Whether insert() changed the type.
    static bool isInserted(Group group, const QByteArray& type, const Marks& marks);

 private:
    bool isIn(qsizetype line, Group group, const QByteArray& type) const;
    void insertIn(qsizetype line, Group group, const QByteArray& type);
    QList<qsizetype> linesOfGroup(Group group) const;
    QList<qsizetype> linesOfType(Group group, const QByteArray& type) const;
    void addLine(Group group, const QByteArray& type, Marks& marks);
    void endLastLine(Marks& marks);
    void removeFrom(qsizetype line, Group group);
    void removeEmptyGroup(Group group, Marks& marks);
    void removeLineEnd(Marks& marks);
    QByteArray lineEndMark(const QByteArray& line) const;

    QList<QByteArray> m_lines;  ///< each with its line end
    QByteArray m_application;
};
