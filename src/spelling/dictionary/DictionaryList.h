#pragma once

#include "spelling/dictionary/Dictionary.h"

#include <vector>

/// The dictionaries that are installed. Every call reads the folders again.
namespace DictionaryList {

/// Where dictionaries are looked for, in this order: $DICPATH, the folders `hunspell` and `myspell` of the user's data
/// and of the system's, and /usr/share/hunspell and /usr/share/myspell/dicts. Relative folders are passed over.
QStringList searchFolders();

/// Sorted by title. Of two with the same name the one found first counts; names for the same two files (links) are one
/// dictionary, which bears the name of the files themselves.
std::vector<Dictionary> installed(const QStringList& folders = searchFolders());

/// The language of the user's messages and sorting, by $LC_ALL, $LC_CTYPE and $LANG, such as "de_AT"; empty for "C".
QString localeName();

/// The index of the first to try: the one with that name, else one for the locale, for its language, en_US, the first.
/// The list must not be empty.
std::size_t preferred(const std::vector<Dictionary>& list, const QString& name, const QString& locale = localeName());

}  // namespace DictionaryList
