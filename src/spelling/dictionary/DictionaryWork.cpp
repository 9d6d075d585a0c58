#include "spelling/dictionary/DictionaryWork.h"

#include "platform/FileErrors.h"
#include "platform/FileReader.h"
#include "spelling/dictionary/DictionaryHead.h"
#include "spelling/dictionary/DictionaryText.h"

#include <QFile>

#include <hunspell/hunspell.hxx>

#include <algorithm>
#include <cerrno>
#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace {

constexpr std::string_view TypographicApostrophe = "\xE2\x80\x99";
/// So many words of the list are looked up after loading.
constexpr int ProbedWords = 2000;
/// Longer suggestions are left out.
constexpr std::size_t LongestSuggestion = 400;

std::string utf8(const QString& text) {
    return text.toStdString();
}

std::string withPlainApostrophes(std::string_view text) {
    std::string result;
    while (!text.empty()) {
        const bool isOne = text.starts_with(TypographicApostrophe);
        result.push_back(isOne ? '\'' : text.front());
        text.remove_prefix(isOne ? TypographicApostrophe.size() : 1);
    }
    return result;
}

std::string withTypographicApostrophes(const std::string& text) {
    std::string result;
    for (const char each : text)
        result.append(each == '\'' ? TypographicApostrophe : std::string_view(&each, 1));
    return result;
}

std::vector<std::string> wordsOf(std::string_view words) {
    std::vector<std::string> result;
    while (!words.empty()) {
        const std::size_t end = std::min(words.find('\0'), words.size());
        result.emplace_back(words.substr(0, end));
        words.remove_prefix(std::min(end + 1, words.size()));
    }
    return result;
}

/// The dictionary in the child process.
class LoadedDictionary {
 public:
    /// Returns why it cannot be used; empty: it is loaded.
    std::string load(const Dictionary& dictionary);
    bool knows(const std::string& word);
    std::vector<std::string> suggestions(const std::string& word);

 private:
    bool accepts(const std::string& word);
    bool knowsAnyOf(std::string_view head);

    std::unique_ptr<Hunspell> m_library;
    std::unique_ptr<DictionaryText> m_text;
};

struct ReadFile {
    std::string bytes;
    qint64 size = 0;
    QString error;
};

/// The first `most` bytes of a file that has no more than `largest`.
ReadFile readBeginning(const QString& path, qint64 most, qint64 largest) {
    FileReader reader;
    if (const SystemError error = reader.open(path))
        return {{}, 0, error.description};
    if (reader.size() > largest)
        return {{}, 0, FileErrors::reading(path, SystemError::fromErrno(EFBIG)).description};
    ReadFile file;
    file.size = reader.size();
    file.bytes.resize(static_cast<std::size_t>(std::min(most, file.size)));
    const qint64 read = reader.read(file.bytes.data(), static_cast<qint64>(file.bytes.size()));
    if (read < 0)
        return {{}, 0, reader.error().description};
    file.bytes.resize(static_cast<std::size_t>(read));
    return file;
}

std::string damaged(const QString& path, const std::string& fault) {
    return utf8(u"The dictionary '%1' is damaged: %2."_qs.arg(path, QString::fromStdString(fault)));
}

std::string LoadedDictionary::load(const Dictionary& dictionary) {
    const ReadFile affix =
        readBeginning(dictionary.affixPath, DictionaryHead::MostAffixBytes, DictionaryHead::MostAffixBytes);
    if (!affix.error.isEmpty())
        return utf8(affix.error);
    if (const std::string fault = DictionaryHead::affixFault(affix.bytes); !fault.empty())
        return damaged(dictionary.affixPath, fault);
    const ReadFile words =
        readBeginning(dictionary.wordsPath, DictionaryHead::HeadBytes, DictionaryHead::MostWordBytes);
    if (!words.error.isEmpty())
        return utf8(words.error);
    if (const std::string fault = DictionaryHead::wordsFault(words.bytes, words.size); !fault.empty())
        return damaged(dictionary.wordsPath, fault);

    m_library = std::make_unique<Hunspell>(QFile::encodeName(dictionary.affixPath).constData(),
                                           QFile::encodeName(dictionary.wordsPath).constData());
    m_text = std::make_unique<DictionaryText>(m_library->get_dict_encoding());
    if (!m_text->isKnown())
        return damaged(dictionary.affixPath, "its encoding " + m_library->get_dict_encoding() + " is not known");
    if (!knowsAnyOf(words.bytes))
        return damaged(dictionary.wordsPath, "none of its first words is known by it");
    return {};
}

/// The library reports no failure: what it could not read it does not know.
bool LoadedDictionary::knowsAnyOf(std::string_view head) {
    head.remove_prefix(std::min(head.find('\n') + 1, head.size()));
    for (int i = 0; i < ProbedWords && !head.empty(); ++i) {
        const std::size_t end = std::min(head.find('\n'), head.size());
        const std::string word(head.substr(0, std::min(head.find_first_of("/\t\r\n "), end)));
        if (!word.empty() && m_library->spell(word))
            return true;
        head.remove_prefix(std::min(end + 1, head.size()));
    }
    return false;
}

bool LoadedDictionary::accepts(const std::string& word) {
    const auto own = m_text->toDictionary(word);
    return own && m_library->spell(*own);
}

bool LoadedDictionary::knows(const std::string& word) {
    return accepts(word) ||
           (word.find(TypographicApostrophe) != std::string::npos && accepts(withPlainApostrophes(word)));
}

/// With the form of the apostrophe that the word has.
std::vector<std::string> LoadedDictionary::suggestions(const std::string& word) {
    const bool isTypographic = word.find(TypographicApostrophe) != std::string::npos;
    const auto own = m_text->toDictionary(isTypographic ? withPlainApostrophes(word) : word);
    std::vector<std::string> result;
    if (!own)
        return result;
    for (const std::string& each : m_library->suggest(*own)) {
        const auto text = m_text->fromDictionary(each);
        if (text && !text->empty() && text->size() <= LongestSuggestion &&
            result.size() < DictionaryWork::MostSuggestions)
            result.push_back(isTypographic ? withTypographicApostrophes(*text) : *text);
    }
    return result;
}

std::string answerTo(LoadedDictionary& dictionary, std::string_view request) {
    std::string answer;
    const std::vector<std::string> words = wordsOf(request.substr(1));
    if (request.front() == DictionaryWork::Check) {
        for (const std::string& word : words)
            answer += dictionary.knows(word) ? '1' : '0';
    } else if (!words.empty()) {
        for (const std::string& each : dictionary.suggestions(words.front()))
            answer.append(each).append(1, '\0');
    }
    return answer;
}

void serve(const Dictionary& dictionary, ParentLink& link) {
    LoadedDictionary loaded;
    const std::string fault = loaded.load(dictionary);
    if (!fault.empty()) {
        link.send(std::string(1, DictionaryWork::Damaged).append(fault));
        return;
    }
    bool isOpen = link.send(std::string(1, DictionaryWork::Loaded));
    while (isOpen) {
        const auto request = link.receive();
        isOpen = request && !request->empty() && link.send(answerTo(loaded, *request));
    }
}

}  // namespace

ChildProcess::Work DictionaryWork::of(const Dictionary& dictionary) {
    return [dictionary](ParentLink& link) { serve(dictionary, link); };
}
