#pragma once

#include <QtGlobal>

class EditView;

/// The line numbers in the margin of a control. Owned by the control.
class ControlLineNumbers {
 public:
    /// The view outlives this object.
    explicit ControlLineNumbers(EditView& view);

    bool LineNumbering() const { return m_shown; }
    void setLineNumbering(bool on);
    /// The number of the first line.
    qint64 LineNumberStart() const { return m_start; }
    void setLineNumberStart(qint64 number);

    /// Makes the margin as wide as the last line's number; to be called when the number of lines may have changed.
    void follow();
    /// The same when the letters have another size, or the text is another one.
    void followAnew();
    /// To be called before the control is painted.
    void numberVisiblePieces();

 private:
    bool areTexts() const;

    EditView& m_view;
    bool m_shown = false;
    qint64 m_start = 1;
    qint64 m_numberedLines = -1;
};
