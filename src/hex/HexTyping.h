#pragma once

#include "hex/bytes/HexPaging.h"

#include <functional>

class HexPanes;
class QChar;
class QString;

/// Turns the text typed into a pane into bytes: two digits make one byte in the pane of digits, each character one in
/// the other. Shows them in both panes and has each complete byte saved. Owned by the view, like the panes, which
/// outlive it.
class HexTyping {
 public:
    using Save = std::function<void(HexCell)>;
    /// The first digit of a byte was typed; the second one completes it.
    using Begun = std::function<void(HexCell)>;

    HexTyping(HexPanes& panes, Save save, Begun begun);

    /// Into the pane of that number.
    void type(int pane, const QString& text);
    /// A byte of which one digit was typed is complete with that one.
    void finishNibble(HexCell cell);

 private:
    void typeHex(const QString& text);
    void typeNibble(QChar digit);
    void typeText(const QString& text);

    HexPanes& m_panes;
    Save m_save;
    Begun m_begun;
};
