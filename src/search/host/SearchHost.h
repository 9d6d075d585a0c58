#pragma once

#include <QString>

/// What a search across files asks of the frame. Implemented by the frame's room, which owns it; it outlives the
/// search.
class SearchHost {
 public:
    virtual ~SearchHost() = default;

    /// Shows the panel with the results, and the marks of its menu entry and button.
    virtual void showResults() = 0;
    /// The caption of the panel.
    virtual void setResultsTitle(const QString& title) = 0;
    /// While a search runs the frame and its project are not closed. Each `false` is followed by one `true`.
    virtual void enableClose(bool on) = 0;
    /// A sentence for the status bar; an empty one removes the last.
    virtual void notice(const QString& sentence) = 0;
};
