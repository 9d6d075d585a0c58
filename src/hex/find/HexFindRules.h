#pragma once

/// The differences between the four panels of the find and replace form. Texts contain the term as %1 and a number as
/// %2.
struct HexFindRules {
    const char* name;            ///< object name of the panel
    bool isText;                 ///< else a byte sequence
    const char* label;           ///< of the term
    const char* findHistory;     ///< file of the terms
    const char* replaceHistory;  ///< file of the replacements; null: the panel only finds
    const char* counted;
    const char* marked;
    const char* replacedAll;
    bool fillsBeforeSearch;  ///< a replacement shorter than the term gets the term's tail before each search
    bool cutsForAll;         ///< one longer than the term is cut before all matches are replaced

    bool replaces() const { return replaceHistory != nullptr; }
};
