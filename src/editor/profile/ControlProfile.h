#pragma once

#include <QtGlobal>

#include <array>
#include <cstddef>
#include <optional>

class TextControl;
class RegistryStore;

/// The settings of controls for display and keys that are kept from run to run: those of the properties dialog except
/// for the ones of the file. A setting without a value stays as in a new control. A plain value.
class ControlProfile {
 public:
    /// The current settings of a control.
    static ControlProfile of(const TextControl& control);
    void applyTo(TextControl& control) const;

    /// Reads the stored values; a setting that is not stored, or not readable, has no value then.
    void load(RegistryStore& store);
    /// Stores the values and deletes the rest, all or nothing; returns a result number of the store.
    int save(RegistryStore& store) const;

    /// Copies the settings that differ between two profiles, and no others.
    void takeChanges(const ControlProfile& before, const ControlProfile& after);

    bool operator==(const ControlProfile&) const = default;

 private:
    static constexpr std::size_t Count = 12;
    std::array<std::optional<qint32>, Count> m_values;  ///< by the row of the table
};
