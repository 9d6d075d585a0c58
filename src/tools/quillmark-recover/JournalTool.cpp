#include "tools/quillmark-recover/JournalTool.h"

#include "recovery/journals/HexEntryVisitor.h"
#include "recovery/saves/SaveRecord.h"
#include "tools/quillmark-recover/ToolOutput.h"

#include <QDateTime>
#include <QDir>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <utility>
#include <vector>

using namespace ToolOutput;

namespace {

constexpr qint64 BytesPerRow = 16;

QString timeText(qint64 milliseconds) {
    return QDateTime::fromMSecsSinceEpoch(milliseconds).toString(u"yyyy-MM-dd HH:mm:ss"_qs);
}

QString suffix() {
    return QLatin1String(JournalFile::Suffix);
}

QString asideSuffix() {
    return suffix() + QLatin1String(JournalFile::AsideSuffix);
}

QString documentText(const JournalBase& base) {
    return shown(base.path.isEmpty() ? base.caption : base.path);
}

constexpr ValueText<JournalFileNow> FileTexts[] = {{JournalFileNow::None, "there was none"},
                                                   {JournalFileNow::AsItWas, "is as it was"},
                                                   {JournalFileNow::Changed, "was changed since"},
                                                   {JournalFileNow::Missing, "is missing"},
                                                   {JournalFileNow::Unreachable, "cannot be reached now"}};

constexpr ValueText<JournalOutcome> StateTexts[] = {{JournalOutcome::Restored, "unsaved"},
                                                    {JournalOutcome::SameAsFile, "saved"},
                                                    {JournalOutcome::Lost, "without its base"},
                                                    {JournalOutcome::Failed, "cannot be read"}};

constexpr ValueText<JournalContents::Reading> UnreadTexts[] = {
    {JournalContents::Reading::Damaged, "damaged"},
    {JournalContents::Reading::OfAnother, "of another version"},
    {JournalContents::Reading::Impossible, "cannot be read"}};

bool isWhole(JournalOutcome outcome) {
    return outcome == JournalOutcome::Restored || outcome == JournalOutcome::SameAsFile;
}

QString stateText(JournalOutcome outcome, bool isAside) {
    return isAside && isWhole(outcome) ? u"set aside"_qs : textOf(StateTexts, outcome);
}

/// Why it cannot be restored.
QString reasonText(const RestoredJournal& content, JournalOutcome outcome) {
    if (outcome == JournalOutcome::Lost)
        return u"its base is missing or was changed, and there is no copy of it"_qs;
    return content.file() == JournalFileNow::Unreachable
               ? u"its file cannot be reached now, and there is no copy of it"_qs
               : u"cannot be read"_qs;
}

QString formatText(TextFormat format) {
    static constexpr const char* Names[] = {"UTF-8", "UTF-16 little endian", "UTF-16 big endian", "Windows-1252"};
    return QLatin1String(Names[static_cast<int>(format.encoding)]) + (format.mark ? u" with mark"_qs : QString());
}

/// Supplies pieces of a text one after the other, joined to parts of a page or more.
class PieceSource : public ByteSource {
 public:
    explicit PieceSource(const std::vector<std::string_view>& pieces) : m_pieces(pieces) {
        for (const std::string_view piece : pieces)
            m_length += static_cast<qint64>(piece.size());
    }
    qint64 length() const override { return m_length; }
    SystemError next(BytePieces& pieces) override {
        constexpr std::size_t PartSize = 1'048'576;
        m_part.clear();
        while (m_number < m_pieces.size() && m_part.size() < PartSize) {
            const std::string_view piece = m_pieces[m_number].substr(m_at, PartSize - m_part.size());
            m_part += piece;
            m_at += piece.size();
            if (m_at < m_pieces[m_number].size())
                break;
            ++m_number;
            m_at = 0;
        }
        m_view = m_part;
        pieces = BytePieces(&m_view, 1);
        return {};
    }

 private:
    const std::vector<std::string_view>& m_pieces;
    qint64 m_length = 0;
    std::size_t m_number = 0;
    std::size_t m_at = 0;
    std::string m_part;
    std::string_view m_view;
};

/// Makes the edits of a hex document again in a file that holds its base. After an error nothing more is written.
class BytesReplay : public HexEntryVisitor {
 public:
    BytesReplay(int handle, qint64 size) : m_handle(handle), m_size(size) {}

    const SystemError& error() const { return m_error; }

    bool typed(qint64 page, int row, int col, quint8 byte) override {
        const qint64 at = page - 1 + row * BytesPerRow + col;
        char before = 0;
        if (page < 1 || page > m_size || at >= m_size)
            return fail(EINVAL);
        if (::pread(m_handle, &before, 1, at) != 1)
            return fail(EIO);
        m_undo.emplace_back(at, before);
        return put(at, static_cast<char>(byte), 1);
    }
    bool tookBack() override {
        if (m_undo.empty())
            return true;
        const auto [at, before] = m_undo.back();
        m_undo.pop_back();
        return put(at, before, 1);
    }
    bool overwrote(qint64 at, std::string_view bytes) override {
        m_error = writeExactly(FileSystemCalls::system(), m_handle, bytes, at);
        return !m_error;
    }
    bool filled(qint64 at, qint64 length, quint8 byte) override { return put(at, static_cast<char>(byte), length); }

