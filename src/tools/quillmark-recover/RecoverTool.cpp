#include "tools/quillmark-recover/RecoverTool.h"

#include "platform/Paths.h"
#include "platform/UserFileWriter.h"
#include "recovery/journals/Journals.h"
#include "recovery/saves/RecordedBytes.h"
#include "recovery/saves/RecordedWrite.h"
#include "recovery/saves/SaveRecords.h"
#include "recovery/saves/SaveRecovery.h"
#include "tools/quillmark-recover/JournalTool.h"
#include "tools/quillmark-recover/ToolOutput.h"

#include <QCommandLineParser>
#include <QDateTime>
#include <QDir>
#include <QFile>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>

using namespace ToolOutput;

namespace {

const QString OfOption = u"of"_qs;
const QString BaseOption = u"base"_qs;
const QString OverwriteOption = u"overwrite"_qs;
const QString Utf8Option = u"utf8"_qs;
const QString FolderOption = u"folder"_qs;
const QString HelpOption = u"help"_qs;
const QString VersionOption = u"version"_qs;

constexpr const char* Help = R"(Usage: quillmark-recover [--folder DIR] COMMAND [ARGUMENTS]

Shows and restores what Quillmark recorded of saves that were interrupted, and
of changes that were not saved.

Commands:
  list                          show all records and journals
  show NAME                     show what is in one
  restore NAME FILE             write what was being saved, or was not saved,
                                into a new file
  drop NAME...                  delete records and journals

Options:
      --of PATH                 restore: the file of the record with this path;
                                needed when it has several
      --base FILE               restore: take bytes that are not in the record
                                from this file, whatever it holds
      --overwrite               restore: write into a file that exists; for
                                records
      --utf8                    restore: write a text in UTF-8, whatever the
                                encoding of its file; for journals
      --folder DIR              another folder than the user's own
  -h, --help                    show this help
      --version                 show the version

Exit status: 0 done, 1 no such record or journal, or no such file in it,
2 wrong arguments, 3 a file cannot be read or written, or a running program has
it, 4 it is damaged, or its file was changed by another program.
)";

void defineOptions(QCommandLineParser& parser) {
    const QString text = u"text"_qs;
    parser.addOption({OfOption, QString(), text});
    parser.addOption({BaseOption, QString(), text});
    parser.addOption({OverwriteOption, QString()});
    parser.addOption({Utf8Option, QString()});
    parser.addOption({FolderOption, QString(), text});
    parser.addOption({{u"h"_qs, HelpOption}, QString()});
    parser.addOption({VersionOption, QString()});
}

QString shownPath(const QByteArray& path) {
    return shown(QFile::decodeName(path));
}

constexpr ValueText<WriteState> StateTexts[] = {{WriteState::Whole, "has the new contents"},
                                                {WriteState::Partial, "was not or only partly written"},
                                                {WriteState::Torn, "was not or only partly written"},
                                                {WriteState::Old, "has the old contents"},
                                                {WriteState::Other, "is missing, or was changed by another program"},
                                                {WriteState::Away, "is out of reach: its folder is missing"},
                                                {WriteState::Unknown, "cannot be read"}};

constexpr ValueText<SaveRecord::Kind> KindTexts[] = {{SaveRecord::Kind::Blank, "empty"},
                                                     {SaveRecord::Kind::Damaged, "damaged"},
                                                     {SaveRecord::Kind::OfAnother, "of another version"},
                                                     {SaveRecord::Kind::Unknown, "cannot be read"}};

QString whyUnread(int handle, const SystemError& error) {
    return textOf(KindTexts, error ? SaveRecord::Kind::Unknown : SaveRecord::kindOf(FileSystemCalls::system(), handle));
}

}  // namespace

/// A command's name, the number of arguments after it, and the options it accepts besides --folder.
struct RecoverTool::Command {
    const char* name;
    int fewest;
    int most;
    QStringList options;
    int (RecoverTool::*run)(const QCommandLineParser& options);
};

