#pragma once

#include "editor/language/BraceScan.h"

#include <QtGlobal>

class EditView;

/// Marks the brace at the caret and its partner. Owned by the control.
class ControlBraces {
 public:
    /// The view outlives this object.
    explicit ControlBraces(EditView& view) : m_view(view) {}

    bool BraceMatching() const { return m_on; }
    void setBraceMatching(bool on);
    /// To be called when text, caret or language have changed.
    void follow();

 private:
    BraceScan::Match matchAt(qint64 place) const;

    EditView& m_view;
    bool m_on = true;
    /// A marked brace, by line and column of the held text: an edit that moves it has its line painted anyway.
    struct Mark {
        qint64 line = -1;  ///< none: -1
        qint64 column = -1;
        bool matched = false;
        bool operator==(const Mark&) const = default;
    };
    Mark markAt(qint64 byte, bool matched) const;
    void show(const BraceScan::Match& match);
    void replace(Mark& shown, const Mark& mark);

    Mark m_brace;
    Mark m_partner;
};
