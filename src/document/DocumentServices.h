#pragma once

#include "hex/bytes/HexStorage.h"
#include "spelling/dictionary/DictionaryList.h"

#include <QStringList>

class Journals;
class Prompts;
struct EditorGlobals;
struct HexFindState;
struct Options;

/// What a document and its views use; all of it outlives them.
struct DocumentServices {
    Prompts& prompts;
    const Options& options;
    EditorGlobals& globals;
    HexFindState& hexFind;
    HexStorage hexStorage{};
    QStringList dictionaryFolders = DictionaryList::searchFolders();
    Journals* journals = nullptr;  ///< of unsaved changes; null: none are kept
};
