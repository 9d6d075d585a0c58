// Any bytes as the definition of a language: either it is sound, or its fault is reported with a line. One with rules
// then colours the same bytes.

#include "FuzzEntry.h"
#include "editor/language/RuleLexer.h"
#include "lang/LanguageFile.h"

#include <vector>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const QByteArray bytes = viewOf(data, size).toByteArray();
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
