#pragma once

#include <QString>
#include <QStringList>

#include <functional>

/// The command line tail: the program's arguments joined by one blank each, read as one text. Only where that text
/// names nothing and each of several arguments by itself names a file, each is a document. Plain functions; nothing is
/// opened. The tail is read twice, and in different ways: Main removes the blanks at both ends first, the load sequence
/// of the frame uses the tail unchanged.
namespace CommandLine {

/// The environment in which the tail is read.
struct Surroundings {
    std::function<bool(const QString& path)> isFolder;
    QString workingFolder;  ///< relative paths start here
    /// For several arguments: whether anything has this name, which may be a folder. Not called for less than two.
    std::function<bool(const QString& path)> exists = {};
    QStringList arguments = {};  ///< of which the tail was made
};

/// The action of Main before there is a frame.
struct MainOrder {
    enum class Kind {
        Register,    ///< register the program with the desktop, no window
        Unregister,  ///< undo that, no window
        Run,         ///< show the frame, even if another instance runs
        Document,    ///< pass the paths to a running instance; without one show the frame
    };
    Kind kind = Kind::Run;
    QStringList paths;  ///< for Document: absolute, mostly one

    bool operator==(const MainOrder&) const = default;
};

/// The action of the frame at the end of its load sequence.
struct LoadOrder {
    enum class Kind { Nothing, Document, Project, SearchFolders };
    Kind kind = Kind::Nothing;
    QStringList texts;   ///< paths (absolute) of documents or of one project, or the unchanged list of folders
    bool hooked = true;  ///< other instances pass paths to this one, and files are checked on activation
    bool sessionMayReturn = false;  ///< nothing was requested, so the last session may be restored

    bool operator==(const LoadOrder&) const = default;
};

/// The tail of a program's arguments. A byte that is no UTF-8 becomes half a surrogate pair, which no file's name
/// holds: so such a path is found nowhere, and never the wrong file.
QString tailOf(int count, const char* const* arguments);
/// The arguments themselves, each decoded in the same way.
QStringList argumentsOf(int count, const char* const* arguments);

/// Whether the frame of this tail takes no paths from other instances.
bool staysApart(const QString& tail);

MainOrder readForMain(const QString& tail, const Surroundings& around);
LoadOrder readForLoad(const QString& tail, const Surroundings& around);

}  // namespace CommandLine
