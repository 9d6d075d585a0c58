#pragma once

#include "document/DocumentServices.h"
#include "document/EditorGlobals.h"
#include "hex/bytes/HexFindState.h"
#include "platform/Folders.h"
#include "settings/Options.h"
#include "settings/registry/MemoryRegistry.h"
#include "support/FailingFileSystem.h"
#include "support/ScriptedPrompts.h"

#include <QTemporaryDir>

/// What a document is given, with scripted answers, a registry in memory and a program folder of its own. Handed on as
/// DocumentServices.
struct ScriptedServices {
    explicit ScriptedServices(qint64 hexBlock = WorkingCopy::BlockSize) : hexBlockSize(hexBlock) {}

    ScriptedPrompts prompts;
    Options options;
    MemoryRegistry registry;
    QTemporaryDir programFolder;
    EditorGlobals globals{registry, programFolder.path(), shareFolder()};
    HexFindState hexFind;
    FailingFileSystem hexCalls;  ///< by which bytes are loaded and saved
    qint64 hexBlockSize;
    DocumentServices all{prompts, options, globals, hexFind, {hexCalls, hexBlockSize}};
};
