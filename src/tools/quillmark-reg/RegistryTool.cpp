#include "tools/quillmark-reg/RegistryTool.h"

#include "platform/Folders.h"
#include "settings/registry/SqliteRegistry.h"
#include "settings/registry/modRegistry.h"

#include <QCommandLineParser>
#include <QFile>
#include <QSaveFile>

#include <cstdio>

namespace {

const QString NameOption = u"name"_qs;
const QString DefaultOption = u"default"_qs;
const QString TypeOption = u"type"_qs;
const QString DataOption = u"data"_qs;
const QString TreeOption = u"tree"_qs;
const QString StoreOption = u"store"_qs;
const QString HelpOption = u"help"_qs;
const QString VersionOption = u"version"_qs;

constexpr const char* Help = R"(Usage: quillmark-reg [--store FILE] COMMAND [ARGUMENTS]

Shows and changes the store in which Quillmark keeps its settings.

Commands:
  query KEY                     show the values and sub-keys of a key
  query KEY --name NAME         show one value, and nothing else
  add KEY                       make a key
  add KEY --name NAME --data TEXT [--type TYPE]
                                write a value
  delete KEY                    delete a key that has no sub-keys
  delete KEY --tree             delete a key with everything below it
  delete KEY --name NAME        delete one value
  export [KEY [FILE]]           write a key and all below it as text
                                (default: HKCU to standard output)
  import [FILE]                 add what such a text holds
                                (default: from standard input)

A KEY is HKCR, HKCU or HKLM, then "/" and the names below, such as
HKCU/Software/Quillmark/general.

Options:
  -n, --name NAME               the value of this name
      --default                 the value without a name
  -t, --type TYPE               string (default), expand, multi, dword,
                                dword-be, binary, or a number with the
                                bytes in hexadecimal as data
  -d, --data TEXT               what to write; once for each string of a multi
      --tree                    with everything below
      --store FILE              another store than the user's own
  -h, --help                    show this help
      --version                 show the version

Exit status: 0 done, 1 no such key or value, 2 wrong arguments,
3 the store or a file cannot be read or written, 4 not a text to import.
)";

void defineOptions(QCommandLineParser& parser) {
    const QString text = u"text"_qs;
    parser.addOption({{u"n"_qs, NameOption}, QString(), text});
    parser.addOption({DefaultOption, QString()});
    parser.addOption({{u"t"_qs, TypeOption}, QString(), text, u"string"_qs});
    parser.addOption({{u"d"_qs, DataOption}, QString(), text});
    parser.addOption({TreeOption, QString()});
    parser.addOption({StoreOption, QString(), text});
    parser.addOption({{u"h"_qs, HelpOption}, QString()});
    parser.addOption({VersionOption, QString()});
}

bool print(const QString& text) {
    const QByteArray bytes = text.toUtf8();
    const bool written = std::fwrite(bytes.constData(), 1, static_cast<size_t>(bytes.size()), stdout) ==
                         static_cast<size_t>(bytes.size());
    return std::fflush(stdout) == 0 && written;
}

bool namesValue(const QCommandLineParser& options) {
    return options.isSet(NameOption) || options.isSet(DefaultOption);
}

QString valueName(const QCommandLineParser& options) {
    return options.isSet(DefaultOption) ? QString() : options.value(NameOption);
}

}  // namespace

/// A command's name, the number of arguments after it, and the options it accepts besides --store.
struct RegistryTool::Command {
    const char* name;
    int fewest;
    int most;
    QStringList options;
    int (RegistryTool::*run)(RegistryStore& store, const QCommandLineParser& options);
};

const RegistryTool::Command RegistryTool::Commands[] = {
    {"query", 1, 1, {NameOption, DefaultOption}, &RegistryTool::query},
    {"add", 1, 1, {NameOption, DefaultOption, TypeOption, DataOption}, &RegistryTool::add},
    {"delete", 1, 1, {NameOption, DefaultOption, TreeOption}, &RegistryTool::remove},
    {"export", 0, 2, {}, &RegistryTool::exportText},
    {"import", 0, 1, {}, &RegistryTool::importText},
};

int RegistryTool::run(const QStringList& arguments) {
    QCommandLineParser options;
    defineOptions(options);
    if (!options.parse(arguments))
        return say(Misused, options.errorText());
    if (options.isSet(HelpOption))
        return print(QString::fromUtf8(Help)) ? Done : Failed;
    if (options.isSet(VersionOption))
        return print(u"quillmark-reg " QUILLMARK_VERSION "\n"_qs) ? Done : Failed;
    const QString ownStore = configFolder() + u"/registry.db"_qs;
    SqliteRegistry store(options.isSet(StoreOption) ? options.value(StoreOption) : ownStore);
    return runCommand(store, options);
}

int RegistryTool::runCommand(RegistryStore& store, const QCommandLineParser& options) {
    const QStringList words = options.positionalArguments();
    const QString name = words.value(0);
    const auto* command =
        std::ranges::find_if(Commands, [&](const Command& each) { return name == QLatin1String(each.name); });
    if (command == std::end(Commands))
        return say(Misused, words.isEmpty() ? u"no command given"_qs : u"no command \"%1\""_qs.arg(name));
    if (words.size() - 1 < command->fewest || words.size() - 1 > command->most)
        return say(Misused, u"wrong number of arguments for %1"_qs.arg(name));
    for (const QString& option : {NameOption, DefaultOption, TypeOption, DataOption, TreeOption}) {
        if (options.isSet(option) && !command->options.contains(option))
            return say(Misused, u"%1 takes no --%2"_qs.arg(name, option));
    }
    if (options.isSet(NameOption) && options.isSet(DefaultOption))
        return say(Misused, u"--name and --default exclude each other"_qs);
    if (command->run != &RegistryTool::importText) {
        m_keyText = words.value(1, u"HKCU"_qs);
        const std::optional<RegistryText::KeyName> key = RegistryText::keyFromText(m_keyText);
        if (!key)
            return say(Misused, u"\"%1\" does not begin with HKCR, HKCU or HKLM"_qs.arg(m_keyText));
        m_key = *key;
    }
    return (this->*command->run)(store, options);
}

