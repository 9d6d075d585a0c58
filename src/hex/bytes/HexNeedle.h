#pragma once

#include <QByteArray>
#include <QByteArrayView>
#include <QString>

#include <optional>

/// How the text of a search is interpreted.
enum class HexFindType : qint16 {
    Bytes = 0,      ///< hex digits, with or without blanks between the bytes
    AnyCase = 1,    ///< text, upper and lower case alike
    ExactCase = 2,  ///< text
};

/// A text or byte sequence, prepared for searching in blocks of bytes. Never empty. Case is that of Windows-1252.
class HexNeedle {
 public:
    /// A byte in lower and in upper case; the same twice when it is no letter.
    struct Letter {
        quint8 lower;
        quint8 upper;
    };

    /// Nothing when the text is empty, no byte sequence, or holds a character that is no byte.
    static std::optional<HexNeedle> make(const QString& text, HexFindType type);

    qsizetype size() const { return m_bytes.size(); }
    /// By how many bytes the blocks of a search overlap: the number of characters of a text, one less of a sequence.
    qsizetype overlap() const { return m_overlap; }

    /// Index of the first match in a block at or after `from`; -1 when there is none.
    qsizetype firstIn(QByteArrayView block, qsizetype from = 0) const;
    /// Index of the last match in a block; -1 when there is none.
    qsizetype lastIn(QByteArrayView block) const;

 private:
    HexNeedle(QByteArray bytes, qsizetype overlap, bool ignoresCase);

    qsizetype firstAnyCase(QByteArrayView block, qsizetype from) const;

    QByteArray m_bytes;
    qsizetype m_overlap;
    bool m_ignoresCase;
    Letter m_first;
    Letter m_last;
};
