#include "document/EditorGlobals.h"

EditorGlobals::EditorGlobals(RegistryStore& store, const QString& programFolder, const QString& shareFolder)
    : registry(store),
      languages(programFolder, shareFolder),
      macros(store, hotKeys, programFolder),
      profile(store),
      theme(store) {}
