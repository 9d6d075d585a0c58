#pragma once

#include <QString>
#include <QStringView>

#include <vector>

/// What was corrected in a text, from front to back. A plain value; positions and lengths are UTF-16 units of the text
/// as it was.
class Corrections {
 public:
    /// Behind all that were added before.
    void add(qsizetype position, qsizetype length, const QString& text);
    /// Takes back all but the first ones.
    void shortenTo(std::size_t count) { m_all.erase(m_all.begin() + static_cast<std::ptrdiff_t>(count), m_all.end()); }
    std::size_t count() const { return m_all.size(); }

    /// A part of the text with its corrections. No correction lies across its ends.
    QString appliedTo(QStringView text, qsizetype from, qsizetype to) const;
    QString appliedTo(QStringView text) const { return appliedTo(text, 0, text.size()); }

    /// Where a position of the text is in the corrected one. Inside a corrected word: no further than its new end.
    qsizetype movedPosition(qsizetype position) const;

 private:
    struct Correction {
        qsizetype position;
        qsizetype length;
        QString text;

        qsizetype end() const { return position + length; }
    };

    std::vector<Correction> m_all;
};