int RegistryTool::query(RegistryStore& store, const QCommandLineParser& options) {
    if (!namesValue(options))
        return list(store);
    RegistryValue value;
    const int code = store.readValue(m_key.root, m_key.path, valueName(options), value);
    if (code != RegistryCode::Ok)
        return sayResult(code);
    return print(RegistryText::plainValue(value) + u'\n') ? Done : Failed;
}

int RegistryTool::list(RegistryStore& store) {
    QStringList names;
    const int code = store.valueNames(m_key.root, m_key.path, names);
    if (code != RegistryCode::Ok)
        return sayResult(code);
    QString text;
    for (const QString& name : names) {
        RegistryValue value;
        store.readValue(m_key.root, m_key.path, name, value);
        text += RegistryText::valueLine(name, value) + u'\n';
    }
    store.subKeys(m_key.root, m_key.path, names);
    for (const QString& name : names) {
        const QString path = m_key.path.isEmpty() ? name : m_key.path + u'/' + name;
        text += RegistryText::keyLine({m_key.root, path}) + u'\n';
    }
    return print(text) ? Done : Failed;
}

int RegistryTool::add(RegistryStore& store, const QCommandLineParser& options) {
    const bool hasContent = options.isSet(DataOption) || options.isSet(TypeOption);
    if (!namesValue(options)) {
        return hasContent ? say(Misused, u"--data and --type need --name or --default"_qs)
                          : sayResult(store.createKey(m_key.root, m_key.path));
    }
    const QString type = options.value(TypeOption);
    QStringList data = options.values(DataOption);
    if (data.isEmpty() && type != QLatin1String("multi"))
        data.append(QString());
    const std::optional<RegistryValue> value = RegistryText::valueFromPlain(type, data);
    if (!value)
        return say(Misused, u"the data is no value of the type \"%1\""_qs.arg(type));
    return sayResult(store.writeValue(m_key.root, m_key.path, valueName(options), *value));
}

int RegistryTool::remove(RegistryStore& store, const QCommandLineParser& options) {
    if (namesValue(options)) {
        return options.isSet(TreeOption) ? say(Misused, u"--tree is for keys"_qs)
                                         : sayResult(store.deleteValue(m_key.root, m_key.path, valueName(options)));
    }
    if (!options.isSet(TreeOption))
        return sayResult(store.deleteKey(m_key.root, m_key.path));
    if (const int code = store.openKey(m_key.root, m_key.path); code != RegistryCode::Ok)
        return sayResult(code);
    return sayResult(DeleteRegTree(store, m_key.root, m_key.path) ? RegistryCode::Ok : RegistryCode::AccessDenied);
}

int RegistryTool::exportText(RegistryStore& store, const QCommandLineParser& options) {
    const std::optional<QString> text = RegistryText::exportKey(store, m_key);
    if (!text)
        return sayResult(RegistryCode::NotFound);
    const QString path = options.positionalArguments().value(2);
    if (path.isEmpty())
        return print(*text) ? Done : Failed;
    QSaveFile file(path);
    const QByteArray bytes = text->toUtf8();
    if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size() || !file.commit())
        return say(Failed, u"%1: %2"_qs.arg(path, file.errorString()));
    return Done;
}

int RegistryTool::importText(RegistryStore& store, const QCommandLineParser& options) {
    const QString path = options.positionalArguments().value(1);
    const QString shown = path.isEmpty() ? u"standard input"_qs : path;
    QFile file(path);
    if (path.isEmpty() ? !file.open(stdin, QIODevice::ReadOnly) : !file.open(QIODevice::ReadOnly))
        return say(Failed, u"%1: %2"_qs.arg(shown, file.errorString()));
    const RegistryText::Parsed parsed = RegistryText::parse(QString::fromUtf8(file.readAll()));
    if (parsed.line > 0)
        return say(Malformed, u"%1:%2: %3"_qs.arg(shown).arg(parsed.line).arg(parsed.problem));
    m_keyText = shown;
    return sayResult(RegistryText::import(store, parsed.entries));
}

int RegistryTool::say(ExitCode code, const QString& text) const {
    const QString hint = code == Misused ? u"Try quillmark-reg --help.\n"_qs : QString();
    const QByteArray bytes = u"quillmark-reg: %1\n%2"_qs.arg(text, hint).toUtf8();
    std::fwrite(bytes.constData(), 1, static_cast<size_t>(bytes.size()), stderr);
    return code;
}

int RegistryTool::sayResult(int registryCode) const {
    static constexpr struct {
        int code;
        ExitCode exit;
        const char* text;
    } Messages[] = {
        {RegistryCode::NotFound, Missing, "no such key or value"},
        {RegistryCode::AccessDenied, Failed, "not allowed: the store cannot be written, or the key has sub-keys"},
        {RegistryCode::Busy, Failed, "another process holds the store"},
        {RegistryCode::DiskFull, Failed, "the disk is full"},
        {RegistryCode::BadStore, Failed, "the store is damaged and cannot be set aside"},
    };
    if (registryCode == RegistryCode::Ok)
        return Done;
    for (const auto& message : Messages) {
        if (message.code == registryCode)
            return say(message.exit, m_keyText + u": "_qs + QLatin1String(message.text));
    }
    return say(Failed, u"%1: error %2"_qs.arg(m_keyText).arg(registryCode));
}
