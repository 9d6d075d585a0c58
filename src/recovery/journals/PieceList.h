#pragma once

#include <QtGlobal>

#include <cstddef>
#include <string_view>
#include <vector>

/// A text as a row of pieces of other texts, which outlive it: edits anywhere cost little however long it is, and no
/// byte is copied. Offsets and lengths are bytes.
class PieceList {
 public:
    PieceList() = default;
    explicit PieceList(const std::vector<std::string_view>& pieces);

    qint64 length() const { return m_length; }
    /// `at` is within the text.
    void insert(qint64 at, std::string_view piece);
    /// All of it is within the text.
    void remove(qint64 at, qint64 length);

    std::vector<std::string_view> pieces() const;

 private:
    struct Block {
        std::vector<std::string_view> pieces;
        qint64 length = 0;
    };

    void seek(qint64 at);
    std::size_t splitAt(qint64 inBlock);
    void divide();

    std::vector<Block> m_blocks{Block{}};
    qint64 m_length = 0;
    /// The block of the last edit, and where it begins: the next one is mostly near.
    std::size_t m_block = 0;
    qint64 m_start = 0;
};
