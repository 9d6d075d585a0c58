// Any text as a byte sequence or a text to search for: it is brought into form, means the bytes it says, and is found
// where a plain search finds it.

#include "FuzzEntry.h"
#include "hex/bytes/ByteStore.h"
#include "hex/bytes/HexNeedle.h"
#include "hex/bytes/HexSearch.h"
#include "hex/bytes/HexText.h"

#include <QByteArray>

#include <algorithm>

namespace {

constexpr qint64 SmallBlock = 8;

class Bytes : public ByteStore {
 public:
    explicit Bytes(QByteArray bytes) : m_bytes(std::move(bytes)) {}

    qint64 length() const override { return m_bytes.size(); }
    qint64 read(FilePosition from, char* buffer, qint64 count) const override {
        const qint64 at = from.number() - 1;
        const qint64 given = std::clamp<qint64>(length() - at, 0, count);
        std::copy_n(m_bytes.constData() + std::min(at, length()), given, buffer);
        return given;
    }
    SystemError write(FilePosition, std::string_view) override { return {}; }

 private:
    QByteArray m_bytes;
};

void checkForm(const QString& text) {
    QString digits = text;
    digits.remove(u' ');
    const QString form = HexText::NormalizeHexText(text);
    require(form.size() == (digits.size() + 1) / 2 * 3);
    require(HexText::NormalizeHexText(form) == form);
    const bool isSequence =
        std::all_of(digits.cbegin(), digits.cend(), [](QChar digit) { return HexText::nibbleOf(digit) >= 0; });
    const auto bytes = HexText::bytesOfHexText(form);
    if (!isSequence)
        return;
    require(bytes && bytes->size() == form.size() / 3);
    require(HexText::SpaceHexText(QString::fromLatin1(bytes->toHex().toUpper())) == form.toUpper());
    require(HexText::bytesOfTypedHex(form) == bytes);
}

void checkSearch(const QString& text, HexFindType type, const QByteArray& file) {
    const auto needle = HexNeedle::make(text, type);
    const auto what = type == HexFindType::Bytes ? HexText::bytesOfTypedHex(text) : HexText::bytesOfText(text);
    require(needle.has_value() == (what && !what->isEmpty()));
    if (!needle)
        return;
    Bytes bytes(file);
    const HexSearch search(bytes, SmallBlock);
    const auto found = search.findDown(*needle, FilePosition(1), false);
    if (type != HexFindType::AnyCase)
        require((found ? found->number() - 1 : -1) == file.indexOf(*what));
    require(search.count(*needle) >= (found ? 1 : 0));
    const auto last = search.findUp(*needle, FilePosition(file.size() + 1), true);
    require(!last || (last->number() >= 1 && last->number() <= file.size()));
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size < 1)
        return 0;
    const QByteArray input = viewOf(data + 1, size - 1).toByteArray();
    const QByteArray term = input.left(data[0] % 32);
    const QByteArray file = input.mid(data[0] % 32);
    for (const QString& text : {QString::fromLatin1(term), QString::fromUtf8(term)}) {
        checkForm(text);
        for (const HexFindType type : {HexFindType::Bytes, HexFindType::AnyCase, HexFindType::ExactCase})
            checkSearch(text, type, file);
    }
    const QString sequence = HexText::SpaceHexText(QString::fromLatin1(term.toHex()));
    checkSearch(sequence, HexFindType::Bytes, file);
    return 0;
}
