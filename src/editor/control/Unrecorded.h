#pragma once

#include "editor/control/EditView.h"

#include <QPointer>

/// As long as this exists, a recording neither takes steps from the control's changes nor counts them as missed: they
/// are noted in another way, or do not matter.
class Unrecorded {
 public:
    explicit Unrecorded(EditView& view) : m_view(&view) { ++view.state().unrecorded; }
    ~Unrecorded() {
        if (m_view)
            --m_view->state().unrecorded;
    }
    Unrecorded(const Unrecorded&) = delete;
    Unrecorded& operator=(const Unrecorded&) = delete;

 private:
    QPointer<EditView> m_view;
};
