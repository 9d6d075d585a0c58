#include "recovery/journals/PieceList.h"

#include <algorithm>
#include <utility>

namespace {

constexpr std::size_t MostPieces = 512;

}  // namespace

PieceList::PieceList(const std::vector<std::string_view>& pieces) {
    for (const std::string_view piece : pieces) {
        if (piece.empty())
            continue;
        if (m_blocks.back().pieces.size() >= MostPieces / 2)
            m_blocks.emplace_back();
        m_blocks.back().pieces.push_back(piece);
        m_blocks.back().length += static_cast<qint64>(piece.size());
        m_length += static_cast<qint64>(piece.size());
    }
}

void PieceList::insert(qint64 at, std::string_view piece) {
    if (piece.empty())
        return;
    seek(at);
    const std::size_t index = splitAt(at - m_start);
    Block& block = m_blocks[m_block];
    block.pieces.insert(block.pieces.begin() + static_cast<std::ptrdiff_t>(index), piece);
    block.length += static_cast<qint64>(piece.size());
    m_length += static_cast<qint64>(piece.size());
    if (block.pieces.size() > MostPieces)
        divide();
}

void PieceList::remove(qint64 at, qint64 length) {
    m_length -= length;
    while (length > 0) {
        seek(at);
        const qint64 here = std::min(length, m_start + m_blocks[m_block].length - at);
        const std::size_t first = splitAt(at - m_start);
        const std::size_t last = splitAt(at + here - m_start);
        Block& block = m_blocks[m_block];
        block.pieces.erase(block.pieces.begin() + static_cast<std::ptrdiff_t>(first),
                           block.pieces.begin() + static_cast<std::ptrdiff_t>(last));
        block.length -= here;
        length -= here;
        if (block.pieces.empty() && m_blocks.size() > 1) {
            m_blocks.erase(m_blocks.begin() + static_cast<std::ptrdiff_t>(m_block));
            if (m_block == m_blocks.size()) {
                --m_block;
                m_start -= m_blocks[m_block].length;
            }
        }
    }
}

std::vector<std::string_view> PieceList::pieces() const {
    std::vector<std::string_view> all;
    for (const Block& block : m_blocks)
        all.insert(all.end(), block.pieces.begin(), block.pieces.end());
    return all;
}

/// Makes the block with the byte `at` the present one; at the end of the text the last one.
void PieceList::seek(qint64 at) {
    while (at < m_start) {
        --m_block;
        m_start -= m_blocks[m_block].length;
    }
    while (at >= m_start + m_blocks[m_block].length && m_block + 1 < m_blocks.size()) {
        m_start += m_blocks[m_block].length;
        ++m_block;
    }
}

/// Returns the number of the piece that begins at this offset of the present block.
std::size_t PieceList::splitAt(qint64 inBlock) {
    std::vector<std::string_view>& pieces = m_blocks[m_block].pieces;
    std::size_t index = 0;
    while (index < pieces.size() && inBlock >= static_cast<qint64>(pieces[index].size()))
        inBlock -= static_cast<qint64>(pieces[index++].size());
    if (inBlock == 0)
        return index;
    const auto cut = static_cast<std::size_t>(inBlock);
    const std::string_view rest = pieces[index].substr(cut);
    pieces[index] = pieces[index].substr(0, cut);
    pieces.insert(pieces.begin() + static_cast<std::ptrdiff_t>(index) + 1, rest);
    return index + 1;
}

/// The second half of the present block becomes a block of its own.
void PieceList::divide() {
    Block& block = m_blocks[m_block];
    const auto middle = block.pieces.begin() + static_cast<std::ptrdiff_t>(block.pieces.size() / 2);
    Block second{{middle, block.pieces.end()}, 0};
    block.pieces.erase(middle, block.pieces.end());
    for (const std::string_view piece : second.pieces)
        second.length += static_cast<qint64>(piece.size());
    block.length -= second.length;
    m_blocks.insert(m_blocks.begin() + static_cast<std::ptrdiff_t>(m_block) + 1, std::move(second));
}
