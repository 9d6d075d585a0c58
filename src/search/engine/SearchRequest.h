#pragma once

#include "text/search/SearchPattern.h"

#include <QString>

/// Where a search across files looks.
enum class SearchIn : qint16 { FilesListed = 0, OpenFiles = 1, ProjectFiles = 2 };

/// One search across files: what it looks for and where. A plain value.
struct SearchRequest {
    QString directories;          ///< separated by ";"; for FilesListed only
    QString patterns;             ///< of file names, separated by ";"; for FilesListed only
    bool subDirectories = false;  ///< for FilesListed only
    SearchIn in = SearchIn::FilesListed;

    QString text;
    SearchFlags flags;

    bool replaces = false;  ///< else it only finds
    QString replacement;
    bool preserveCase = false;  ///< the replacement takes the letter case of what it replaces

    bool listsResults = true;  ///< show the matches as a tree
};
