#include "editor/print/PageSetup.h"

#include "settings/registry/RegistryData.h"
#include "settings/registry/RegistryStore.h"
#include "settings/registry/modRegistry.h"

#include <QLocale>
#include <QPageSize>
#include <QRectF>
#include <QSizeF>

#include <algorithm>
#include <cmath>
#include <optional>

namespace {

constexpr qreal DefaultMargin = 15;  // millimetres
/// What is at least left of a side between its two margins, in millimetres.
constexpr qreal SmallestPart = 20;
/// Margins are stored in hundredths of a millimetre.
constexpr qreal StoredPerMillimetre = 100;
constexpr qint32 LargestStored = 100000;

struct MarginRow {
    const char* name;
    qreal (QMarginsF::*value)() const;
    void (QMarginsF::*set)(qreal value);
    bool isBeside;  ///< at the left or right
};

constexpr MarginRow Margins[] = {
    {"LeftMargin", &QMarginsF::left, &QMarginsF::setLeft, true},
    {"TopMargin", &QMarginsF::top, &QMarginsF::setTop, false},
    {"RightMargin", &QMarginsF::right, &QMarginsF::setRight, true},
    {"BottomMargin", &QMarginsF::bottom, &QMarginsF::setBottom, false},
};

QString storedUnder() {
    return programKey() + u"/Printing"_qs;
}

std::optional<qint32> readNumber(RegistryStore& store, const char* name, qint32 most) {
    RegistryValue value;
    const int code = store.readValue(HKEY_CURRENT_USER, storedUnder(), QString::fromLatin1(name), value);
    if (code != RegistryCode::Ok || value.type != RegistryType::Integer || value.data.size() != sizeof(qint32))
        return std::nullopt;
    const qint32 number = RegistryData::littleEndian(value);
    return number >= 0 && number <= most ? std::optional(number) : std::nullopt;
}

std::optional<QPageSize> sizeNamed(const QString& key) {
    for (int id = 0; id <= QPageSize::LastPageSize; ++id) {
        const auto size = static_cast<QPageSize::PageSizeId>(id);
        if (size != QPageSize::Custom && QPageSize::key(size) == key)
            return QPageSize(size);
    }
    return std::nullopt;
}

int writeLayout(RegistryStore& store, const QPageLayout& layout) {
    const auto write = [&store](const char* name, const RegistryValue& value) {
        return store.writeValue(HKEY_CURRENT_USER, storedUnder(), QString::fromLatin1(name), value);
    };
    int code = write("Paper", RegistryData::fromText(layout.pageSize().key()));
    if (code == RegistryCode::Ok)
        code = write("Landscape", RegistryData::fromInteger(layout.orientation() == QPageLayout::Landscape ? 1 : 0));
    const QMarginsF margins = layout.margins(QPageLayout::Millimeter);
    for (const MarginRow& row : Margins) {
        const auto stored = static_cast<qint32>(std::lround((margins.*row.value)() * StoredPerMillimetre));
        if (code == RegistryCode::Ok)
            code = write(row.name, RegistryData::fromInteger(stored));
    }
    return code;
}

}  // namespace

qreal PageSetup::largestMargin(qreal lengthOfSide) {
    return std::max<qreal>(0, (lengthOfSide - SmallestPart) / 2);
}

QPageLayout PageSetup::defaultLayout() {
    const bool isLetter = QLocale().measurementSystem() == QLocale::ImperialUSSystem;
    const QMarginsF margins(DefaultMargin, DefaultMargin, DefaultMargin, DefaultMargin);
    return {QPageSize(isLetter ? QPageSize::Letter : QPageSize::A4), QPageLayout::Portrait, margins,
            QPageLayout::Millimeter};
}

const QPageLayout& PageSetup::layout() {
    if (m_layout.isValid())
        return m_layout;
    m_layout = defaultLayout();
    if (const auto size = sizeNamed(GetRegString(m_store, HKEY_CURRENT_USER, storedUnder(), u"Paper"_qs)))
        m_layout.setPageSize(*size);
    if (readNumber(m_store, "Landscape", 1) == 1)
        m_layout.setOrientation(QPageLayout::Landscape);
    QMarginsF margins = m_layout.margins();
    const QSizeF paper = m_layout.fullRect(QPageLayout::Millimeter).size();
    for (const MarginRow& row : Margins) {
        const std::optional<qint32> stored = readNumber(m_store, row.name, LargestStored);
        const qreal wanted = stored ? *stored / StoredPerMillimetre : (margins.*row.value)();
        (margins.*row.set)(std::min(wanted, largestMargin(row.isBeside ? paper.width() : paper.height())));
    }
    m_layout.setMargins(margins);
    return m_layout;
}

bool PageSetup::setLayout(const QPageLayout& layout) {
    m_layout = layout;
    m_layout.setUnits(QPageLayout::Millimeter);
    return m_store.runBatch([this] { return writeLayout(m_store, m_layout); }) == RegistryCode::Ok;
}
