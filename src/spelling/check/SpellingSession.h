#pragma once

#include "platform/SystemError.h"
#include "spelling/check/Corrections.h"
#include "spelling/dictionary/DictionaryProcess.h"
#include "spelling/words/WordScanner.h"

#include <QHash>
#include <QSet>
#include <QString>
#include <QStringList>

#include <chrono>
#include <memory>
#include <vector>

class OwnWords;
struct Dictionary;

/// The check of one text: finds one mistake after the other and notes what the user decides about it. The text itself
/// stays as it is; result() is a new one. Owned by the form. Positions are UTF-16 units of the text.
///
/// It works in steps of a given time, and neither runs the event loop nor waits longer, so its owner calls step() again
/// and again while hasWork(). An error of the dictionary makes it Failed; setDictionary() begins anew from there.
class SpellingSession {
 public:
    enum class State { Working, AtMistake, Finished, Failed };

    /// The words of the user must outlive it. Without a dictionary it is Failed.
    SpellingSession(QString text, OwnWords& ownWords);
    ~SpellingSession();
    Q_DISABLE_COPY_MOVE(SpellingSession)

    /// Goes on with this dictionary, at the word that was not yet decided about.
    void setDictionary(const Dictionary& dictionary);
    void setDictionary(std::unique_ptr<DictionaryProcess> dictionary);
    /// Has answered at least once since setDictionary().
    bool isDictionaryLoaded() const { return m_dictionary && m_dictionary->isLoaded(); }

    State step(std::chrono::milliseconds most);
    State state() const { return m_state; }
    /// Whether another step is due: words are being looked up, or suggestions.
    bool hasWork() const;
    const QString& error() const { return m_error; }
    /// How much of the text was checked.
    int percent() const;

    // The mistake, while AtMistake

    QString word() const;
    WordSpan place() const { return m_mistake; }
    const QString& text() const { return m_text; }
    const Corrections& corrections() const { return m_corrections; }
    /// Complete once hasWork() is false.
    const QStringList& suggestions() const { return m_suggestions; }

    // Decisions, while AtMistake. The check goes on behind the word.

    void change(const QString& text);
    /// The same for each such word behind it.
    void changeAll(const QString& text);
    void ignore();
    void ignoreAll();
    /// Adds the word to the user's own. On an error the mistake stays.
    SystemError add();

    bool canUndo() const { return !m_decisions.empty(); }
    /// Back to the last mistake that was decided about, as if it had not been.
    SystemError undo();

    QString result() const { return m_corrections.appliedTo(m_text); }

 private:
    enum class Kind { Change, ChangeAll, Ignore, IgnoreAll, Add };
    struct Decision {
        Kind kind;
        WordSpan place;
        std::size_t corrections;  ///< how many there were before
    };
    /// A word that is not known, or of which it is not known yet.
    struct Candidate {
        WordSpan place;
        QString form;
    };

    void rescanFrom(qsizetype position);
    void work();
    void collect();
    void judge();
    void stopAt(const WordSpan& place);
    void takeAnswer();
    void takeFailure();
    void decide(Kind kind);
    QString textOf(const WordSpan& place) const { return m_text.mid(place.position, place.length); }
    QString formOf(const WordSpan& place) const;

    QString m_text;
    OwnWords& m_ownWords;
    std::unique_ptr<Dictionary> m_files;  ///< of the dictionary; null: it cannot be loaded again
    std::unique_ptr<DictionaryProcess> m_dictionary;
    State m_state = State::Failed;
    QString m_error;

    WordScanner m_scanner;
    std::vector<Candidate> m_candidates;
    std::size_t m_next = 0;        ///< the candidate to be judged next
    QStringList m_asked;           ///< forms that are being looked up
    QHash<QString, bool> m_known;  ///< what the dictionary has answered
    bool m_isSuggesting = false;

    WordSpan m_mistake;  ///< of no length: none that is not decided about
    QStringList m_suggestions;
    Corrections m_corrections;
    QHash<QString, QString> m_changes;  ///< words to be changed wherever they stand
    QSet<QString> m_ignored;
    std::vector<Decision> m_decisions;
};
