#pragma once

#include "editor/language/TokenTheme.h"
#include "editor/print/PrintDialogs.h"
#include "editor/print/Printing.h"
#include "editor/profile/SharedProfile.h"
#include "keys/GlobalObject.h"
#include "keys/HotKeys.h"
#include "keys/MacroStore.h"
#include "lang/LanguageTable.h"

class Prompts;
class QString;
class RegistryStore;

/// What all editing controls of the process have in common: the languages, the hot keys, the macros, how they show
/// text, and printing. The shell owns the only instance; code that creates a control gets it by reference. Prompts and
/// registry outlive it.
///
/// Created empty; its owner has the languages, hot keys and macros loaded.
struct EditorGlobals {
    /// The folders are those of Folders.h.
    EditorGlobals(Prompts& prompts, RegistryStore& store, const QString& programFolder, const QString& shareFolder,
                  PrintDialogs& printDialogs = PrintDialogs::shown());

    RegistryStore& registry;
    LanguageTable languages;
    HotKeys hotKeys;
    MacroStore macros;
    GlobalObject control;
    SharedProfile profile;
    TokenTheme theme;
    Printing printing;
};
