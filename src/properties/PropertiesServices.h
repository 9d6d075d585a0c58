#pragma once

#include "properties/ucLangProperties.h"

class RegistryStore;
class Settings;
class ShellIntegration;
class ShellServices;
struct DocumentServices;
struct Options;

/// What the pages of the properties dialog use; all of it outlives the dialog.
struct PropertiesServices {
    const DocumentServices& documents;
    Options& options;  ///< those of the running program, which follow the settings
    Settings& settings;
    RegistryStore& registry;
    ShellServices& shell;
    ShellIntegration& associations;
    ucLangProperties::ShowHelp showHelp;
};
