#pragma once

#include "editor/language/TokenLooks.h"

#include <QObject>

class RegistryStore;

/// The looks of the token classes in all controls of the program, kept in the store. A change applies to all controls
/// at once.
class TokenTheme : public QObject {
    Q_OBJECT

 public:
    /// The store outlives this object.
    explicit TokenTheme(RegistryStore& store, QObject* parent = nullptr);

    const TokenLooks& looks() const { return m_looks; }
    /// Reads the store, except while it lacks the last changes because it did not accept them.
    void load();
    /// False when the store did not accept them; they apply to this run all the same.
    bool setLooks(const TokenLooks& looks);
    bool save();

 Q_SIGNALS:
    void Changed();

 private:
    void show(const TokenLooks& looks);

    RegistryStore& m_store;
    TokenLooks m_looks;
    bool m_stored = true;
};
