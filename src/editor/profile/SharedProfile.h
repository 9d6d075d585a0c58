#pragma once

#include "editor/profile/ControlProfile.h"

#include <QObject>

class RegistryStore;

/// The profile that all controls of the program share. What is changed in the properties dialog of one of them is
/// changed in all of them at once, and in those that come; what was left alone there stays as each of them has it. Kept
/// in the store from then on.
class SharedProfile : public QObject {
    Q_OBJECT

 public:
    /// The store outlives this object.
    explicit SharedProfile(RegistryStore& store, QObject* parent = nullptr);

    const ControlProfile& profile() const { return m_profile; }
    /// What the store would not take stands until it does.
    void load();
    /// False when the store did not take it.
    bool save();

    /// From now on the control and the others follow each other. It is as it was until applyTo.
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
