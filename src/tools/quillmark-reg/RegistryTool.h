#pragma once

#include "settings/registry/RegistryText.h"

#include <QStringList>

class QCommandLineParser;

/// The command quillmark-reg: reads its arguments, does one thing with the store, reports errors on standard error, and
/// returns the exit code. Created and run once by main.
class RegistryTool {
 public:
    enum ExitCode {
        Done = 0,
        Missing = 1,   ///< the requested key or value doesn't exist
        Misused = 2,   ///< the arguments can't be understood
        Failed = 3,    ///< the store or a file can't be read or written
        Malformed = 4  ///< the text to import isn't one
    };

    /// `arguments` with the name of the program first.
    int run(const QStringList& arguments);

 private:
    struct Command;
    static const Command Commands[];

    int runCommand(RegistryStore& store, const QCommandLineParser& options);
    int query(RegistryStore& store, const QCommandLineParser& options);
    int add(RegistryStore& store, const QCommandLineParser& options);
    int remove(RegistryStore& store, const QCommandLineParser& options);
    int exportText(RegistryStore& store, const QCommandLineParser& options);
    int importText(RegistryStore& store, const QCommandLineParser& options);
    int list(RegistryStore& store);

    int say(ExitCode code, const QString& text) const;
    int sayResult(int registryCode) const;

    RegistryText::KeyName m_key;  ///< the key named by the first argument of the command
    QString m_keyText;
};
