#pragma once

#include <QPageLayout>

class RegistryStore;

/// The page set-up: paper, orientation and margins, kept from run to run. Margins are millimetres.
class PageSetup {
 public:
    /// The store outlives this object.
    explicit PageSetup(RegistryStore& store) : m_store(store) {}

    /// A4 or Letter, by the country, as long as nothing was chosen; read from the store at the first call.
    const QPageLayout& layout();
    /// False when the store did not accept it; it applies to this run all the same.
    bool setLayout(const QPageLayout& layout);

    static QPageLayout defaultLayout();
    /// The margins that leave a part of such a page to print on are at most this.
    static qreal largestMargin(qreal lengthOfSide);

 private:
    RegistryStore& m_store;
    QPageLayout m_layout;  ///< not valid until it is read
};
