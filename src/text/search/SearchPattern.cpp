#include "text/search/SearchPattern.h"

#include "text/codec/Utf16Units.h"
#include "text/codec/Utf8Text.h"

#include <QCoreApplication>

#include <array>

#define PCRE2_CODE_UNIT_WIDTH 8
#include <pcre2.h>

namespace {

/// Step limit of one call of PCRE2; to reach it takes some hundredths of a second.
constexpr std::uint32_t StepLimit = 10'000'000;
/// Memory limit in KiB for the interpreter, which runs where JIT is not available.
constexpr std::uint32_t HeapLimit = 256 * 1024;
/// Sizes of the JIT stack in bytes.
constexpr std::size_t StackAtFirst = 64 * 1024;
constexpr std::size_t StackAtMost = 32 * 1024 * 1024;

QString said(const char* text) {
    return QCoreApplication::translate("Search", text);
}

bool isWordCharacter(char32_t character) {
    return character == U'_' || QChar::isLetterOrNumber(character);
}

bool isAsciiSign(char byte) {
    const auto u = static_cast<unsigned char>(byte);
    return u < 0x80 && !(u >= '0' && u <= '9') && !(u >= 'A' && u <= 'Z') && !(u >= 'a' && u <= 'z');
}

/// Returns an expression that matches the text literally; for a whole word, with word boundaries at its ends.
QByteArray literally(const QString& text, bool wholeWord) {
    const QList<uint> characters = text.toUcs4();
    const QByteArray edge = "\\b";
    QByteArray expression;
    if (wholeWord && isWordCharacter(characters.first()))
        expression += edge;
    for (const char byte : wellFormedUtf8(text)) {
        if (isAsciiSign(byte))
            expression += '\\';
        expression += byte;
    }
    if (wholeWord && isWordCharacter(characters.last()))
        expression += edge;
    return expression;
}

}  // namespace

struct SearchPattern::Stack {
    pcre2_jit_stack* stack = pcre2_jit_stack_create(StackAtFirst, StackAtMost, nullptr);
    Stack() = default;
    ~Stack() { pcre2_jit_stack_free(stack); }
    Stack(const Stack&) = delete;
    Stack& operator=(const Stack&) = delete;
};

void SearchPattern::FreeCode::operator()(pcre2_real_code_8* code) const {
    pcre2_code_free(code);
}

void SearchPattern::FreeLimits::operator()(pcre2_real_match_context_8* limits) const {
    pcre2_match_context_free(limits);
}

SearchPattern::SearchPattern(const QString& text, SearchFlags flags, bool asciiText) {
    if (text.isEmpty()) {
        m_error = {said(QT_TRANSLATE_NOOP("Search", "There is nothing to search for.")), -1};
        return;
    }
    compile(flags.regExp ? wellFormedUtf8(text) : literally(text, flags.wholeWord), flags, asciiText);
    if (m_code)
        setLimits();
}

SearchPattern::~SearchPattern() = default;

void SearchPattern::compile(const QByteArray& utf8, SearchFlags flags, bool asciiText) {
    const std::unique_ptr<pcre2_compile_context, void (*)(pcre2_compile_context*)> context(
        pcre2_compile_context_create(nullptr), pcre2_compile_context_free);
    pcre2_set_newline(context.get(), PCRE2_NEWLINE_ANYCRLF);
    if (flags.regExp && flags.wholeWord)
        pcre2_set_compile_extra_options(context.get(), PCRE2_EXTRA_MATCH_WORD);

    std::uint32_t options = PCRE2_UTF | PCRE2_MULTILINE | PCRE2_NEVER_BACKSLASH_C;
    options |= flags.caseSensitive ? 0U : PCRE2_CASELESS;
    options |= asciiText ? 0U : PCRE2_UCP;
    int number = 0;
    std::size_t offset = 0;
    m_code.reset(pcre2_compile(reinterpret_cast<PCRE2_SPTR>(utf8.constData()), static_cast<std::size_t>(utf8.size()),
                               options, &number, &offset, context.get()));
    if (!m_code) {
        std::array<PCRE2_UCHAR, 256> reason{};
        pcre2_get_error_message(number, reason.data(), reason.size());
        m_error = {QString::fromUtf8(reinterpret_cast<const char*>(reason.data())),
                   countUtf16Units({utf8.constData(), offset})};
        return;
    }
    // If JIT compilation fails, the interpreter gives the same results more slowly.
    pcre2_jit_compile(m_code.get(), PCRE2_JIT_COMPLETE | PCRE2_JIT_PARTIAL_HARD);
    m_seesTextAsOne = flags.regExp && (utf8.contains("\\G") || utf8.contains("(*"));
    m_mayTakeLong = flags.regExp && !m_seesTextAsOne;
    if (m_mayTakeLong) {
        m_codeAtStart.reset(pcre2_compile(reinterpret_cast<PCRE2_SPTR>(utf8.constData()),
                                          static_cast<std::size_t>(utf8.size()), options | PCRE2_ANCHORED, &number,
                                          &offset, context.get()));
        pcre2_jit_compile(m_codeAtStart.get(), PCRE2_JIT_COMPLETE | PCRE2_JIT_PARTIAL_HARD);
    }

    std::uint32_t lookBehind = 0;
    std::uint32_t namesCrOrLf = 0;
    pcre2_pattern_info(m_code.get(), PCRE2_INFO_MAXLOOKBEHIND, &lookBehind);
    pcre2_pattern_info(m_code.get(), PCRE2_INFO_HASCRORLF, &namesCrOrLf);
    m_lookBehind = static_cast<int>(lookBehind);
    m_keepsCrLfWhole = namesCrOrLf == 0;
}

void SearchPattern::setLimits() {
    m_limits.reset(pcre2_match_context_create(nullptr));
    m_stack = std::make_unique<Stack>();
    pcre2_set_match_limit(m_limits.get(), StepLimit);
    pcre2_set_heap_limit(m_limits.get(), HeapLimit);
    pcre2_jit_stack_assign(m_limits.get(), nullptr, m_stack->stack);
}
