#include "editor/language/TokenLooks.h"

#include "settings/registry/RegistryData.h"
#include "settings/registry/RegistryStore.h"
#include "settings/registry/modRegistry.h"
#include "widgets/Contrast.h"
#include "widgets/StoredColour.h"

namespace {

const TokenClasses::Row& rowOf(TokenClass token) {
    return TokenClasses::table()[static_cast<std::size_t>(token)];
}

std::optional<bool> unlessUsual(bool on, bool usual) {
    return on == usual ? std::nullopt : std::optional(on);
}

QString storedUnder() {
    return programKey() + u"/Languages"_qs;
}

std::optional<qint32> readNumber(RegistryStore& store, const QString& name, qint32 most) {
    RegistryValue value;
    const int code = store.readValue(HKEY_CURRENT_USER, storedUnder(), name, value);
    if (code != RegistryCode::Ok || value.type != RegistryType::Integer || value.data.size() != sizeof(qint32))
        return std::nullopt;
    const qint32 number = RegistryData::littleEndian(value);
    return number >= 0 && number <= most ? std::optional(number) : std::nullopt;
}

int writeNumber(RegistryStore& store, const QString& name, std::optional<qint32> number) {
    if (number)
        return store.writeValue(HKEY_CURRENT_USER, storedUnder(), name, RegistryData::fromInteger(*number));
    const int code = store.deleteValue(HKEY_CURRENT_USER, storedUnder(), name);
    return code == RegistryCode::NotFound ? RegistryCode::Ok : code;
}

std::optional<qint32> numberOf(const QColor& colour) {
    if (!colour.isValid())
        return std::nullopt;
    return StoredColour::numberOf(colour);
}

QColor colourOf(std::optional<qint32> number) {
    if (!number)
        return {};
    return StoredColour::colourOf(*number);
}

}  // namespace

/// The stored form of a look: values named by the class and the property.
struct TokenLooks::StoredRow {
    const char* name;
    qint32 most;
    std::optional<qint32> (*ask)(const Own& own);
    void (*put)(Own& own, std::optional<qint32> number);

    static constexpr qint32 MostColour = 0xFFFFFF;

    template <Ground At>
    static constexpr StoredRow colour(const char* name) {
        return {name, MostColour, [](const Own& own) { return numberOf(own.colours[At]); },
                [](Own& own, std::optional<qint32> number) { own.colours[At] = colourOf(number); }};
    }
    template <std::optional<bool> Own::*Member>
    static constexpr StoredRow flag(const char* name) {
        return {
            name, 1,
            [](const Own& own) { return own.*Member ? std::optional<qint32>(*(own.*Member) ? 1 : 0) : std::nullopt; },
            [](Own& own, std::optional<qint32> number) {
                own.*Member = number ? std::optional(*number != 0) : std::nullopt;
            }};
    }

    QString nameFor(TokenClass token) const {
        return QLatin1String(name) + QLatin1Char('.') + QLatin1String(rowOf(token).name);
    }

    static const StoredRow Rows[];
};

const TokenLooks::StoredRow TokenLooks::StoredRow::Rows[] = {
    colour<Light>("ColorOnLight"),
    colour<Dark>("ColorOnDark"),
    flag<&Own::bold>("Bold"),
    flag<&Own::italic>("Italic"),
};

TokenLook TokenLooks::on(const QColor& ground, TokenClass token) const {
    const QColor chosen = ownColour(groundOf(ground), token);
    const QColor colour =
        chosen.isValid() ? Contrast::readableOn(ground, chosen) : TokenClasses::colourOn(ground, token);
    return {colour, bold(token), italic(token)};
}

bool TokenLooks::bold(TokenClass token) const {
    return own(token).bold.value_or(rowOf(token).bold);
}

void TokenLooks::setBold(TokenClass token, bool on) {
    own(token).bold = unlessUsual(on, rowOf(token).bold);
}

bool TokenLooks::italic(TokenClass token) const {
    return own(token).italic.value_or(rowOf(token).italic);
}

void TokenLooks::setItalic(TokenClass token, bool on) {
    own(token).italic = unlessUsual(on, rowOf(token).italic);
}

void TokenLooks::load(RegistryStore& store) {
    for (const TokenClasses::Row& row : TokenClasses::table()) {
        for (const StoredRow& stored : StoredRow::Rows)
            stored.put(own(row.token), readNumber(store, stored.nameFor(row.token), stored.most));
    }
}

int TokenLooks::save(RegistryStore& store) const {
    return store.runBatch([&] {
        for (const TokenClasses::Row& row : TokenClasses::table()) {
            for (const StoredRow& stored : StoredRow::Rows) {
                const int code = writeNumber(store, stored.nameFor(row.token), stored.ask(own(row.token)));
                if (code != RegistryCode::Ok)
                    return code;
            }
        }
        return RegistryCode::Ok;
    });
}
