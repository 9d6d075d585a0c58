#include "spelling/check/SpellingSession.h"

#include "spelling/dictionary/Dictionary.h"
#include "spelling/words/OwnWords.h"

#include <QElapsedTimer>

#include <algorithm>
#include <utility>

using std::chrono::milliseconds;

namespace {

/// Words that are collected before the dictionary is asked, and units examined for them.
constexpr std::size_t MostCandidates = 4096;
constexpr qsizetype MostUnits = 128 * 1024;
/// Of one unit in UTF-8.
constexpr qsizetype MostBytes = 3;
/// Answers that are kept.
constexpr qsizetype MostKnown = 200'000;

}  // namespace

SpellingSession::SpellingSession(QString text, OwnWords& ownWords)
    : m_text(std::move(text)), m_ownWords(ownWords), m_scanner(m_text) {}

SpellingSession::~SpellingSession() = default;

// The dictionary

void SpellingSession::setDictionary(const Dictionary& dictionary) {
    setDictionary(std::make_unique<DictionaryProcess>(dictionary));
    m_files = std::make_unique<Dictionary>(dictionary);
}

void SpellingSession::setDictionary(std::unique_ptr<DictionaryProcess> dictionary) {
    m_dictionary = std::move(dictionary);
    m_files.reset();
    m_known.clear();
    m_asked.clear();
    m_error.clear();
    m_isSuggesting = false;
    if (m_mistake.length > 0)
        rescanFrom(m_mistake.position);
    else if (m_next < m_candidates.size())
        rescanFrom(m_candidates[m_next].place.position);
    m_state = State::Working;
}

void SpellingSession::rescanFrom(qsizetype position) {
    m_scanner = WordScanner(m_text, position);
    m_candidates.clear();
    m_next = 0;
    m_mistake = {};
    m_suggestions.clear();
    m_state = State::Working;
}

// Steps

bool SpellingSession::hasWork() const {
    return m_state == State::Working || (m_state == State::AtMistake && m_isSuggesting);
}

int SpellingSession::percent() const {
    return m_text.isEmpty() ? 100 : static_cast<int>(100 * m_scanner.position() / m_text.size());
}

SpellingSession::State SpellingSession::step(milliseconds most) {
    QElapsedTimer taken;
    taken.start();
    while (hasWork()) {
        const milliseconds left = most - milliseconds(taken.elapsed());
        const DictionaryProcess::State answer = m_dictionary->wait(std::max(left, milliseconds(0)));
        if (answer == DictionaryProcess::State::Busy)
            break;
        if (answer == DictionaryProcess::State::Ready)
            takeAnswer();
        else
            takeFailure();
        if (m_state == State::Working && answer == DictionaryProcess::State::Ready)
            work();
        if (taken.hasExpired(most.count()))
            break;
    }
    return m_state;
}

void SpellingSession::takeAnswer() {
    if (!m_asked.isEmpty() && m_known.size() > MostKnown)
        m_known.clear();
    for (qsizetype i = 0; i < m_asked.size(); ++i)
        m_known.insert(m_asked[i], m_dictionary->verdicts()[static_cast<std::size_t>(i)]);
    m_asked.clear();
    if (std::exchange(m_isSuggesting, false) && m_state == State::AtMistake)
        m_suggestions = m_dictionary->suggestions();
}

/// A word whose suggestions make the dictionary fail has none, and the dictionary is loaded again.
void SpellingSession::takeFailure() {
    if (std::exchange(m_isSuggesting, false) && m_files) {
        m_dictionary = std::make_unique<DictionaryProcess>(*m_files);
        return;
    }
    m_error = m_dictionary->error();
    m_state = State::Failed;
}

void SpellingSession::work() {
    if (m_next < m_candidates.size())
        judge();
    else if (!m_scanner.atEnd())
        collect();
    else
        m_state = State::Finished;
}

/// Looks for words that the dictionary is not known to know, and asks it about them.
void SpellingSession::collect() {
    m_candidates.clear();
    m_next = 0;
    QSet<QString> asked;
    qsizetype bytes = 0;
    const qsizetype end = m_scanner.position() + MostUnits;
    while (m_candidates.size() < MostCandidates && m_scanner.position() < end) {
        const auto place = m_scanner.next(end - m_scanner.position());
        if (!place)
            break;
        const QString form = formOf(*place);
        const auto known = m_known.constFind(form);
        if (known != m_known.constEnd() && *known)
            continue;
        m_candidates.push_back({*place, form});
        if (known != m_known.constEnd() || asked.contains(form))
            continue;
        asked.insert(form);
        m_asked.append(form);
        bytes += MostBytes * form.size() + 1;
        if (bytes > DictionaryProcess::MostRequest - MostBytes * 2 * WordScanner::LongestWord)
            break;
    }
    if (!m_asked.isEmpty())
        m_dictionary->check(m_asked);
}

void SpellingSession::judge() {
    while (m_state == State::Working && m_next < m_candidates.size()) {
        const Candidate& candidate = m_candidates[m_next++];
        if (m_known.value(candidate.form))
            continue;
        const QString word = textOf(candidate.place);
        const auto change = m_changes.constFind(word);
        if (change != m_changes.constEnd())
            m_corrections.add(candidate.place.position, candidate.place.length, *change);
        else if (!m_ignored.contains(word) && !m_ownWords.contains(word))
            stopAt(candidate.place);
    }
}

void SpellingSession::stopAt(const WordSpan& place) {
    m_mistake = place;
    m_suggestions.clear();
    m_state = State::AtMistake;
    m_isSuggesting = true;
    m_dictionary->suggest(lookedUpForm(textOf(place)));
}

/// A word before a full stop may be an abbreviation, which a dictionary has with its stop.
QString SpellingSession::formOf(const WordSpan& place) const {
    QString form = lookedUpForm(QStringView(m_text).mid(place.position, place.length));
    const qsizetype end = place.position + place.length;
    if (end < m_text.size() && m_text[end] == u'.')
        form += u'.';
    return form;
}

// Decisions

QString SpellingSession::word() const {
    return textOf(m_mistake);
}

void SpellingSession::decide(Kind kind) {
    m_decisions.push_back({kind, m_mistake, m_corrections.count()});
    m_mistake = {};
    m_state = State::Working;
}

void SpellingSession::change(const QString& text) {
    const WordSpan place = m_mistake;
    decide(Kind::Change);
    m_corrections.add(place.position, place.length, text);
}

void SpellingSession::changeAll(const QString& text) {
    const WordSpan place = m_mistake;
    m_changes.insert(word(), text);
    decide(Kind::ChangeAll);
    m_corrections.add(place.position, place.length, text);
}

void SpellingSession::ignore() {
    decide(Kind::Ignore);
}

void SpellingSession::ignoreAll() {
    m_ignored.insert(word());
    decide(Kind::IgnoreAll);
}

SystemError SpellingSession::add() {
    if (SystemError error = m_ownWords.add(word()))
        return error;
    decide(Kind::Add);
    return {};
}

SystemError SpellingSession::undo() {
    const Decision last = m_decisions.back();
    const QString word = textOf(last.place);
    if (last.kind == Kind::Add) {
        if (SystemError error = m_ownWords.remove(word))
            return error;
    }
    if (last.kind == Kind::ChangeAll)
        m_changes.remove(word);
    if (last.kind == Kind::IgnoreAll)
        m_ignored.remove(word);
    m_corrections.shortenTo(last.corrections);
    m_decisions.pop_back();
    rescanFrom(last.place.position);
    return {};
}
