#pragma once

#include "text/search/MatchScan.h"

#include <QObject>

#include <optional>

class ControlSearch;
class ControlSelection;
class EditView;

/// The range of a control that the user has selected to search within, in held bytes. It stays when a search selects
/// its match, moves along with edits, and becomes the new selection when the user selects another text. A load clears
/// it. Owned by the dialog.
class SearchRange : public QObject {
    Q_OBJECT

 public:
    /// All three outlive this object. Nothing is chosen before the first selection.
    SearchRange(EditView& view, const ControlSelection& selection, const ControlSearch& search);

    /// Uses the current selection, even if it is a match.
    void takeSelection();
    /// In held bytes.
    std::optional<TextMatch> range() const;

 private:
    void takeSelectedAnew();
    void textAboutToChange(qint64 at, qint64 length, bool inserts);

    EditView& m_view;
    const ControlSelection& m_selection;
    const ControlSearch& m_search;
    std::optional<TextMatch> m_range;
    quint64 m_changes = 0;  ///< of the control, as far as the range has followed
};
