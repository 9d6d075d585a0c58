#include "hex/bytes/HexPaging.h"

#include <algorithm>
#include <cmath>

namespace {

constexpr qint64 Row = HexPaging::BytesPerRow;
constexpr qint64 Page = HexPaging::PageBytes;

/// Division that rounds towards the smaller number, below zero too.
qint64 floorDivided(qint64 number, qint64 by) {
    const qint64 quotient = number / by;
    return number % by < 0 ? quotient - 1 : quotient;
}

/// Bytes of the full rows of a file.
qint64 fullRows(qint64 length) {
    return length / Row * Row;
}

}  // namespace

void HexPaging::open(qint64 length) {
    m_length = length;
    m_pointer = FilePosition();
}

/// The row below the last one is filled too.
bool HexPaging::isByte(FilePosition page, HexCell cell, qint64 length) {
    const bool isPage = page.number() >= 1 && page.number() <= length && (page.number() - 1) % BytesPerRow == 0;
    const bool isCell = cell.row >= 0 && cell.row <= PageRows && cell.col >= 0 && cell.col < BytesPerRow;
    return isPage && isCell && positionOf(page, cell).number() <= length;
}

int HexPaging::rows() const {
    const qint64 below = floorDivided(m_length - m_pointer.number(), Row);
    return below < PageRows ? static_cast<int>(std::max<qint64>(below, 1)) + 1 : PageRows;
}

QString HexPaging::PageCaption() const {
    const qint64 total = 1 + floorDivided(m_length - 1, Page);
    const qint64 current = total - floorDivided(m_length - m_pointer.number(), Page);
    return u"%1/%2"_qs.arg(current).arg(total);
}

bool HexPaging::moveTo(qint64 number) {
    m_pointer = FilePosition(std::max<qint64>(number, 1));
    return true;
}

/// A page is read one row further than it shows; whether that row was cut short by the end of the file.
bool HexPaging::standsAtEnd() const {
    return (m_pointer + (rows() + 1) * Row - 1).number() > m_length;
}

bool HexPaging::MoveFirstPage() {
    return moveTo(1);
}

bool HexPaging::MovePreviousPage() {
    return m_pointer.number() >= 2 && moveTo(m_pointer.number() - Page);
}

bool HexPaging::MovePreviousLine() {
    return moveTo(m_pointer.number() - Row);
}

bool HexPaging::MoveNextLine() {
    if (rows() < PageRows || standsAtEnd())
        return false;
    const qint64 next = m_pointer.number() + Row;
    return next <= m_length && moveTo(next);
}

bool HexPaging::MoveNextPage() {
    if (rows() < PageRows || standsAtEnd())
        return false;
    const qint64 next = m_pointer.number() + Page;
    return moveTo(next < m_length ? next : fullRows(m_length) - Page + 1);
}

bool HexPaging::MoveLastPage() {
    return moveTo(fullRows(m_length) + 1 - Row * (PageRows - 1));
}

bool HexPaging::hasNextRow() const {
    return rows() == PageRows && m_pointer.number() + Page < m_length;
}

void HexPaging::SetOffsetPosition(int value) {
    qint64 range = fullRows(m_length) - Page;
    if (m_length % Row != 0)
        range += Row;
    const qint64 position = floorDivided(range * value, ScrollMaximum) + 1;
    moveTo(position - position % Row + 1);
}

int HexPaging::scrollPosition() const {
    const qint64 range = fullRows(m_length) - Page;
    if (range <= 0)
        return 0;
    const double share = static_cast<double>(m_pointer.number()) / static_cast<double>(range);
    return static_cast<int>(std::nearbyint(std::clamp(ScrollMaximum * share, 0.0, double{ScrollMaximum})));
}

HexCell HexPaging::goTo(Offset offset) {
    const int col = static_cast<int>(offset.number() % Row);
    moveTo(offset.number() - col + 1);
    return {0, col};
}

HexCell HexPaging::goToTyped(Offset offset) {
    const qint64 position = std::max<qint64>(std::min(offset.position().number(), m_length), 1);
    const int col = static_cast<int>(position % Row);
    moveTo(position - col + 1);
    return {0, col};
}

void HexPaging::goToPage(qint64 number) {
    moveTo(Page * std::min(number, typedPages()) - Page + 1);
}
