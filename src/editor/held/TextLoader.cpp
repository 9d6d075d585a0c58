#include "editor/held/TextLoader.h"

#include "editor/held/ILoader.h"
#include "editor/held/PartQueue.h"
#include "platform/FileReader.h"
#include "text/held/PieceCutter.h"

#include <Qsci/qsciscintillabase.h>

#include <cerrno>
#include <cstring>
#include <functional>
#include <thread>
#include <utility>

using Sci = QsciScintillaBase;

namespace {

/// Bytes read at once.
constexpr std::size_t PartSize = 256 * 1024;
/// Files of fewer bytes are not worth a second thread.
constexpr qint64 ThreadWorth = 4 * 1024 * 1024;
/// Documents of more bytes are held with line starts of 64 bits.
constexpr qint64 LargeDocument = 1'900'000'000;

using Give = std::function<bool(std::string_view)>;

/// A Scintilla document that is being filled.
class NewDocument {
 public:
    NewDocument(QsciScintillaBase& host, qint64 bytes, bool styled) {
        int options = styled ? Sci::SC_DOCUMENTOPTION_DEFAULT : Sci::SC_DOCUMENTOPTION_STYLES_NONE;
        if (bytes > LargeDocument)
            options |= Sci::SC_DOCUMENTOPTION_TEXT_LARGE;
        // Scintilla returns an address as an integer.
        m_loader = reinterpret_cast<ILoader*>(static_cast<std::uintptr_t>(
            host.SendScintilla(Sci::SCI_CREATELOADER, static_cast<unsigned long>(bytes), static_cast<long>(options))));
    }
    ~NewDocument() {
        if (m_loader != nullptr)
            m_loader->Release();
    }
    NewDocument(const NewDocument&) = delete;
    NewDocument& operator=(const NewDocument&) = delete;

    /// False when there is no memory left.
    bool add(std::string_view bytes) {
        return m_loader != nullptr && m_loader->AddData(bytes.data(), static_cast<std::ptrdiff_t>(bytes.size())) == 0;
    }
    void* take() { return std::exchange(m_loader, nullptr)->ConvertToDocument(); }

 private:
    ILoader* m_loader = nullptr;
};

/// One pass over a file with one guess at its format: reads, decodes, cuts long lines, and passes on parts of the text.
class Reading {
 public:
    Reading(FileReader& file, TextDecoder& decoder, std::optional<char> joint)
        : m_file(file), m_decoder(decoder), m_cutter(joint) {}

    /// Stops early when `give` returns false, when reading fails, or when the guess was wrong.
    void run(const Give& give);

    bool guessedRight() const { return m_guessedRight; }
    const PieceCutter& cutter() const { return m_cutter; }
    const QString& firstLineEnd() const { return m_firstLineEnd; }

 private:
    bool decode(std::string_view bytes, bool last);
    bool passOn(bool last, const Give& give);
    void noteFirstLineEnd(std::string_view run);

