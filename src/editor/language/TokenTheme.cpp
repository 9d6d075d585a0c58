#include "editor/language/TokenTheme.h"

#include "settings/registry/RegistryStore.h"

TokenTheme::TokenTheme(RegistryStore& store, QObject* parent) : QObject(parent), m_store(store) {}

void TokenTheme::load() {
    if (!m_stored)
        return;
    TokenLooks stored;
    stored.load(m_store);
    show(stored);
}

bool TokenTheme::setLooks(const TokenLooks& looks) {
    if (looks == m_looks)
        return true;
    show(looks);
    return save();
}

bool TokenTheme::save() {
    m_stored = m_looks.save(m_store) == RegistryCode::Ok;
    return m_stored;
}

void TokenTheme::show(const TokenLooks& looks) {
    if (looks == m_looks)
        return;
    m_looks = looks;
    Q_EMIT Changed();
}
