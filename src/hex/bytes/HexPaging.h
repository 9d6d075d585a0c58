#pragma once

#include "hex/bytes/FilePosition.h"

#include <QString>

/// A byte as the panes show it: row and column of the page, both from 0.
struct HexCell {
    int row = 0;
    int col = 0;

    bool operator==(const HexCell&) const = default;
};

/// Which part of a file is on the screen, and where each command moves it. Holds no bytes. The oddities of the moves at
/// the end of a file are intended: a last partial row stays below the screen until moveLastPage().
///
/// A move returns whether the page must be filled again.
class HexPaging {
 public:
    static constexpr int BytesPerRow = 16;
    static constexpr int PageRows = 20;
    static constexpr int PageBytes = BytesPerRow * PageRows;
    static constexpr int ScrollMaximum = 100;

    /// Begins at the top of a file of so many bytes.
    void open(qint64 length);

    qint64 length() const { return m_length; }
    /// Of the first byte of the top row: 1 or more, and a whole number of rows after 1.
    FilePosition FilePointer() const { return m_pointer; }
    void setFilePointer(FilePosition pointer) { m_pointer = pointer; }

    /// Rows of the page in use; the last may hold no byte.
    int rows() const;
    FilePosition positionOf(HexCell cell) const { return positionOf(m_pointer, cell); }
    /// On the page that begins at `page`.
    static FilePosition positionOf(FilePosition page, HexCell cell) { return page + cell.row * BytesPerRow + cell.col; }
    /// Whether a file of that length can be shown from `page` on, with a byte in this cell.
    static bool isByte(FilePosition page, HexCell cell, qint64 length);
    bool IsPastEnd(HexCell cell) const { return positionOf(cell).number() > m_length; }

    /// "current/total", counted back from the end of the file.
    QString PageCaption() const;

    bool MoveFirstPage();
    bool MovePreviousPage();
    bool MovePreviousLine();
    bool MoveNextLine();
    bool MoveNextPage();
    bool MoveLastPage();

    /// Whether a push past the last row moves the page by a line at all.
    bool hasNextRow() const;

    bool scrolls() const { return m_length > PageBytes; }
    /// For a value of the scroll bar from 0 to ScrollMaximum, a percentage of the file.
    void SetOffsetPosition(int value);
    int scrollPosition() const;

    /// Makes the byte's row the first of the page.
    HexCell goTo(Offset offset);
    /// As goTo(), by the rule of the dialog for an offset: the column is that of the byte after it.
    HexCell goToTyped(Offset offset);
    /// One more than there are when the last page is full.
    qint64 typedPages() const { return 1 + m_length / PageBytes; }
    void goToPage(qint64 number);

 private:
    bool moveTo(qint64 number);
    bool standsAtEnd() const;

    qint64 m_length = 0;
    FilePosition m_pointer;
};
