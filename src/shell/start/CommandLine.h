#pragma once

#include <QString>

#include <functional>

/// The command line tail: the program's arguments joined by one blank each, read as one text and never split. Plain
/// functions; nothing is opened. It is read twice, and in different ways: Main removes the blanks at both ends first,
/// the load sequence of the frame uses the tail unchanged.
namespace CommandLine {

/// The environment in which the tail is read.
struct Surroundings {
    std::function<bool(const QString& path)> isFolder;
    QString workingFolder;  ///< relative paths start here
};

/// The action of Main before there is a frame.
struct MainOrder {
    enum class Kind {
        Register,    ///< register the program with the desktop, no window
        Unregister,  ///< undo that, no window
        Run,         ///< show the frame, even if another instance runs
        Document,    ///< pass the path to a running instance; without one show the frame
    };
    Kind kind = Kind::Run;
    QString path;  ///< for Document: absolute

    bool operator==(const MainOrder&) const = default;
};

/// The action of the frame at the end of its load sequence.
struct LoadOrder {
    enum class Kind { Nothing, Document, Project, SearchFolders };
    Kind kind = Kind::Nothing;
    QString text;                   ///< path (absolute), or the unchanged list of folders
    bool hooked = true;             ///< other instances pass paths to this one, and files are checked on activation
    bool sessionMayReturn = false;  ///< nothing was requested, so the last session may be restored

    bool operator==(const LoadOrder&) const = default;
};

/// The tail of a program's arguments. A byte that is no UTF-8 becomes half a surrogate pair, which no file's name
/// holds: so such a path is found nowhere, and never the wrong file.
QString tailOf(int count, const char* const* arguments);

MainOrder readForMain(const QString& tail, const Surroundings& around);
LoadOrder readForLoad(const QString& tail, const Surroundings& around);

}  // namespace CommandLine
