#pragma once

#include <QElapsedTimer>
#include <QPointer>

class EditView;

/// Tells a person that a search of a control takes long, and how to end it, until this object goes. The search's watch
/// owns it.
class SearchNotice {
 public:
    explicit SearchNotice(EditView& view);
    ~SearchNotice();
    SearchNotice(const SearchNotice&) = delete;
    SearchNotice& operator=(const SearchNotice&) = delete;

    /// Called again and again as long as the search goes on; true: it takes long, and that is told.
    bool lookAtClock();

 private:
    QPointer<EditView> m_view;
    QElapsedTimer m_since;
    bool m_shown = false;
};
