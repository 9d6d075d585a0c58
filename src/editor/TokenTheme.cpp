#include "editor/TokenTheme.h"

#include "settings/RegistryStore.h"

TokenTheme::TokenTheme(RegistryStore& store, QObject* parent) : QObject(parent), m_store(store) {}

void TokenTheme::load() {
    m_looks.load(m_store);
    Q_EMIT Changed();
}

bool TokenTheme::setLooks(const TokenLooks& looks) {
    if (looks == m_looks)
        return true;
    m_looks = looks;
    const bool kept = save();
    Q_EMIT Changed();
    return kept;
}

bool TokenTheme::save() const {
    return m_looks.save(m_store) == RegistryCode::Ok;
}
