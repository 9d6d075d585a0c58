#pragma once

#include "editor/language/TokenLooks.h"

#include <QObject>

class RegistryStore;

/// How the token classes look in all controls of the program, kept in the store. What is changed here is changed in all
/// of them at once.
class TokenTheme : public QObject {
    Q_OBJECT

 public:
    /// The store outlives this object.
    explicit TokenTheme(RegistryStore& store, QObject* parent = nullptr);

    const TokenLooks& looks() const { return m_looks; }
    /// What the store would not take stands until it does.
    void load();
    /// False when the store did not take it; it counts for this run all the same.
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
