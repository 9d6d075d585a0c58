#pragma once

#include "editor/profile/ControlProfile.h"

#include <QObject>

class RegistryStore;

/// The profile that all controls of the program share. A setting that is changed in the properties dialog of one of
/// them is changed in all of them at once, and in later ones; a setting that is not changed there stays as it is in
/// each of them. Changes are kept in the store.
class SharedProfile : public QObject {
    Q_OBJECT

 public:
    /// The store outlives this object.
    explicit SharedProfile(RegistryStore& store, QObject* parent = nullptr);

    const ControlProfile& profile() const { return m_profile; }
    /// Reads the store, except while it lacks the last changes because it did not accept them.
    void load();
    /// False when the store did not accept them.
    bool save();

    /// From now on the control and the others follow each other's changes. It is unchanged until applyTo.
    void connectTo(TextControl& control);
    void applyTo(TextControl& control) const { m_profile.applyTo(control); }

 Q_SIGNALS:
    void Changed(const ControlProfile& before, const ControlProfile& after);

 private:
    void take(const ControlProfile& before, const ControlProfile& after);

    RegistryStore& m_store;
    ControlProfile m_profile;
    bool m_stored = true;
};