    FileReader& m_file;
    TextDecoder& m_decoder;
    PieceCutter m_cutter;
    std::string m_raw = std::string(PartSize, '\0');
    std::string m_scratch;
    std::string m_text;  ///< decoded and not yet passed on
    QString m_firstLineEnd;
    bool m_guessedRight = true;
};

void Reading::run(const Give& give) {
    for (bool last = false; !last;) {
        const qint64 got = m_file.read(m_raw.data(), static_cast<qint64>(m_raw.size()));
        if (got < 0)
            return;
        last = got < static_cast<qint64>(m_raw.size());
        m_guessedRight = decode(std::string_view(m_raw.data(), static_cast<std::size_t>(got)), last);
        if (!m_guessedRight || !passOn(last, give))
            return;
    }
}

bool Reading::decode(std::string_view bytes, bool last) {
    const std::optional<std::string_view> text = m_decoder.decode(bytes, m_scratch);
    if (!text)
        return false;
    m_text.append(*text);
    if (!last)
        return true;
    const std::optional<std::string_view> end = m_decoder.finish(m_scratch);
    m_text.append(end.value_or(std::string_view()));
    return end.has_value();
}

bool Reading::passOn(bool last, const Give& give) {
    bool wanted = true;
    const qint64 taken = m_cutter.feed(m_text, last, [&](std::string_view run) {
        if (m_cutter.joints().empty())
            noteFirstLineEnd(run);
        wanted = wanted && give(run);
    });
    m_text.erase(0, static_cast<std::size_t>(taken));
    return wanted;
}

void Reading::noteFirstLineEnd(std::string_view run) {
    const std::size_t at = m_firstLineEnd.isEmpty() ? run.find_first_of("\r\n") : std::string_view::npos;
    if (at != std::string_view::npos)
        m_firstLineEnd = run.substr(at, 2) == "\r\n" ? u"\r\n"_qs : QString(QLatin1Char(run[at]));
}

/// Space for the text of a file: its length in UTF-8, and its joints.
qint64 roomFor(qint64 fileSize, TextEncoding encoding) {
    const qint64 text = encoding == TextEncoding::Windows1252 ? fileSize + fileSize / 8 : fileSize;
    return text + text / (PieceLength / 2) + static_cast<qint64>(PartSize);
}

/// The one line end of a text with joints of this kind, or `found` where there are several.
QString lineEndBesides(JointKind kind, const QString& found) {
    switch (kind) {
        case JointKind::AnyCr:
            return u"\n"_qs;
        case JointKind::LoneCr:
            return u"\r\n"_qs;
        case JointKind::AnyLf:
            return u"\r"_qs;
        default:
            return found;
    }
}

/// Reads in a second thread the text that is stored in this one.
bool fillInTwoThreads(Reading& reading, NewDocument& document) {
    PartQueue queue;
    std::thread reader([&] {
        reading.run([&queue](std::string_view part) { return queue.put(part); });
        queue.close();
    });
    bool stored = true;
    for (std::string_view part = queue.next(); !part.empty() && stored; part = queue.next())
        stored = document.add(part);
    queue.giveUp();
    reader.join();
    return stored;
}

bool fill(Reading& reading, NewDocument& document, qint64 fileSize) {
    if (fileSize >= ThreadWorth)
        return fillInTwoThreads(reading, document);
    bool stored = true;
    reading.run([&](std::string_view part) { return stored = document.add(part); });
    return stored;
}

/// Nothing when the decoder's guess was wrong.
std::optional<LoadedText> tryLoad(const QString& path, TextDecoder& decoder, std::optional<char> joint,
                                  QsciScintillaBase& host) {
    LoadedText text;
    FileReader file;
    text.error = file.open(path);
    if (!text.error && file.size() > TextLoader::SizeLimit)
        text.error = SystemError::fromErrno(EFBIG);
    if (text.error)
        return text;

    text.styled = file.size() <= TextLoader::ColouringLimit;
    Reading reading(file, decoder, joint);
    NewDocument document(host, roomFor(file.size(), decoder.format().encoding), text.styled);
    const bool stored = fill(reading, document, file.size());
    text.error = stored ? file.error() : SystemError::fromErrno(ENOMEM);
    if (text.error)
        return text;
    if (!reading.guessedRight())
        return std::nullopt;

    text.document = document.take();
    text.format = decoder.format();
    text.ascii = decoder.ascii();
    text.joints = reading.cutter().joints();
    text.longestCut = reading.cutter().longestCut();
    text.firstLineEnd = reading.firstLineEnd();
    if (!text.joints.empty()) {
        text.jointKind = jointKindFor(reading.cutter().lineEnds());
        text.firstLineEnd = lineEndBesides(text.jointKind, text.firstLineEnd);
    }
    return text;
}

/// Guesses until one is right; the last guess always is.
LoadedText loadWithJoint(const QString& path, std::optional<TextFormat> format, std::optional<char> joint,
                         QsciScintillaBase& host) {
    TextDecoder decoder = format ? TextDecoder(*format) : TextDecoder();
    for (;;) {
        if (std::optional<LoadedText> text = tryLoad(path, decoder, joint, host))
            return *std::move(text);
        decoder.startOver();
    }
}

void discard(LoadedText& text, QsciScintillaBase& host) {
    host.SendScintilla(Sci::SCI_RELEASEDOCUMENT, 0UL, std::exchange(text.document, nullptr));
}

}  // namespace

/// The joint is CR unless the text turns out to use CR alone; then it is read once more with LF. A text that uses all
/// line ends has no byte left over for a joint: it is read once more and left uncut, unless a line of it is so long
/// that it would keep the control busy for seconds.
LoadedText TextLoader::load(const QString& path, std::optional<TextFormat> format, QsciScintillaBase& host) {
    LoadedText text = loadWithJoint(path, format, '\r', host);
    if (text.error)
        return text;
    if (text.jointKind == JointKind::Listed && text.longestCut < UncutLine) {
        discard(text, host);
        return loadWithJoint(path, format, std::nullopt, host);
    }
    if (text.jointKind != JointKind::AnyLf)
        return text;
    discard(text, host);
    text = loadWithJoint(path, format, '\n', host);
    if (text.jointKind != JointKind::AnyLf && text.jointKind != JointKind::None)
        text.jointKind = JointKind::Listed;
    return text;
}
