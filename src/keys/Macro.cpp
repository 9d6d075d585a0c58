#include "keys/Macro.h"

#include <QCryptographicHash>
#include <QStringDecoder>
#include <QtEndian>

namespace {

constexpr QByteArrayView Mark("QMDEM\0", 6);
constexpr quint16 Version = 1;
constexpr auto Digest = QCryptographicHash::Sha256;
constexpr qsizetype DigestLength = 32;
constexpr char CommandStep = 1;
constexpr char TextStep = 2;

template <typename Number>
void append(QByteArray& bytes, Number number) {
    char buffer[sizeof number];
    qToLittleEndian(number, buffer);
    bytes.append(buffer, sizeof number);
}

void appendText(QByteArray& bytes, const QString& text) {
    const QByteArray utf8 = text.toUtf8();
    append(bytes, static_cast<quint32>(utf8.size()));
    bytes += utf8;
}

/// Reads values from the start of a byte array. After the first value that is missing or malformed, isGood() stays
/// false.
class Taker {
 public:
    explicit Taker(QByteArrayView bytes) : m_rest(bytes) {}

    bool isGood() const { return m_good; }
    bool atEnd() const { return m_rest.isEmpty(); }

    QByteArrayView take(qsizetype length) {
        if (!m_good || length < 0 || length > m_rest.size()) {
            m_good = false;
            return {};
        }
        const QByteArrayView taken = m_rest.first(length);
        m_rest = m_rest.sliced(length);
        return taken;
    }

    template <typename Number>
    Number number() {
        const QByteArrayView bytes = take(sizeof(Number));
        return m_good ? qFromLittleEndian<Number>(bytes.data()) : Number{};
    }

    QString text() {
        const QByteArrayView bytes = take(number<quint32>());
        QStringDecoder decoder(QStringDecoder::Utf8, QStringDecoder::Flag::ConvertInitialBom);
        QString decoded = decoder.decode(bytes);
        m_good = m_good && !decoder.hasError();
        return decoded;
    }

 private:
    QByteArrayView m_rest;
    bool m_good = true;
};

QByteArray digestOf(QByteArrayView bytes) {
    QCryptographicHash hash(Digest);
    hash.addData(bytes);
    return hash.result();
}

}  // namespace

void Macro::addCommand(qint32 command, const QString& argument) {
    m_steps.append({MacroStep::Kind::Command, command, argument});
}

void Macro::addText(const QString& text) {
    if (text.isEmpty())
        return;
    if (!m_steps.isEmpty() && m_steps.last().kind == MacroStep::Kind::Text)
        m_steps.last().text += text;
    else
        m_steps.append({MacroStep::Kind::Text, 0, text});
}

QByteArray Macro::toBytes() const {
    if (isEmpty())
        return {};
    QByteArray steps;
    for (const MacroStep& step : m_steps) {
        const bool isCommand = step.kind == MacroStep::Kind::Command;
        steps.append(isCommand ? CommandStep : TextStep);
        if (isCommand)
            append(steps, step.command);
        appendText(steps, step.text);
    }
    QByteArray bytes = Mark.toByteArray();
    append(bytes, Version);
    append(bytes, static_cast<quint32>(steps.size()));
    return bytes + digestOf(steps) + steps;
}

std::optional<Macro> Macro::fromBytes(QByteArrayView bytes) {
    if (bytes.size() > MostBytes)
        return std::nullopt;
    Taker taker(bytes);
    if (taker.take(Mark.size()) != Mark || taker.number<quint16>() != Version)
        return std::nullopt;
    const auto length = taker.number<quint32>();
    const QByteArrayView digest = taker.take(DigestLength);
    const QByteArrayView steps = taker.take(length);
    if (!taker.isGood() || digestOf(steps) != digest)
        return std::nullopt;
    return fromSteps(steps);
}

std::optional<Macro> Macro::fromSteps(QByteArrayView bytes) {
    Macro macro;
    for (Taker taker(bytes); !taker.atEnd();) {
        const auto step = taker.number<qint8>();
        const bool isCommand = step == CommandStep;
        if (!isCommand && step != TextStep)
            return std::nullopt;
        const qint32 command = isCommand ? taker.number<qint32>() : 0;
        const QString text = taker.text();
        if (!taker.isGood())
            return std::nullopt;
        macro.m_steps.append({isCommand ? MacroStep::Kind::Command : MacroStep::Kind::Text, command, text});
    }
    return macro;
}
