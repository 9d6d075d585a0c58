#pragma once

#include "settings/registry/RegistryStore.h"

#include <vector>

/// A name of a key or value in the two forms a store needs: as it is spelled, and folded for comparison and order
/// (UTF-8, case folded character by character, so that no two names of different length are ever the same).
struct RegistryName {
    explicit RegistryName(const QString& name);

    QByteArray spelling;  ///< UTF-8; an unpaired surrogate is replaced by a replacement character
    QByteArray folded;
};

/// The path of a key, split into one step for each key from below the root to the key itself.
class RegistryPath {
 public:
    struct Step {
        QByteArray parent;  ///< folded path of the key above; empty below a root
        RegistryName name;
        QByteArray path;  ///< folded path of this key
    };

    explicit RegistryPath(const QString& path);

    bool isRoot() const { return m_steps.empty(); }
    const std::vector<Step>& steps() const { return m_steps; }
    /// The key itself; not for a root.
    const Step& leaf() const { return m_steps.back(); }
    QByteArray folded() const { return isRoot() ? QByteArray() : leaf().path; }

 private:
    std::vector<Step> m_steps;
};

bool isRegistryRoot(RegistryRoot root);
