#pragma once

#include "platform/FileState.h"
#include "platform/SystemError.h"
#include "text/codec/SaveFlags.h"
#include "text/codec/TextCodec.h"

#include <QString>

#include <optional>

class ControlLineNumbers;
class ControlLook;
class ControlTyping;
class EditView;
struct LoadedText;

/// Where the text of a control was loaded from or saved to last. A plain value.
struct TextOrigin {
    QString path;                    ///< empty: neither loaded nor saved yet
    std::optional<FileState> state;  ///< of the file then
    TextFormat format;
};

/// Loads files into a control and saves its text; its line ends and encoding. Owned by the control. An error leaves
/// text and undo history unchanged.
class ControlFile {
 public:
    /// All four outlive this object.
    ControlFile(EditView& view, ControlTyping& typing, ControlLineNumbers& lineNumbers, ControlLook& look);

    /// Loads the file and finds out its encoding.
    SystemError OpenFile(const QString& path);
    /// Loads the file by the encoding of a flag word of SaveFlags (without detection); AsLoaded: by detection.
    SystemError OpenFileAs(const QString& path, int flagWord);
    /// Loads a text that was recovered, from a file of UTF-8 without a mark. It counts as the changed text of `origin`,
    /// and is saved in its format. `lineEndMode`, as SC_EOL_, is used where the line ends of the text allow it.
    SystemError openRecovered(const QString& utf8Path, TextOrigin origin, int lineEndMode);
    const TextOrigin& origin() const { return m_origin; }
    /// Writes the text in place under a flag word. On failure the text stays changed.
    SystemError SaveFile(const QString& path, int flagWord);
    /// Loads the file again by the encoding of a flag word; only while nothing was edited since it was loaded or saved.
    bool canReopen() const;
    SystemError reopenAs(int flagWord);

    /// The line end that typed and pasted ones become, as SC_EOL_.
    int lineEndMode() const;
    /// Converts all line ends to this one. It cannot be undone, and is refused for a text with lines held in pieces:
    /// what a joint is depends on the line ends of the text.
    bool canConvertLineEnds() const;
    void convertLineEnds(int mode);

    /// What was switched off for this text because of its size, as a sentence for the status bar; empty: nothing.
    QString limitations() const;

 private:
    void takeLoaded(LoadedText loaded, TextOrigin origin, int lineEndMode);
    bool holdsLineEnd(int mode) const;
    void applyDocumentState(int lineEndMode);
    void emptyUndoHistory();

    EditView& m_view;
    ControlTyping& m_typing;
    ControlLineNumbers& m_lineNumbers;
    ControlLook& m_look;
    TextOrigin m_origin;
    bool m_coloured = true;
    /// Since the last load or save, in a way that undo cannot take back: line ends were converted, or a text recovered.
    bool m_changedForGood = false;
};
