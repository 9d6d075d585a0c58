// The time of a spell check by the English dictionary of the system: loading it, the first mistake at the end of 1 MB
// of text, and the suggestions for a word. Runs without a display; the results are wall-clock times.

#include "spelling/check/SpellingSession.h"
#include "spelling/dictionary/Dictionary.h"
#include "spelling/words/OwnWords.h"

#include <QCoreApplication>
#include <QFile>
#include <QStringList>

#include <benchmark/benchmark.h>

#include <algorithm>
#include <chrono>
#include <memory>
#include <utility>

namespace {

using std::chrono::milliseconds;

constexpr milliseconds Step{20};
constexpr qsizetype TextLength = 1'000'000;

Dictionary english() {
    return {u"en_US"_qs, u"English"_qs, u"/usr/share/hunspell/en_US.aff"_qs, u"/usr/share/hunspell/en_US.dic"_qs, {}};
}

void runOn(SpellingSession& session) {
    while (session.hasWork())
        session.step(Step);
}

/// Words of the dictionary itself in lines, no two neighbours alike, so that as many different words as can be are
/// asked.
QString correctText() {
    QFile file(english().wordsPath);
    if (!file.open(QIODevice::ReadOnly))
        return {};
    QStringList words;
    for (const QString& line : QString::fromUtf8(file.readAll()).split(u'\n').mid(1)) {
        const QString word = line.section(u'/', 0, 0).trimmed();
        if (word.size() > 2 && std::ranges::all_of(word, [](QChar each) { return each.isLower(); }))
            words << word;
    }
    QString text;
    for (qsizetype i = 0; text.size() < TextLength && !words.isEmpty(); ++i)
        text += words[i * 7919 % words.size()] + (i % 12 == 11 ? u'\n' : u' ');
    return text;
}

/// The text without what the dictionary itself does not accept.
QString withoutMistakes(const QString& text, OwnWords& own) {
    SpellingSession session(text, own);
    session.setDictionary(english());
    runOn(session);
    while (session.state() == SpellingSession::State::AtMistake) {
        session.changeAll(u"the"_qs);
        runOn(session);
    }
    return session.result();
}

void loadDictionary(benchmark::State& state) {
    for (auto _ : state) {
        DictionaryProcess dictionary(english());
        while (dictionary.wait(Step) == DictionaryProcess::State::Busy) {
        }
        if (!dictionary.isLoaded())
            state.SkipWithError("There is no English dictionary.");
    }
}
BENCHMARK(loadDictionary)->Unit(benchmark::kMillisecond)->UseRealTime();

void firstMistake(benchmark::State& state) {
    OwnWords own;
    const QString text = withoutMistakes(correctText(), own) + u" mistaek"_qs;
    for (auto _ : state) {
        state.PauseTiming();
        auto dictionary = std::make_unique<DictionaryProcess>(english());
        while (dictionary->wait(Step) == DictionaryProcess::State::Busy) {
        }
        state.ResumeTiming();
        SpellingSession session(text, own);
        session.setDictionary(std::move(dictionary));
        while (session.state() == SpellingSession::State::Working)
            session.step(Step);
        if (session.state() != SpellingSession::State::AtMistake || session.word() != u"mistaek"_qs)
            state.SkipWithError("The mistake was not found.");
    }
}
BENCHMARK(firstMistake)->Name("first mistake at the end of 1 MB")->Unit(benchmark::kMillisecond)->UseRealTime();

void suggestWord(benchmark::State& state) {
    DictionaryProcess dictionary(english());
    for (auto _ : state) {
        while (dictionary.wait(Step) == DictionaryProcess::State::Busy) {
        }
        if (!dictionary.isLoaded()) {
            state.SkipWithError("There is no English dictionary.");
            break;
        }
        dictionary.suggest(u"acommodate"_qs);
    }
}
BENCHMARK(suggestWord)->Unit(benchmark::kMillisecond)->UseRealTime();

}  // namespace

int main(int count, char** arguments) {
    const QCoreApplication application(count, arguments);
    benchmark::Initialize(&count, arguments);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
