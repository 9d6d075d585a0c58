#pragma once

#include <QElapsedTimer>
#include <QPointer>

class EditView;

/// Shows in the status bar that a search of a control takes long, and how to end it, until this object is destroyed.
/// Owned by the search's watch.
class SlowSearchNotice {
 public:
    explicit SlowSearchNotice(EditView& view);
    ~SlowSearchNotice();
    SlowSearchNotice(const SlowSearchNotice&) = delete;
    SlowSearchNotice& operator=(const SlowSearchNotice&) = delete;

    /// Called repeatedly during the search; true: it takes long, and that is shown.
    bool lookAtClock();

 private:
    QPointer<EditView> m_view;
    QElapsedTimer m_since;
    bool m_shown = false;
};
