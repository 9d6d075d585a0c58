#pragma once

#include "workspace/files/FolderList.h"

#include <QObject>

class QMenu;

/// The favourite and the recent folders as entries of two menus, after those that the menus have already. Owned by the
/// file explorer, which owns the menus too.
class FolderPlaces : public QObject {
    Q_OBJECT

 public:
    FolderPlaces(QMenu& favorites, QMenu& recent, QObject* parent);

    /// From their files.
    void loadFavorites();
    void loadRecent();

    bool isFavorite(const QString& key) const { return m_favorites.contains(key); }
    void addFavorite(const QString& key);
    void removeFavorite(const QString& key);
    void addRecent(const QString& key);

 Q_SIGNALS:
    /// The entry of this folder tree key was chosen.
    void chosen(const QString& key);

 private:
    void show(QMenu& menu, const FolderList& list, const QString& prefix);
    void showFavorites();
    void showRecent();

    QMenu& m_favoritesMenu;
    QMenu& m_recentMenu;
    FolderList m_favorites{u"FavoriteDir.idx"_qs};
    FolderList m_recent{u"RecentDir.idx"_qs};
};
