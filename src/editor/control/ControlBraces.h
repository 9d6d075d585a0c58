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
    void clear();

    EditView& m_view;
    bool m_on = true;
    bool m_shown = false;
};
