#pragma once

#include <QString>

#include <functional>

class KeptView;
class TextControl;
struct Options;
struct SearchFlags;

/// The searches of a text view: their flags, whether they continue at an end of the text, lists of all matches, and
/// what the user can do meanwhile. Owned by the view.
///
/// Re-entrancy: every search may run the event loop, and view and control may be destroyed then; each function returns
/// false or what it has found so far.
class TextViewSearch {
 public:
    enum class Direction { Forwards, Backwards };

    /// All outlive this object. `ignoresFailures` is set during the loops over all matches: command failures only
    /// repaint the control then.
    TextViewSearch(TextControl& control, const Options& options, bool& ignoresFailures);

    void useFlags(const SearchFlags& flags);
    /// The flags of the whole program, for searches without flags of their own.
    void useProgramFlags();
    void setText(const QString& text);

    /// Finds a match by the current flags. Continues from the other end of the text if the program's option is set,
    /// else ends there. Without a match the control is unchanged, and a recording gets no step.
    bool find(Direction direction);
    /// The same, painted when it is over.
    bool findUnpainted(Direction direction);
    /// All matches from the top of the text as the text of a MatchList. The last is left selected.
    QString findAll();
    /// The list holds where each replacement lies. One undo step.
    QString replaceAll(const QString& replacement, bool preserveCase);

    /// Called while a search runs the event loop: it ends with what it has found.
    void stop() { m_stopped = true; }
    bool wasStopped() const { return m_stopped; }

 private:
    bool goesOn(bool takesLong);
    void giveBack(const KeptView& before, qsizetype stepsBefore);
    void overAllMatches(const std::function<void(const std::function<bool()>& goesOn)>& loop);

    TextControl& m_control;
    const Options& m_options;
    bool& m_ignoresFailures;
    bool m_stopped = false;
};
