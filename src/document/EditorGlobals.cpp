#include "document/EditorGlobals.h"

EditorGlobals::EditorGlobals(Prompts& prompts, RegistryStore& store, const QString& programFolder,
                             const QString& shareFolder, PrintDialogs& printDialogs)
    : registry(store),
      languages(programFolder, shareFolder),
      hotKeys(GlobalObject::defaultHotKeys()),
      macros(store, hotKeys, programFolder),
      control(prompts, store, hotKeys, macros),
      profile(store),
      theme(store),
      printing(prompts, store, printDialogs) {}
