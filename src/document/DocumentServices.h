#pragma once

#include "hex/bytes/HexStorage.h"

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
};
