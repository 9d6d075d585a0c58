#pragma once

#include "recovery/saves/RecordFile.h"
#include "recovery/saves/SaveRecord.h"

#include <QString>
#include <QStringList>

#include <memory>
#include <optional>

class QCommandLineParser;

/// The command quillmark-recover: reads its arguments, does one thing with the records of saves and journals, reports
/// errors on standard error, and returns the exit code. Created and run once by main.
class RecoverTool {
 public:
    /// `arguments` with the name of the program first.
    int run(const QStringList& arguments);

 private:
    struct Command;
    static const Command Commands[];
    /// A record that is open and locked, and what it says.
    struct Opened {
        std::unique_ptr<RecordFile> file;
        SaveRecord record;
    };

    int runCommand(const QCommandLineParser& options);
    static int checkFolder(const QString& folder);
    int runForJournal(const QCommandLineParser& options) const;
    int list(const QCommandLineParser& options);
    int show(const QCommandLineParser& options);
    int restore(const QCommandLineParser& options);
    int drop(const QCommandLineParser& options);

    QString line(const QString& name) const;
    /// Null: it cannot be opened, and `exit` says why; that was reported.
    std::unique_ptr<RecordFile> openFile(const QString& name, int& exit) const;
    std::optional<Opened> open(const QString& name, int& exit) const;
    const RecordedFile* choose(const SaveRecord& record, const QCommandLineParser& options, int& exit) const;
    /// The open file between whose bytes the recorded ones are put; -1: none is needed, or `exit` says what is wrong.
    int openBase(const Opened& opened, const RecordedFile& file, const QCommandLineParser& options, int& exit) const;
    int write(const Opened& opened, const RecordedFile& file, int base, const QCommandLineParser& options) const;

    QString m_folder;         ///< of records
    QString m_journalFolder;  ///< the same one when it was named
};