const RecoverTool::Command RecoverTool::Commands[] = {
    {"list", 0, 0, {}, &RecoverTool::list},
    {"show", 1, 1, {}, &RecoverTool::show},
    {"restore", 2, 2, {OfOption, BaseOption, OverwriteOption, Utf8Option}, &RecoverTool::restore},
    {"drop", 1, 10'000, {}, &RecoverTool::drop},
};

int RecoverTool::run(const QStringList& arguments) {
    QCommandLineParser options;
    defineOptions(options);
    if (!options.parse(arguments))
        return say(Misused, options.errorText());
    if (options.isSet(HelpOption))
        return print(QString::fromUtf8(Help)) ? Done : Failed;
    if (options.isSet(VersionOption))
        return print(u"quillmark-recover " QUILLMARK_VERSION "\n"_qs) ? Done : Failed;
    const bool isElsewhere = options.isSet(FolderOption);
    m_folder = isElsewhere ? options.value(FolderOption) : SaveRecords::saveRecordFolder();
    m_journalFolder = isElsewhere ? m_folder : Journals::journalFolder();
    return runCommand(options);
}

int RecoverTool::runCommand(const QCommandLineParser& options) {
    const QStringList words = options.positionalArguments();
    const QString name = words.value(0);
    const auto* command =
        std::ranges::find_if(Commands, [&](const Command& each) { return name == QLatin1String(each.name); });
    if (command == std::end(Commands))
        return say(Misused, words.isEmpty() ? u"no command given"_qs : u"no command \"%1\""_qs.arg(name));
    if (words.size() - 1 < command->fewest || words.size() - 1 > command->most)
        return say(Misused, u"wrong number of arguments for %1"_qs.arg(name));
    for (const QString& option : {OfOption, BaseOption, OverwriteOption, Utf8Option}) {
        if (options.isSet(option) && !command->options.contains(option))
            return say(Misused, u"%1 takes no --%2"_qs.arg(name, option));
    }
    if (const int exit = checkFolder(m_folder))
        return exit;
    if (const int exit = checkFolder(m_journalFolder))
        return exit;
    if (JournalTool::isJournal(words.value(1)) && name != QLatin1String("drop"))
        return runForJournal(options);
    return (this->*command->run)(options);
}

int RecoverTool::checkFolder(const QString& folder) {
    struct stat status {};
    const bool isThere = ::lstat(nameOf(folder).constData(), &status) == 0;
    if (!isThere && errno != ENOENT && errno != ENOTDIR)
        return say(Failed, u"%1: %2"_qs.arg(folder, SystemError::fromErrno(errno).description));
    if (isThere && (!S_ISDIR(status.st_mode) || status.st_uid != ::geteuid()))
        return say(Failed, u"%1: not a folder of your own"_qs.arg(folder));
    return Done;
}

int RecoverTool::runForJournal(const QCommandLineParser& options) const {
    const JournalTool journals(m_journalFolder);
    const QStringList words = options.positionalArguments();
    for (const QString& option : {OfOption, BaseOption, OverwriteOption}) {
        if (options.isSet(option))
            return say(Misused, u"a journal takes no --%1"_qs.arg(option));
    }
    if (words.value(0) == QLatin1String("show"))
        return journals.show(words.value(1));
    return journals.restore(words.value(1), words.value(2), options.isSet(Utf8Option));
}

int RecoverTool::list(const QCommandLineParser& /*options*/) {
    const QString suffix = QLatin1String(SaveRecovery::RecordSuffix);
    const QStringList patterns{u'*' + suffix, u'*' + suffix + QLatin1String(SaveRecovery::AsideSuffix)};
    QString text;
    for (const QString& name : QDir(m_folder).entryList(patterns, QDir::Files | QDir::Hidden, QDir::Name))
        text += line(name) + u'\n';
    text += JournalTool(m_journalFolder).list();
    return print(text) ? Done : Failed;
}

/// Name, time, what is the matter, and the files; a tab between them.
QString RecoverTool::line(const QString& name) const {
    RecordFile file(FileSystemCalls::system(), nameOf(m_folder + u'/' + name));
    const RecordFile::Opening opening = file.open();
    struct stat status {};
    if (opening == RecordFile::Opening::InUse)
        return name + u"\t-\tin use"_qs;
    if (opening != RecordFile::Opening::Done || ::fstat(file.handle(), &status) != 0)
        return name + u"\t-\tcannot be opened"_qs;
    const QString time = QDateTime::fromSecsSinceEpoch(status.st_mtim.tv_sec).toString(u"yyyy-MM-dd HH:mm:ss"_qs);
    SystemError error;
    const std::optional<SaveRecord> record = SaveRecord::read(FileSystemCalls::system(), file.handle(), error);
    if (!record)
        return u"%1\t%2\t%3"_qs.arg(name, time, whyUnread(file.handle(), error));
    const bool isAside = name.endsWith(QLatin1String(SaveRecovery::AsideSuffix));
    QString text = u"%1\t%2\t%3"_qs.arg(name, time, isAside ? u"set aside"_qs : u"interrupted"_qs);
    for (const RecordedFile& each : record->files())
        text += u'\t' + shownPath(each.path);
    return text;
}

int RecoverTool::show(const QCommandLineParser& options) {
    int exit = Done;
    const std::optional<Opened> opened = open(options.positionalArguments().value(1), exit);
    if (!opened)
        return exit;
    QString text;
    for (const RecordedFile& file : opened->record.files()) {
        const WriteState state = RecordedWrite(FileSystemCalls::system(), opened->file->handle(), file).state();
        text +=
            u"%1\n  before: %2 bytes, changed %3\n  after: %4 bytes, %5\n  now: it %6\n"_qs.arg(shownPath(file.path))
                .arg(file.oldSize)
                .arg(QDateTime::fromMSecsSinceEpoch(file.oldTime / 1'000'000).toString(u"yyyy-MM-dd HH:mm:ss"_qs))
                .arg(file.finalSize())
                .arg(RecordedBytes::needsBase(file) ? u"of which those that differ are in the record"_qs
                                                    : u"all in the record"_qs)
                .arg(textOf(StateTexts, state));
    }
    return print(text) ? Done : Failed;
}

int RecoverTool::restore(const QCommandLineParser& options) {
    if (options.isSet(Utf8Option))
        return say(Misused, u"a record takes no --%1"_qs.arg(Utf8Option));
    int exit = Done;
    const std::optional<Opened> opened = open(options.positionalArguments().value(1), exit);
    if (!opened)
        return exit;
    const RecordedFile* file = choose(opened->record, options, exit);
    if (file == nullptr)
        return exit;
    const int base = openBase(*opened, *file, options, exit);
    if (exit != Done)
        return exit;
    exit = write(*opened, *file, base, options);
    if (base >= 0)
        ::close(base);
    return exit;
}

int RecoverTool::drop(const QCommandLineParser& options) {
    int exit = Done;
    for (const QString& name : options.positionalArguments().mid(1)) {
        int problem = Done;
        if (JournalTool::isJournal(name)) {
            exit = std::max(exit, JournalTool(m_journalFolder).drop(name));
            continue;
        }
        const std::unique_ptr<RecordFile> file = openFile(name, problem);
        if (file != nullptr && !file->remove())
            problem = say(Failed, u"%1: %2"_qs.arg(name, SystemError::fromErrno(errno).description));
        exit = std::max(exit, problem);
    }
    return exit;
}

std::unique_ptr<RecordFile> RecoverTool::openFile(const QString& name, int& exit) const {
    const QString suffix = QLatin1String(SaveRecovery::RecordSuffix);
    const bool isName = !name.contains(u'/') &&
                        (name.endsWith(suffix) || name.endsWith(suffix + QLatin1String(SaveRecovery::AsideSuffix)));
    auto file = std::make_unique<RecordFile>(FileSystemCalls::system(), nameOf(m_folder + u'/' + name));
    const RecordFile::Opening opening = isName ? file->open() : RecordFile::Opening::Missing;
    if (opening == RecordFile::Opening::Done)
        return file;
    exit = sayNotOpened("record", name, opening);
    return nullptr;
}

std::optional<RecoverTool::Opened> RecoverTool::open(const QString& name, int& exit) const {
    std::unique_ptr<RecordFile> file = openFile(name, exit);
    if (file == nullptr)
        return {};
    SystemError error;
    std::optional<SaveRecord> record = SaveRecord::read(FileSystemCalls::system(), file->handle(), error);
    if (record)
        return Opened{std::move(file), std::move(*record)};
    exit = error ? say(Failed, u"%1: %2"_qs.arg(name, error.description))
                 : say(Unfit, u"%1: %2"_qs.arg(name, whyUnread(file->handle(), error)));
    return {};
}

const RecordedFile* RecoverTool::choose(const SaveRecord& record, const QCommandLineParser& options, int& exit) const {
    const std::vector<RecordedFile>& files = record.files();
    if (!options.isSet(OfOption)) {
        if (files.size() == 1)
            return &files.front();
        exit = say(Misused, u"the record has %1 files; name one with --of"_qs.arg(files.size()));
        return nullptr;
    }
    const QString path = options.value(OfOption);
    const auto found =
        std::ranges::find_if(files, [&](const RecordedFile& file) { return QFile::decodeName(file.path) == path; });
    if (found != files.end())
        return &*found;
    exit = say(Missing, u"%1: not in the record"_qs.arg(path));
    return nullptr;
}

int RecoverTool::openBase(const Opened& opened, const RecordedFile& file, const QCommandLineParser& options,
                          int& exit) const {
    if (!RecordedBytes::needsBase(file))
        return -1;
    FileSystemCalls& calls = FileSystemCalls::system();
    const bool isNamed = options.isSet(BaseOption);
    const QByteArray name = isNamed ? nameOf(options.value(BaseOption)) : file.path;
    const WriteState state = RecordedWrite(calls, opened.file->handle(), file).state();
    constexpr WriteState Fitting[] = {WriteState::Whole, WriteState::Partial, WriteState::Torn, WriteState::Old};
    if (!isNamed && std::ranges::find(Fitting, state) == std::end(Fitting)) {
        exit = say(Unfit,
                   u"%1: the record holds only what differs from the file as it was, and the file %2; "
                   "name one like it with --base"_qs.arg(shownPath(file.path), textOf(StateTexts, state)));
        return -1;
    }
    struct stat status {};
    const int handle =
        calls.open(name.constData(), O_RDONLY | O_NONBLOCK | O_NOCTTY | O_CLOEXEC | (isNamed ? 0 : O_NOFOLLOW));
    if (handle >= 0 && calls.fstat(handle, &status) == 0 && S_ISREG(status.st_mode))
        return handle;
    exit = say(Failed, u"%1: cannot be read"_qs.arg(shownPath(name)));
    if (handle >= 0)
        calls.close(handle);
    return -1;
}

int RecoverTool::write(const Opened& opened, const RecordedFile& file, int base,
                       const QCommandLineParser& options) const {
    const QString path = QDir::current().absoluteFilePath(options.positionalArguments().value(2));
    RecordedBytes source(FileSystemCalls::system(), opened.file->handle(), file, base);
    struct stat status {};
    const bool exists = ::lstat(nameOf(path).constData(), &status) == 0;
    if (exists && S_ISLNK(status.st_mode))
        return say(Failed, u"%1: a link is not followed"_qs.arg(path));
    if (exists && !options.isSet(OverwriteOption))
        return say(Failed, u"%1: exists; --overwrite writes into it"_qs.arg(path));
    struct stat based {};
    if (exists && base >= 0 && ::fstat(base, &based) == 0 && based.st_dev == status.st_dev &&
        based.st_ino == status.st_ino)
        return say(Failed, u"%1: is read and cannot be written at the same time"_qs.arg(path));
    if (exists) {
        const SystemError error = UserFileWriter().write(path, source).error;
        return error ? say(Failed, error.description) : Done;
    }
    const SystemError error = writeNew(path, source);
    return error ? say(Failed, u"%1: %2"_qs.arg(path, error.description)) : Done;
}
