#pragma once

#include <QElapsedTimer>
#include <QPointer>

class EditView;

/// Shows in the status bar that a search of a control takes long, and how to end it, until this object is destroyed.
/// Owned by the search's watch.
class SearchNotice {
 public:
    explicit SearchNotice(EditView& view);
    ~SearchNotice();
    SearchNotice(const SearchNotice&) = delete;
    SearchNotice& operator=(const SearchNotice&) = delete;

    /// Called repeatedly during the search; true: it takes long, and that is shown.
    bool lookAtClock();

 private:
    QPointer<EditView> m_view;
    QElapsedTimer m_since;
    bool m_shown = false;
};
