#pragma once

#include <QByteArray>

#include <sys/stat.h>

#include <chrono>
#include <optional>
#include <random>
#include <string>
#include <vector>

/// One file that the program edits, or a document without one, and what is known of it from outside: which keys were
/// pressed when, which of the texts that came of them were saved, and which ones the file may therefore hold. Only a
/// short part of the text changes, the middle; the states of the text are states of the middle. A text's middle is
/// ASCII with LF here, whatever the encoding and the line ends of its file.
class Manuscript {
 public:
    using Clock = std::chrono::steady_clock;

    /// Texts are UTF-8 without and with a mark, UTF-16 with a mark (lower byte first, higher byte first), Windows-1252.
    enum class Kind { Text, MarkedText, Utf16, Utf16Swapped, Western, Bytes };
    /// What the file is like at first.
    struct Shape {
        const char* name;
        qsizetype length;  ///< bytes
        Kind kind;
        bool isTypedAtEnd;
        bool hasLink;             ///< a second hard link, and a mode of its own
        bool hasReturns = false;  ///< lines end with CR LF
    };
    enum class Match { None, Early, Fits };
    /// When the program was killed, and how old a key may have been that is lost: while keys followed each other, and
    /// before a pause.
    struct Kill {
        Clock::time_point when;
        Clock::duration whileTyping;
        Clock::duration afterPause;
    };

    /// A document without a file.
    Manuscript() = default;
    /// Makes the file.
    Manuscript(QByteArray path, const Shape& shape, quint64 seed);

    const QByteArray& path() const { return m_path; }
    qsizetype length() const { return m_head.size() + m_tail.size(); }
    /// Where the file is to be from now on: a document without one is saved.
    void setPath(const QByteArray& path) { m_path = path; }

    /// The key that brings the caret to where it types.
    std::string keyOfPlace() const;
    /// The next key of somebody who types; press it, and call pressed().
    std::string nextKey(std::mt19937& random);
    void pressed();
    /// No byte is half typed.
    bool isWhole() const { return m_phase != 1; }
    bool wasTyped() const { return m_states.size() > 1; }
    bool isOfBytes() const { return m_kind == Kind::Bytes; }
    /// Of the part in which is typed.
    qsizetype changingLength() const { return m_states.back().middle.size(); }
    /// The caret is where it is after keyOfPlace().
    void toPlace() { m_place = 0; }

    // Of bytes, when none is half typed
    bool canUndo() const { return !m_states.back().undo.empty(); }
    /// The newest byte since the last save or judgement was undone: the caret is on it.
    void undone();
    /// From the first to the last, both filled. Undo knows nothing of it.
    void filled(qsizetype first, qsizetype last, char byte);
    /// Whether the last match() was of bytes that must have come back with something to undo. undone() is for it then.
    bool hasUndoBack() const { return m_hasUndoBack; }
    /// The file holds the bytes as they are now.
    void takeAsSaved() { rest(qsizetype(m_states.size()) - 1); }

    Clock::time_point lastKey() const { return m_states.back().when; }

    /// A save of the text as it is now was demanded; from now on the file holds the old or the new one.
    void saveBegan();
    /// The save that was demanded last is done.
    void saveEnded();
    /// Whether the file holds the text as it is now.
    bool isInFile() const;
    /// What is in the file is all that counts from now on: the answer to a question was No. It need not have arrived.
    void givenUp(bool isCertain);

    /// Whether something that is typed moves most of the bytes of a file that takes long to write: a save that is
    /// interrupted then leaves what is neither the old nor the new file.
    bool isTornEasily() const;
    /// Whether the file is none of those that it may be when an interrupted save is completed.
    bool isTorn() const;
    /// Whether the file is one of those that it may be, and remembers which; nothing: it is, otherwise what is wrong.
    std::optional<QByteArray> problemOfFile();
    /// What the last save did that was demanded before the judgement of the file. One that was seen to be done is Done
    /// too: its journal may still be there.
    enum class Save { None, Undone, Done };
    Save lastSave() const { return m_lastSave; }
    /// Whether the bytes are those of a state since the last judgement that could be what is left after a kill: not
    /// older than what the file held, nor than what had to be in the journal. What fits is the state from now on.
    Match match(const QByteArray& bytes, const Kill& kill);
    /// How many keys were lost in the last match().
    qsizetype lostKeys() const { return m_lostKeys; }
    /// The text as it is in the file is the only state from now on.
    void forget();
    QByteArray bytesNow() const { return bytesOf(m_states.back().middle); }
    /// Removes the file with its link.
    void remove() const;

 private:
    /// A typed byte, with its value before.
    struct Undo {
        qsizetype place;
        char byte;
    };
    struct State {
        Clock::time_point when;
        QByteArray middle;
        std::vector<Undo> undo{};  ///< since the last save; oldest first
        bool isHalf = false;       ///< a byte is half typed
    };

    Clock::time_point lastKept(const Kill& kill) const;
    QByteArray encoded(const QByteArray& middle) const;
    QByteArray bytesOf(const QByteArray& middle) const;
    bool holds(const QByteArray& bytes, const QByteArray& middle) const;
    void rest(qsizetype state);
    void typeByte(std::mt19937& random, std::string& key);
    void typeLetter(std::mt19937& random, std::string& key);

    QByteArray m_path;
    Kind m_kind = Kind::Text;
    bool m_isTypedAtEnd = false;
    bool m_hasReturns = false;
    QByteArray m_head;
    QByteArray m_tail;
    struct stat m_status {};
    std::vector<State> m_states{{Clock::time_point::min(), {}}};
    std::vector<qsizetype> m_saves;  ///< states that the file may hold beside the one that it held at last
    Save m_lastSave = Save::None;
    bool m_hasSaveEnded = false;
    qsizetype m_inFile = 0;  ///< the state that the file held at last
    qsizetype m_typed = 0;   ///< letters since the last judgement, which a Backspace may delete
    qsizetype m_place = 0;   ///< of the caret in the middle
    int m_phase = 0;         ///< 1: the first digit of a byte was typed, 2: both
    char m_digit = 0;
    bool m_isGivenUp = false;
    std::vector<QByteArray> m_next;  ///< the middles that the key makes possible
    std::vector<Undo> m_nextUndo;
    bool m_hasUndoBack = false;
    qsizetype m_lostKeys = 0;
};
