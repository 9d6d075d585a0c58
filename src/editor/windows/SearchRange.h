#pragma once

#include "text/search/MatchScan.h"

#include <QObject>

#include <optional>

class TextControl;

/// What a person has selected in a control to search within. It stays when a search selects its match, goes along with
/// edits, and becomes the new selection when they select anew. A load ends it.
class SearchRange : public QObject {
    Q_OBJECT

 public:
    /// The control outlives this object. Nothing is chosen before the first selection.
    explicit SearchRange(TextControl& control);

    /// Takes what is selected now, even if that is a match.
    void takeSelection();
    /// In held bytes.
    std::optional<TextMatch> range() const;

 private:
    void takeSelectedAnew();
    void textAboutToChange(qint64 at, qint64 length, bool inserts);

    TextControl& m_control;
    std::optional<TextMatch> m_range;
    quint64 m_changes = 0;  ///< of the control, as far as the range has followed
};