 private:
    bool fail(int error) {
        m_error = SystemError::fromErrno(error);
        return false;
    }
    bool put(qint64 at, char byte, qint64 length) {
        constexpr qint64 PartSize = 1'048'576;
        const std::string part(static_cast<std::size_t>(std::min(PartSize, length)), byte);
        for (; length > 0 && !m_error; at += PartSize, length -= PartSize) {
            const auto count = static_cast<std::size_t>(std::min(PartSize, length));
            m_error = writeExactly(FileSystemCalls::system(), m_handle, std::string_view(part).substr(0, count), at);
        }
        return !m_error;
    }

    int m_handle;
    qint64 m_size;
    SystemError m_error;
    std::vector<std::pair<qint64, char>> m_undo;
};

/// A file part by part.
class FileSource : public ByteSource {
 public:
    explicit FileSource(const QString& path) : m_handle(-1) {
        struct stat status {};
        if (path.isEmpty())
            return;
        m_handle = ::open(nameOf(path).constData(), O_RDONLY | O_NONBLOCK | O_NOCTTY | O_CLOEXEC);
        if (m_handle >= 0 && ::fstat(m_handle, &status) == 0)
            m_length = status.st_size;
    }
    ~FileSource() override {
        if (m_handle >= 0)
            ::close(m_handle);
    }
    Q_DISABLE_COPY_MOVE(FileSource)
    qint64 length() const override { return m_length; }
    SystemError next(BytePieces& pieces) override {
        constexpr qint64 PartSize = 1'048'576;
        m_part.resize(static_cast<std::size_t>(std::min(PartSize, m_length - m_at)));
        const auto count = static_cast<qint64>(m_part.size());
        SystemError error = readExactly(FileSystemCalls::system(), m_handle, m_part.data(), count, m_at);
        m_at += count;
        m_view = m_part;
        pieces = BytePieces(&m_view, 1);
        return error;
    }

 private:
    int m_handle;
    qint64 m_length = 0;
    qint64 m_at = 0;
    std::string m_part;
    std::string_view m_view;
};

QString basisText(const JournalBase& base) {
    QString text;
    if (base.state) {
        const QString time = timeText(base.state->modified / 1'000'000);
        text += u"  based on: %1 bytes, changed %2\n"_qs.arg(base.state->size).arg(time);
    }
    if (base.view == JournalBase::View::Text)
        text += u"  encoding: %1\n"_qs.arg(formatText(base.format));
    return text;
}

QString foundText(const RestoredJournal& content, JournalOutcome outcome) {
    if (!isWhole(outcome))
        return u"  %1\n"_qs.arg(reasonText(content, outcome));
    if (content.base().view == JournalBase::View::Hex)
        return u"  recovered: bytes of a file of %1 bytes\n"_qs.arg(FileSource(content.basePath()).length());
    const qint64 length = PieceSource(content.text().pieces()).length();
    const bool isSaved = outcome == JournalOutcome::SameAsFile;
    return u"  recovered: %1 bytes of text%2\n"_qs.arg(length).arg(isSaved ? u", which the file has"_qs : QString());
}

int writeText(const RestoredJournal& content, const QString& path, bool asUtf8) {
    const std::vector<std::string_view> plain = content.text().pieces();
    const TextFormat format = asUtf8 ? TextFormat() : content.base().format;
    const EncodedText encoded = encodeText(plain, format);
    if (encoded.failure)
        return say(Unfit, u"%1; --utf8 writes it in UTF-8"_qs.arg(encoded.failure->error().description));
    PieceSource source(encoded.pieces);
    const SystemError error = writeNew(path, source);
    return error ? say(Failed, u"%1: %2"_qs.arg(path, error.description)) : Done;
}

int writeBytes(const RestoredJournal& content, const QString& path) {
    FileSource source(content.basePath());
    SystemError error = writeNew(path, source);
    if (error)
        return say(Failed, u"%1: %2"_qs.arg(path, error.description));
    const int handle = ::open(nameOf(path).constData(), O_RDWR | O_NOFOLLOW | O_CLOEXEC);
    BytesReplay replay(handle, source.length());
    const bool isWhole = handle >= 0 && content.visit(replay) && ::fsync(handle) == 0;
    if (handle >= 0)
        ::close(handle);
    if (isWhole)
        return Done;
    ::unlink(nameOf(path).constData());
    return say(Failed, u"%1: %2"_qs.arg(path, replay.error().description));
}

}  // namespace

JournalTool::Opened::~Opened() {
    if (file == nullptr && handle >= 0)
        ::close(handle);
}

bool JournalTool::isJournal(const QString& name) {
    return !name.contains(u'/') && (name.endsWith(suffix()) || name.endsWith(asideSuffix()));
}

