#pragma once

#include "settings/registry/RegistryStore.h"

/// The names of the sub-keys as a reader with a buffer of `capacity` characters gets them: each cut at its first zero
/// character, and none from the first on that doesn't fit with its terminating zero. None when the key can't be opened.
QStringList walkSubKeys(RegistryStore& store, RegistryRoot root, const QString& path, int capacity);
