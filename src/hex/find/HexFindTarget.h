#pragma once

#include <QString>

/// The functions of a view that the find panels use to search it. Positions count from 1; a type is one of HexFindType.
/// A text is digits of hex for bytes, else the text itself. Each call may show what it found, and may run the event
/// loop: while a search takes long, or for a box that reports an error.
class HexFindTarget {
 public:
    HexFindTarget() = default;
    virtual ~HexFindTarget() = default;
    Q_DISABLE_COPY_MOVE(HexFindTarget)

    /// A search that takes long may be stopped by the user; it then has the results up to there.
    virtual bool wasSearchStopped() const = 0;
    /// Both show the match and return its position, -1 when there is none.
    virtual int FindDown(const QString& pStr, qint16 pFindType) = 0;
    virtual int FindUp(const QString& pStr, qint16 pFindType) = 0;
    /// These three return the number of matches.
    virtual int CountBytes(const QString& pStr, qint16 pFindType) = 0;
    virtual int MarkAll(const QString& pStr, qint16 pFindType) = 0;
    virtual int ReplaceAll(const QString& pFind, const QString& pReplace, qint16 pFindType) = 0;
    /// Writes bytes, passed as digits, over those from a position on.
    virtual void ReplaceBytes(const QString& pHexText, int position) = 0;
    /// Reads the page again.
    virtual void FillGrid() = 0;
};
