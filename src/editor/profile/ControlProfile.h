#pragma once

#include <QtGlobal>

#include <array>
#include <cstddef>
#include <optional>

class TextControl;
class RegistryStore;

/// How controls show text and take keys, as it is kept from run to run: what the properties dialog offers but for the
/// file. What it does not tell stays as a fresh control has it. A plain value.
class ControlProfile {
 public:
    /// What a control has at the moment.
    static ControlProfile of(const TextControl& control);
    void applyTo(TextControl& control) const;

    /// Takes what is stored; what is not, or cannot be read, is no longer told.
    void load(RegistryStore& store);
    /// Stores what is told and deletes the rest, all or nothing; a result number of the store.
    int save(RegistryStore& store) const;

    /// Takes over what differs between two others, and nothing else.
    void takeChanges(const ControlProfile& before, const ControlProfile& after);

    bool operator==(const ControlProfile&) const = default;

 private:
    static constexpr std::size_t Count = 12;
    std::array<std::optional<qint32>, Count> m_values;  ///< by the row of the table
};
