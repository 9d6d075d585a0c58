// Any bytes as the definition of a language: either it is sound, or its fault is told by a line. One with rules then
// colours the same bytes.

#include "editor/language/RuleLexer.h"
#include "lang/LanguageFile.h"

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <vector>

namespace {

void require(bool condition) {
    if (!condition)
        std::abort();
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const QByteArray bytes(reinterpret_cast<const char*>(data), static_cast<qsizetype>(size));
    const LanguageFile::Result result = LanguageFile::parse(bytes, u"X"_qs);
    require(result.definition.has_value() == result.error.isEmpty());
    if (!result.definition) {
        require(result.error.startsWith(QLatin1String("X:")));
        return 0;
    }
    const RuleLexer lexer(*result.definition);
    RuleLexer::State open = 0;
    for (const QByteArray& line : bytes.split('\n')) {
        std::vector<TokenClass> classes(static_cast<std::size_t>(line.size()));
        open = lexer.line(line, open, classes);
    }
    return 0;
}
