// Any text as a number in each base: what is a number comes back from every other base, what is none is nowhere one.

#include "FuzzEntry.h"
#include "hex/forms/NumberConversion.h"

#include <QString>

using namespace NumberConversion;

namespace {

bool hasOnly(const QString& text, const char* characters) {
    const QString allowed = QString::fromLatin1(characters);
    for (const QChar character : text) {
        if (!allowed.contains(character))
            return false;
    }
    return true;
}

void checkDecimal(const QString& decimal) {
    const QString hex = DecToHex(decimal);
    const QString bits = DecToBin(decimal);
    const QString octal = DecToOct(decimal);
    require(hex.isEmpty() == bits.isEmpty() && hex.isEmpty() == octal.isEmpty());
    require(hasOnly(hex, "0123456789ABCDEF") && hasOnly(bits, "01") && hasOnly(octal, "01234567"));
    require(bits.size() % 8 == 0);
    if (hex.isEmpty())
        return;
    const QString again = QString::number(decimal.trimmed().toLongLong());
    require(HexToDec(hex) == again);
    require(OctToDec(octal) == again);
    const qint64 number = again.toLongLong();
    require(cvBinToDec(bits) == QString::number(number < 0 ? number + (qint64{1} << 32) : number));
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const QString text = QString::fromUtf8(viewOf(data, size));
    checkDecimal(text);
    for (const QString& decimal : {HexToDec(text), OctToDec(text)})
        require(decimal.isEmpty() == DecToHex(decimal).isEmpty());
    cvBinToDec(text);
    const int pair = GetVal(text);
    require(pair >= 0 && pair <= 255);
    return 0;
}
