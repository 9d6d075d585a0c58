#pragma once

#include "platform/SystemError.h"
#include "platform/Wildcard.h"
#include "search/engine/SearchRequest.h"

#include <QByteArray>
#include <QString>
#include <QStringList>

#include <optional>
#include <vector>

/// True for a directory that a search enters: a real one and no link, whose name does not begin with a dot, and which
/// somebody may write to. False when it cannot be examined.
bool IsPlainDirectory(const QString& pPath);

/// One stop of a search on its way: a file to be searched, an item that is only counted, or a directory that cannot be
/// listed.
struct WalkStep {
    enum Kind { File, CountedOnly, Unreadable };

    Kind kind = File;
    QString path;
    SystemError error;            ///< of a directory that cannot be listed
    bool isKnownRegular = false;  ///< the directory lists it as a regular file
};

/// Where the files of a search come from, one after another. Used by several threads, but never by two at once.
class FileSource {
 public:
    virtual ~FileSource() = default;

    /// Nothing at the end.
    virtual std::optional<WalkStep> next() = 0;
};

/// The files of a list of directories whose names match one of a list of patterns, and with sub-directories also those
/// below. Each pattern is a walk of its own over each directory: the directories are the outer loop. In each directory
/// its files come first and then its sub-directories, both sorted by code points. Hidden files are not found, links to
/// files are, and links to directories are not followed.
class FileWalk : public FileSource {
 public:
    explicit FileWalk(const SearchRequest& request);

    std::optional<WalkStep> next() override;

 private:
    struct File {
        QByteArray name;
        bool isKnownRegular;
    };

    /// A directory on the way down.
    struct Level {
        QString path;  ///< without "/" at its end
        std::vector<File> files;
        std::vector<QByteArray> directories;
        std::size_t nextFile = 0;
        std::size_t nextDirectory = 0;
    };

    bool beginNextWalk();
    std::optional<WalkStep> enter(QString path);
    SystemError list(Level& level) const;

    QStringList m_directories;
    QStringList m_patterns;
    bool m_subDirectories;
    qsizetype m_walk = 0;  ///< the number of the next walk: directory by directory, pattern by pattern
    std::optional<Wildcard> m_wildcard;
    std::vector<Level> m_levels;
    std::optional<WalkStep> m_failed;
};

/// Files of a list, as they stand in it.
class ListedFiles : public FileSource {
 public:
    explicit ListedFiles(std::vector<WalkStep> steps) : m_steps(std::move(steps)) {}

    std::optional<WalkStep> next() override {
        return m_next < m_steps.size() ? std::optional(m_steps[m_next++]) : std::nullopt;
    }

 private:
    std::vector<WalkStep> m_steps;
    std::size_t m_next = 0;
};
