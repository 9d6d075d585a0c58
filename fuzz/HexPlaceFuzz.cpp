// Any text as an offset or a page to go to, in a file of any length: the page shown begins at a whole row of the file
// and the cell that is asked for lies in it.

#include "FuzzEntry.h"
#include "hex/bytes/HexPaging.h"
#include "hex/forms/TypedPlace.h"

#include <QString>

#include <cstring>

namespace {

void requireWholeRow(const HexPaging& paging) {
    require(paging.FilePointer().number() >= 1);
    require(paging.FilePointer().number() % HexPaging::BytesPerRow == 1);
}

void checkOffset(HexPaging& paging, qint64 offset) {
    const HexCell cell = paging.goToTyped(Offset(offset));
    requireWholeRow(paging);
    require(cell.row == 0 && cell.col >= 0 && cell.col < HexPaging::BytesPerRow);
    require(paging.FilePointer().number() <= paging.length() + 1);
}

void checkMoves(HexPaging& paging) {
    for (const auto move : {&HexPaging::MovePreviousLine, &HexPaging::MoveNextLine, &HexPaging::MoveNextPage,
                            &HexPaging::MovePreviousPage, &HexPaging::MoveLastPage, &HexPaging::MoveFirstPage}) {
        (paging.*move)();
        requireWholeRow(paging);
        require(paging.scrollPosition() >= 0 && paging.scrollPosition() <= HexPaging::ScrollMaximum);
        require(paging.rows() >= 2 && paging.rows() <= HexPaging::PageRows);
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    quint32 number = 0;
    if (size < sizeof number)
        return 0;
    std::memcpy(&number, data, sizeof number);
    HexPaging paging;
    paging.open(1 + number % FilePosition::Largest);
    const QString text = QString::fromUtf8(viewOf(data + sizeof number, size - sizeof number));
    for (const QString& typed : {text, u"&H"_qs + text}) {
        const auto offset = TypedPlace::offsetOf(typed);
        if (offset)
            checkOffset(paging, *offset);
        checkMoves(paging);
    }
    const auto page = TypedPlace::pageOf(text);
    require(!page || *page >= 1);
    if (page) {
        paging.goToPage(*page);
        requireWholeRow(paging);
        require(paging.FilePointer().number() <= paging.length() + 1);
        checkMoves(paging);
    }
    return 0;
}
