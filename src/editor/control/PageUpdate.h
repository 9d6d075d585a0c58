#pragma once

#include <QWidget>

#include <optional>
#include <utility>

class EditView;

/// As long as this object exists, nothing that the library wants painted again is: it asks for the whole page where a
/// line or two have changed. Whoever blocks says afterwards what is to be painted. Made for one call into the library,
/// during which the event loop does not run.
class UpdatesBlocked {
 public:
    /// QWidget::setUpdatesEnabled() would update the whole widget when updates are enabled again.
    explicit UpdatesBlocked(QWidget& viewport)
        : m_viewport(viewport), m_before(viewport.testAttribute(Qt::WA_UpdatesDisabled)) {
        m_viewport.setAttribute(Qt::WA_UpdatesDisabled);
    }
    ~UpdatesBlocked() { m_viewport.setAttribute(Qt::WA_UpdatesDisabled, m_before); }
    UpdatesBlocked(const UpdatesBlocked&) = delete;
    UpdatesBlocked& operator=(const UpdatesBlocked&) = delete;

 private:
    QWidget& m_viewport;
    bool m_before;
};

/// The same for a call that may scroll: when this object is destroyed, what remains on the page is moved to its new
/// place, and what has come in is going to be painted. The caller states the lines that the call has changed.
class ScrolledPage {
 public:
    /// The view outlives this object.
    explicit ScrolledPage(EditView& view);
    ~ScrolledPage();
    ScrolledPage(const ScrolledPage&) = delete;
    ScrolledPage& operator=(const ScrolledPage&) = delete;

    /// Lines of the held text as they are numbered after the call; with a last line behind the text all below as well.
    void setChanged(qint64 firstLine, qint64 lastLine);

 private:
    bool isColoured() const;
    bool scrollPixels() const;

    EditView& m_view;
    std::optional<UpdatesBlocked> m_blocked;
    qint64 m_firstRow;
    qint64 m_left;
    /// Whether all text of the page had its colours before the call.
    bool m_coloured;
    std::optional<std::pair<qint64, qint64>> m_changed;
};
