#include "spelling/dictionary/DictionaryProcess.h"

#include "spelling/dictionary/Dictionary.h"
#include "spelling/dictionary/DictionaryWork.h"

#include <utility>

using std::chrono::milliseconds;

DictionaryProcess::DictionaryProcess(const Dictionary& dictionary)
    : DictionaryProcess(dictionary.title, DictionaryWork::of(dictionary), Limits{}) {}

DictionaryProcess::DictionaryProcess(QString title, const ChildProcess::Work& work, const Limits& limits)
    : m_title(std::move(title)),
      m_limits(limits),
      m_child(std::make_unique<ChildProcess>(work)),
      m_limit(limits.loading) {
    m_since.start();
    if (m_child->error())
        fail(u"The spell checker can't be started: %1"_qs.arg(m_child->error().description));
}

DictionaryProcess::~DictionaryProcess() = default;

DictionaryProcess::State DictionaryProcess::wait(milliseconds limit) {
    if (m_state != State::Busy)
        return m_state;
    QByteArray answer;
    switch (m_child->receive(answer, limit)) {
        case ChildProcess::Answer::Received:
            take(answer);
            break;
        case ChildProcess::Answer::Ended:
            fail(u"The dictionary %1 can't be used: the spell checker crashed with it."_qs.arg(m_title));
            break;
        case ChildProcess::Answer::Pending:
            if (m_since.hasExpired(m_limit.count()))
                fail(u"The dictionary %1 can't be used: the spell checker doesn't answer."_qs.arg(m_title));
            break;
    }
    return m_state;
}

// Requests

void DictionaryProcess::check(const QStringList& words) {
    m_askedWords = words.size();
    request(DictionaryWork::Check, words, m_limits.checking);
}

void DictionaryProcess::suggest(const QString& word) {
    request(DictionaryWork::Suggest, {word}, m_limits.suggesting);
}

void DictionaryProcess::request(char kind, const QStringList& words, milliseconds limit) {
    QByteArray message(1, kind);
    for (const QString& word : words)
        message.append(word.toUtf8()).append('\0');
    m_asked = kind;
    m_limit = limit;
    m_since.start();
    m_state = State::Busy;
    // A process that has ended is noticed when its answer is waited for.
    m_child->send(message);
}

// Answers

void DictionaryProcess::take(const QByteArray& answer) {
    m_state = State::Ready;
    if (!m_isLoaded)
        takeLoading(answer);
    else if (m_asked == DictionaryWork::Check)
        takeVerdicts(answer);
    else
        m_suggestions = QString::fromUtf8(answer).split(QChar(u'\0'), Qt::SkipEmptyParts);
}

void DictionaryProcess::takeLoading(const QByteArray& answer) {
    m_isLoaded = answer.startsWith(DictionaryWork::Loaded);
    if (!m_isLoaded)
        fail(QString::fromUtf8(answer.mid(1)));
}

void DictionaryProcess::takeVerdicts(const QByteArray& answer) {
    if (answer.size() != m_askedWords) {
        fail(u"The dictionary %1 can't be used: the spell checker crashed with it."_qs.arg(m_title));
        return;
    }
    m_verdicts.clear();
    for (const char each : answer)
        m_verdicts.push_back(each == '1');
}

void DictionaryProcess::fail(const QString& reason) {
    m_state = State::Failed;
    m_error = reason;
    m_child.reset();
}
