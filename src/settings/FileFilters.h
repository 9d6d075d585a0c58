#pragma once

#include <QString>

#include <span>

class RegistryStore;

/// A file type that the open and save dialogs offer.
struct FileFilter {
    const char* description;
    const char* patterns;  ///< separated by ";"
};

/// The list that is offered while the store holds none.
std::span<const FileFilter> builtinFilters();
/// The same as one text: description, "|", patterns, "|", description...
QString builtinFilterString();

/// The user's own list in that form, unchanged and in the order of its keys, or else the built-in one. Writes nothing.
QString GetFilterString(RegistryStore& store);
