#include "editor/profile/SharedProfile.h"

#include "editor/control/TextControl.h"
#include "settings/registry/RegistryStore.h"

SharedProfile::SharedProfile(RegistryStore& store, QObject* parent) : QObject(parent), m_store(store) {}

void SharedProfile::load() {
    if (m_stored)
        m_profile.load(m_store);
}

bool SharedProfile::save() {
    m_stored = m_profile.save(m_store) == RegistryCode::Ok;
    return m_stored;
}

void SharedProfile::connectTo(TextControl& control) {
    connect(&control, &TextControl::PropertiesChanged, this, &SharedProfile::take);
    connect(this, &SharedProfile::Changed, &control,
            [&control](const ControlProfile& before, const ControlProfile& after) {
                ControlProfile own = ControlProfile::of(control);
                own.takeChanges(before, after);
                own.applyTo(control);
            });
}

void SharedProfile::take(const ControlProfile& before, const ControlProfile& after) {
    m_profile.takeChanges(before, after);
    save();
    Q_EMIT Changed(before, after);
}
