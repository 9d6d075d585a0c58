#pragma once

#include "text/search/MatchScan.h"

#include <QObject>

#include <optional>
#include <vector>

class ControlSearch;
class ControlSelection;
class EditView;

/// What the user has selected in a control to search within, in held bytes: one range, several, or the part of each
/// line that a rectangle has. It stays when a search selects its match, moves along with edits, and becomes the new
/// selection when the user selects another text. A load clears it, and an edit that joins two of its ranges. Owned by
/// the dialog.
class SearchRange : public QObject {
    Q_OBJECT

 public:
    /// All three outlive this object. Nothing is chosen before the first selection.
    SearchRange(EditView& view, const ControlSelection& selection, const ControlSearch& search);

    /// Uses the current selection, even if it is a match.
    void takeSelection();
    /// From the top and apart from each other, at least one.
    std::optional<std::vector<TextMatch>> ranges() const;

 private:
    void takeSelectedAnew();
    void textAboutToChange(qint64 at, qint64 length, bool inserts);

    EditView& m_view;
    const ControlSelection& m_selection;
    const ControlSearch& m_search;
    std::optional<std::vector<TextMatch>> m_ranges;
    quint64 m_changes = 0;  ///< of the control, as far as the ranges have followed
};
