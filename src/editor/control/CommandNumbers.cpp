#include "editor/control/CommandNumbers.h"

#include <QCoreApplication>
#include <Qsci/qsciscintillabase.h>

#include <algorithm>
#include <iterator>

namespace Command {

namespace {

using Sci = QsciScintillaBase;

constexpr Info Infos[] = {
    // Of words, lines and the selection
    {WordToUpper, Kind::Edits, QT_TRANSLATE_NOOP("CommandNumbers", "Word to upper case")},
    {WordToLower, Kind::Edits, QT_TRANSLATE_NOOP("CommandNumbers", "Word to lower case")},
    {CapitalizeWord, Kind::Edits, QT_TRANSLATE_NOOP("CommandNumbers", "Capitalize word")},
    {SelectionToUpper, Kind::Edits, QT_TRANSLATE_NOOP("CommandNumbers", "Selection to upper case")},
    {SelectionToLower, Kind::Edits, QT_TRANSLATE_NOOP("CommandNumbers", "Selection to lower case")},
    {DeleteToStartOfLine, Kind::Edits, QT_TRANSLATE_NOOP("CommandNumbers", "Delete to start of line")},
    {DeleteToEndOfLine, Kind::Edits, QT_TRANSLATE_NOOP("CommandNumbers", "Delete to end of line")},
    {DeleteLine, Kind::Edits, QT_TRANSLATE_NOOP("CommandNumbers", "Delete line")},
    {CutLine, Kind::EditsOnce, QT_TRANSLATE_NOOP("CommandNumbers", "Cut line")},
    {SelectParagraph, Kind::Looks, QT_TRANSLATE_NOOP("CommandNumbers", "Select paragraph")},
    {SelectLine, Kind::Looks, QT_TRANSLATE_NOOP("CommandNumbers", "Select line")},
    {SelectAll, Kind::Looks, QT_TRANSLATE_NOOP("CommandNumbers", "Select all")},
    {SelectWord, Kind::Looks, QT_TRANSLATE_NOOP("CommandNumbers", "Select word")},
    {Indent, Kind::Edits, QT_TRANSLATE_NOOP("CommandNumbers", "Indent")},
    {Unindent, Kind::Edits, QT_TRANSLATE_NOOP("CommandNumbers", "Unindent")},
    {SortLinesAscending, Kind::Edits, QT_TRANSLATE_NOOP("CommandNumbers", "Sort lines ascending")},
    {SortLinesDescending, Kind::Edits, QT_TRANSLATE_NOOP("CommandNumbers", "Sort lines descending")},
    {SetRepeatCount, Kind::Asks, QT_TRANSLATE_NOOP("CommandNumbers", "Set repeat count")},
    {GoToLine, Kind::Asks, QT_TRANSLATE_NOOP("CommandNumbers", "Go to line")},
    {Properties, Kind::Asks, QT_TRANSLATE_NOOP("CommandNumbers", "Properties")},
    // Searching
    {Find, Kind::Asks, QT_TRANSLATE_NOOP("CommandNumbers", "Find")},
    {Replace, Kind::Asks, QT_TRANSLATE_NOOP("CommandNumbers", "Replace")},
    {IncrementalSearch, Kind::Asks, QT_TRANSLATE_NOOP("CommandNumbers", "Incremental search")},
    {ReverseIncrementalSearch, Kind::Asks, QT_TRANSLATE_NOOP("CommandNumbers", "Reverse incremental search")},
    {FindNext, Kind::Searches, QT_TRANSLATE_NOOP("CommandNumbers", "Find next")},
    {FindPrevious, Kind::Searches, QT_TRANSLATE_NOOP("CommandNumbers", "Find previous")},
    {ReplaceNext, Kind::Searches, QT_TRANSLATE_NOOP("CommandNumbers", "Replace next match")},
    {ReplaceSelected, Kind::Searches, QT_TRANSLATE_NOOP("CommandNumbers", "Replace match and find next")},
    {ReplaceAll, Kind::Searches, QT_TRANSLATE_NOOP("CommandNumbers", "Replace all matches")},
    {ReplaceAllInSelection, Kind::Searches, QT_TRANSLATE_NOOP("CommandNumbers", "Replace all matches in selection")},
    {SetSearchText, Kind::Sets, QT_TRANSLATE_NOOP("CommandNumbers", "Set text to find")},
    {SetReplacementText, Kind::Sets, QT_TRANSLATE_NOOP("CommandNumbers", "Set replacement text")},
    {RegExpOn, Kind::Sets, QT_TRANSLATE_NOOP("CommandNumbers", "Regular expressions on")},
    {RegExpOff, Kind::Sets, QT_TRANSLATE_NOOP("CommandNumbers", "Regular expressions off")},
    {WholeWordOn, Kind::Sets, QT_TRANSLATE_NOOP("CommandNumbers", "Whole words on")},
    {WholeWordOff, Kind::Sets, QT_TRANSLATE_NOOP("CommandNumbers", "Whole words off")},
    {PreserveCaseOn, Kind::Sets, QT_TRANSLATE_NOOP("CommandNumbers", "Preserve case on")},
    {PreserveCaseOff, Kind::Sets, QT_TRANSLATE_NOOP("CommandNumbers", "Preserve case off")},
    {MatchCaseOn, Kind::Sets, QT_TRANSLATE_NOOP("CommandNumbers", "Match case on")},
    {MatchCaseOff, Kind::Sets, QT_TRANSLATE_NOOP("CommandNumbers", "Match case off")},
    // Bookmarks
    {ToggleBookmark, Kind::Looks, QT_TRANSLATE_NOOP("CommandNumbers", "Toggle bookmark")},
    {PreviousBookmark, Kind::Looks, QT_TRANSLATE_NOOP("CommandNumbers", "Previous bookmark")},
    {NextBookmark, Kind::Looks, QT_TRANSLATE_NOOP("CommandNumbers", "Next bookmark")},
    {ClearAllBookmarks, Kind::Looks, QT_TRANSLATE_NOOP("CommandNumbers", "Clear all bookmarks")},
    {FirstBookmark, Kind::Looks, QT_TRANSLATE_NOOP("CommandNumbers", "First bookmark")},
    {LastBookmark, Kind::Looks, QT_TRANSLATE_NOOP("CommandNumbers", "Last bookmark")},
    // Macros
    {RecordMacro, Kind::Records, QT_TRANSLATE_NOOP("CommandNumbers", "Record macro")},
    {MacroBase + 1, Kind::Plays, QT_TRANSLATE_NOOP("CommandNumbers", "Play macro 1")},
    {MacroBase + 2, Kind::Plays, QT_TRANSLATE_NOOP("CommandNumbers", "Play macro 2")},
    {MacroBase + 3, Kind::Plays, QT_TRANSLATE_NOOP("CommandNumbers", "Play macro 3")},
    {MacroBase + 4, Kind::Plays, QT_TRANSLATE_NOOP("CommandNumbers", "Play macro 4")},
    {MacroBase + 5, Kind::Plays, QT_TRANSLATE_NOOP("CommandNumbers", "Play macro 5")},
    {MacroBase + 6, Kind::Plays, QT_TRANSLATE_NOOP("CommandNumbers", "Play macro 6")},
    {MacroBase + 7, Kind::Plays, QT_TRANSLATE_NOOP("CommandNumbers", "Play macro 7")},
    {MacroBase + 8, Kind::Plays, QT_TRANSLATE_NOOP("CommandNumbers", "Play macro 8")},
    {MacroBase + 9, Kind::Plays, QT_TRANSLATE_NOOP("CommandNumbers", "Play macro 9")},
    {MacroBase + 10, Kind::Plays, QT_TRANSLATE_NOOP("CommandNumbers", "Play macro 10")},
    // The clipboard, and back
    {Sci::SCI_UNDO, Kind::TakesBack, QT_TRANSLATE_NOOP("CommandNumbers", "Undo")},
    {Sci::SCI_REDO, Kind::TakesBack, QT_TRANSLATE_NOOP("CommandNumbers", "Redo")},
    {Sci::SCI_CUT, Kind::Keyed, QT_TRANSLATE_NOOP("CommandNumbers", "Cut")},
    {Sci::SCI_COPY, Kind::Keyed, QT_TRANSLATE_NOOP("CommandNumbers", "Copy")},
    {Sci::SCI_PASTE, Kind::Keyed, QT_TRANSLATE_NOOP("CommandNumbers", "Paste")},
    // Typing
    {Sci::SCI_NEWLINE, Kind::Keyed, QT_TRANSLATE_NOOP("CommandNumbers", "New line")},
    {Sci::SCI_TAB, Kind::Keyed, QT_TRANSLATE_NOOP("CommandNumbers", "Tab")},
    {Sci::SCI_BACKTAB, Kind::Keyed, QT_TRANSLATE_NOOP("CommandNumbers", "Tab back")},
    {Sci::SCI_CLEAR, Kind::Keyed, QT_TRANSLATE_NOOP("CommandNumbers", "Delete character")},
    {Sci::SCI_DELETEBACK, Kind::Keyed, QT_TRANSLATE_NOOP("CommandNumbers", "Delete character before")},
    {Sci::SCI_DELWORDRIGHT, Kind::Keyed, QT_TRANSLATE_NOOP("CommandNumbers", "Delete word")},
    {Sci::SCI_DELWORDLEFT, Kind::Keyed, QT_TRANSLATE_NOOP("CommandNumbers", "Delete word before")},
    {Sci::SCI_EDITTOGGLEOVERTYPE, Kind::Keyed, QT_TRANSLATE_NOOP("CommandNumbers", "Insert or overtype")},
    {Sci::SCI_CANCEL, Kind::Keyed, QT_TRANSLATE_NOOP("CommandNumbers", "Cancel")},
    // The caret
    {Sci::SCI_CHARLEFT, Kind::Keyed, QT_TRANSLATE_NOOP("CommandNumbers", "Left")},
    {Sci::SCI_CHARRIGHT, Kind::Keyed, QT_TRANSLATE_NOOP("CommandNumbers", "Right")},
    {Sci::SCI_WORDLEFT, Kind::Keyed, QT_TRANSLATE_NOOP("CommandNumbers", "Word left")},
    {Sci::SCI_WORDRIGHT, Kind::Keyed, QT_TRANSLATE_NOOP("CommandNumbers", "Word right")},
    {Sci::SCI_LINEUP, Kind::Keyed, QT_TRANSLATE_NOOP("CommandNumbers", "Line up")},
    {Sci::SCI_LINEDOWN, Kind::Keyed, QT_TRANSLATE_NOOP("CommandNumbers", "Line down")},
    {Sci::SCI_PAGEUP, Kind::Keyed, QT_TRANSLATE_NOOP("CommandNumbers", "Page up")},
    {Sci::SCI_PAGEDOWN, Kind::Keyed, QT_TRANSLATE_NOOP("CommandNumbers", "Page down")},
    {Sci::SCI_VCHOME, Kind::Keyed, QT_TRANSLATE_NOOP("CommandNumbers", "Start of line")},
    {Sci::SCI_LINEEND, Kind::Keyed, QT_TRANSLATE_NOOP("CommandNumbers", "End of line")},
    {Sci::SCI_DOCUMENTSTART, Kind::Keyed, QT_TRANSLATE_NOOP("CommandNumbers", "Start of text")},
    {Sci::SCI_DOCUMENTEND, Kind::Keyed, QT_TRANSLATE_NOOP("CommandNumbers", "End of text")},
    {GoToStartOfText, Kind::Looks, QT_TRANSLATE_NOOP("CommandNumbers", "Go to start of text")},
    {GoToEndOfText, Kind::Looks, QT_TRANSLATE_NOOP("CommandNumbers", "Go to end of text")},
    // The caret with the selection
    {Sci::SCI_CHARLEFTEXTEND, Kind::Keyed, QT_TRANSLATE_NOOP("CommandNumbers", "Select left")},
    {Sci::SCI_CHARRIGHTEXTEND, Kind::Keyed, QT_TRANSLATE_NOOP("CommandNumbers", "Select right")},
    {Sci::SCI_WORDLEFTEXTEND, Kind::Keyed, QT_TRANSLATE_NOOP("CommandNumbers", "Select word left")},
    {Sci::SCI_WORDRIGHTEXTEND, Kind::Keyed, QT_TRANSLATE_NOOP("CommandNumbers", "Select word right")},
    {Sci::SCI_LINEUPEXTEND, Kind::Keyed, QT_TRANSLATE_NOOP("CommandNumbers", "Select line up")},
    {Sci::SCI_LINEDOWNEXTEND, Kind::Keyed, QT_TRANSLATE_NOOP("CommandNumbers", "Select line down")},
    {Sci::SCI_PAGEUPEXTEND, Kind::Keyed, QT_TRANSLATE_NOOP("CommandNumbers", "Select page up")},
    {Sci::SCI_PAGEDOWNEXTEND, Kind::Keyed, QT_TRANSLATE_NOOP("CommandNumbers", "Select page down")},
    {Sci::SCI_VCHOMEEXTEND, Kind::Keyed, QT_TRANSLATE_NOOP("CommandNumbers", "Select to start of line")},
    {Sci::SCI_LINEENDEXTEND, Kind::Keyed, QT_TRANSLATE_NOOP("CommandNumbers", "Select to end of line")},
    {Sci::SCI_DOCUMENTSTARTEXTEND, Kind::Keyed, QT_TRANSLATE_NOOP("CommandNumbers", "Select to start of text")},
    {Sci::SCI_DOCUMENTENDEXTEND, Kind::Keyed, QT_TRANSLATE_NOOP("CommandNumbers", "Select to end of text")},
    {Sci::SCI_CHARLEFTRECTEXTEND, Kind::Keyed, QT_TRANSLATE_NOOP("CommandNumbers", "Rectangle left")},
    {Sci::SCI_CHARRIGHTRECTEXTEND, Kind::Keyed, QT_TRANSLATE_NOOP("CommandNumbers", "Rectangle right")},
    {Sci::SCI_LINEUPRECTEXTEND, Kind::Keyed, QT_TRANSLATE_NOOP("CommandNumbers", "Rectangle up")},
    {Sci::SCI_LINEDOWNRECTEXTEND, Kind::Keyed, QT_TRANSLATE_NOOP("CommandNumbers", "Rectangle down")},
    {Sci::SCI_PAGEUPRECTEXTEND, Kind::Keyed, QT_TRANSLATE_NOOP("CommandNumbers", "Rectangle page up")},
    {Sci::SCI_PAGEDOWNRECTEXTEND, Kind::Keyed, QT_TRANSLATE_NOOP("CommandNumbers", "Rectangle page down")},
    {Sci::SCI_VCHOMERECTEXTEND, Kind::Keyed, QT_TRANSLATE_NOOP("CommandNumbers", "Rectangle to start of line")},
    {Sci::SCI_LINEENDRECTEXTEND, Kind::Keyed, QT_TRANSLATE_NOOP("CommandNumbers", "Rectangle to end of line")},
    // Display
    {Sci::SCI_LINESCROLLUP, Kind::Keyed, QT_TRANSLATE_NOOP("CommandNumbers", "Scroll up")},
    {Sci::SCI_LINESCROLLDOWN, Kind::Keyed, QT_TRANSLATE_NOOP("CommandNumbers", "Scroll down")},
    {Sci::SCI_ZOOMIN, Kind::Zooms, QT_TRANSLATE_NOOP("CommandNumbers", "Zoom in")},
    {Sci::SCI_ZOOMOUT, Kind::Zooms, QT_TRANSLATE_NOOP("CommandNumbers", "Zoom out")},
    {Sci::SCI_SETZOOM, Kind::Zooms, QT_TRANSLATE_NOOP("CommandNumbers", "Zoom back to normal")},
};

}  // namespace

std::span<const Info> all() {
    return Infos;
}

const Info* infoOf(int number) {
    const auto* info = std::ranges::find(Infos, number, &Info::number);
    return info == std::end(Infos) ? nullptr : info;
}

bool canBePlayed(const Info& info, const QString& argument) {
    switch (info.kind) {
        case Kind::Asks:
            return !argument.isEmpty() && (info.number == SetRepeatCount || info.number == GoToLine);
        case Kind::Records:
        case Kind::TakesBack:
        case Kind::Zooms:
            return false;
        default:
            return true;
    }
}

QString captionOf(int number) {
    const Info* info = infoOf(number);
    return info == nullptr ? QString() : QCoreApplication::translate("CommandNumbers", info->caption);
}

}  // namespace Command
