#pragma once

#include "platform/ChildProcess.h"

#include <QElapsedTimer>
#include <QString>
#include <QStringList>

#include <chrono>
#include <memory>
#include <vector>

struct Dictionary;

/// A dictionary that answers from a child process, one request at a time. Owned by the code that creates it, which asks
/// again and again whether the answer is there; the destructor ends the process at once, whatever it does. Does not run
/// the event loop and waits no longer than it is told to.
///
/// A process that crashes or does not answer in time has failed for good; error() then says so in a sentence.
class DictionaryProcess {
 public:
    enum class State { Busy, Ready, Failed };

    /// How long a request may take.
    struct Limits {
        std::chrono::milliseconds loading{60'000};
        std::chrono::milliseconds checking{20'000};
        std::chrono::milliseconds suggesting{5'000};
    };

    /// Loading begins at once.
    explicit DictionaryProcess(const Dictionary& dictionary);
    /// With other work than that of a dictionary.
    DictionaryProcess(QString title, const ChildProcess::Work& work, const Limits& limits);
    ~DictionaryProcess();
    Q_DISABLE_COPY_MOVE(DictionaryProcess)

    /// Waits for the answer, at most for this time.
    State wait(std::chrono::milliseconds limit);
    State state() const { return m_state; }
    bool isLoaded() const { return m_isLoaded; }
    const QString& error() const { return m_error; }

    // Requests, while it is Ready

    /// The words together have at most MostRequest bytes of UTF-8.
    void check(const QStringList& words);
    void suggest(const QString& word);

    // The answer to the last request, once it is Ready again

    const std::vector<bool>& verdicts() const { return m_verdicts; }
    const QStringList& suggestions() const { return m_suggestions; }

    /// What the system holds of a message without waiting.
    static constexpr qsizetype MostRequest = 64 * 1024;

 private:
    void request(char kind, const QStringList& words, std::chrono::milliseconds limit);
    void take(const QByteArray& answer);
    void takeLoading(const QByteArray& answer);
    void takeVerdicts(const QByteArray& answer);
    void fail(const QString& reason);

    QString m_title;
    Limits m_limits;
    std::unique_ptr<ChildProcess> m_child;
    State m_state = State::Busy;
    bool m_isLoaded = false;
    char m_asked = 0;
    qsizetype m_askedWords = 0;
    std::chrono::milliseconds m_limit;
    QElapsedTimer m_since;
    QString m_error;
    std::vector<bool> m_verdicts;
    QStringList m_suggestions;
};
