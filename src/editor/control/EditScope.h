#pragma once

#include "editor/control/EditView.h"

#include <QPointer>

/// One call, key or click from outside. When the outermost scope closes, long lines are cut again and the control
/// reports the changes: first Change, then SelChange, once each. A grouped scope makes one undo step of all edits in
/// it. The control may be destroyed within.
class EditScope {
 public:
    enum Grouping { Separate, Grouped };

    explicit EditScope(EditView& view, Grouping grouping = Separate) : m_view(&view) {
        view.openScope(grouping == Grouped);
    }
    ~EditScope() {
        if (m_view)
            m_view->closeScope();
    }
    EditScope(const EditScope&) = delete;
    EditScope& operator=(const EditScope&) = delete;

 private:
    QPointer<EditView> m_view;
};
