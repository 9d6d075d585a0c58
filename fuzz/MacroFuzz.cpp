// Any bytes as a macro, with and without what stands before its steps: what is read gives the same macro when it is
// written and read again.

#include "FuzzEntry.h"
#include "keys/Macro.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const QByteArrayView bytes = viewOf(data, size);
    Macro::fromBytes(bytes);
    const auto macro = Macro::fromSteps(bytes);
    if (macro && !macro->isEmpty())
        require(Macro::fromBytes(macro->toBytes() + bytes.toByteArray()) == macro);
    return 0;
}