QString JournalTool::list() const {
    QString text;
    for (const QString& name :
         QDir(m_folder).entryList({u'*' + suffix(), u'*' + asideSuffix()}, QDir::Files | QDir::Hidden, QDir::Name))
        text += line(name) + u'\n';
    return text;
}

/// Name, time of the last edit, what is the matter, and the document; a tab between them.
QString JournalTool::line(const QString& name) const {
    JournalFile::Opening opening = JournalFile::Opening::Missing;
    const std::unique_ptr<Opened> opened = openAny(name, opening);
    if (opened == nullptr)
        return name + u"\t-\tcannot be opened"_qs;
    RestoredJournal& content = *opened->content;
    if (const JournalContents::Reading reading = content.readHead(); reading != JournalContents::Reading::Done)
        return name + u"\t-\t"_qs + textOf(UnreadTexts, reading);
    const JournalOutcome outcome = content.restore();
    const QString state = opened->isInUse ? u"in use"_qs : stateText(outcome, name.endsWith(asideSuffix()));
    return u"%1\t%2\t%3\t%4"_qs.arg(name, timeText(content.contents().time()), state, documentText(content.base()));
}

int JournalTool::show(const QString& name) const {
    int exit = Done;
    const std::unique_ptr<Opened> opened = open(name, exit);
    if (opened == nullptr)
        return exit;
    RestoredJournal& content = *opened->content;
    const JournalOutcome outcome = content.restore();
    const JournalBase& base = content.base();
    QString text = documentText(base) + u'\n';
    text += u"  last edit: %1%2\n"_qs.arg(timeText(content.contents().time()),
                                          opened->isInUse ? u", a running program has it open"_qs : QString());
    text += basisText(base);
    text += u"  its file: %1\n"_qs.arg(textOf(FileTexts, content.file()));
    text += foundText(content, outcome);
    return print(text) ? Done : Failed;
}

int JournalTool::restore(const QString& name, const QString& path, bool asUtf8) const {
    int exit = Done;
    const std::unique_ptr<Opened> opened = open(name, exit);
    if (opened == nullptr)
        return exit;
    RestoredJournal& content = *opened->content;
    const JournalOutcome outcome = content.restore();
    const ExitCode refusal = outcome == JournalOutcome::Lost ? Unfit : Failed;
    if (!isWhole(outcome))
        return say(refusal, u"%1: %2"_qs.arg(name, reasonText(content, outcome)));
    const QString target = QDir::current().absoluteFilePath(path);
    return content.base().view == JournalBase::View::Text ? writeText(content, target, asUtf8)
                                                          : writeBytes(content, target);
}

int JournalTool::drop(const QString& name) const {
    JournalFile::Opening opening = JournalFile::Opening::Missing;
    const std::unique_ptr<JournalFile> file = JournalFile::open(FileSystemCalls::system(), m_folder, name, opening);
    if (file != nullptr)
        return file->remove() ? Done : say(Failed, u"%1: %2"_qs.arg(name, SystemError::fromErrno(errno).description));
    return sayNotOpened("journal", name, opening);
}

std::unique_ptr<JournalTool::Opened> JournalTool::open(const QString& name, int& exit) const {
    JournalFile::Opening opening = JournalFile::Opening::Missing;
    std::unique_ptr<Opened> opened = openAny(name, opening);
    if (opened == nullptr) {
        exit = sayNotOpened("journal", name, opening);
        return nullptr;
    }
    const JournalContents::Reading reading = opened->content->readHead();
    if (reading == JournalContents::Reading::Done)
        return opened;
    exit = say(reading == JournalContents::Reading::Impossible ? Failed : Unfit,
               u"%1: %2"_qs.arg(name, textOf(UnreadTexts, reading)));
    return nullptr;
}

/// One that a running program has is read without a lock: what is in it only grows.
std::unique_ptr<JournalTool::Opened> JournalTool::openAny(const QString& name, JournalFile::Opening& opening) const {
    FileSystemCalls& calls = FileSystemCalls::system();
    auto opened = std::make_unique<Opened>();
    opened->file = JournalFile::open(calls, m_folder, name, opening);
    opened->isInUse = opening == JournalFile::Opening::InUse;
    if (opened->file == nullptr && !opened->isInUse)
        return nullptr;
    const QString path = m_folder + u'/' + name;
    constexpr int Flags = O_RDONLY | O_NOFOLLOW | O_NONBLOCK | O_NOCTTY | O_CLOEXEC;
    opened->handle = opened->isInUse ? calls.open(nameOf(path).constData(), Flags) : opened->file->handle();
    struct stat status {};
    if (opened->handle < 0 || calls.fstat(opened->handle, &status) != 0 || !S_ISREG(status.st_mode) ||
        status.st_uid != ::geteuid())
        return nullptr;
    const QString stem = m_folder + u'/' + name.left(name.indexOf(u'.'));
    opened->content = std::make_unique<RestoredJournal>(calls, opened->handle, stem);
    return opened;
}
