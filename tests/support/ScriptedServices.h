#pragma once

#include "document/DocumentServices.h"
#include "document/EditorGlobals.h"
#include "hex/bytes/HexFindState.h"
#include "platform/Folders.h"
#include "settings/Options.h"
#include "settings/registry/MemoryRegistry.h"
#include "support/FailingFileSystem.h"
#include "support/ScriptedPrintDialogs.h"
#include "support/ScriptedPrompts.h"

#include <QTemporaryDir>

/// The DocumentServices of a document under test: scripted answers, a registry in memory and a temporary program
/// folder. Owned by the test; pass `all` on.
struct ScriptedServices {
    explicit ScriptedServices(qint64 hexBlock = WorkingCopy::BlockSize) : hexBlockSize(hexBlock) {}

    ScriptedPrompts prompts;
    Options options;
    MemoryRegistry registry;
    QTemporaryDir programFolder;
    ScriptedPrintDialogs printDialogs;
    EditorGlobals globals{prompts, registry, programFolder.path(), shareFolder(), printDialogs};
    HexFindState hexFind;
    FailingFileSystem hexCalls;  ///< used to load and save the bytes of hex views
    qint64 hexBlockSize;
    DocumentServices all{prompts, options, globals, hexFind, {hexCalls, hexBlockSize}};
};
