#include "workspace/files/FolderPlaces.h"

#include "workspace/lists/FolderKey.h"

#include <QAction>
#include <QMenu>

namespace {

/// Keeps the names of the entries of recent folders apart from those of the favourites.
constexpr QStringView RecentPrefix = u"2";

/// A path as the caption of an entry.
QString captionOf(QString path) {
    return path.replace(u'&', u"&&"_qs);
}

}  // namespace

FolderPlaces::FolderPlaces(QMenu& favorites, QMenu& recent, QObject* parent)
    : QObject(parent), m_favoritesMenu(favorites), m_recentMenu(recent) {}

void FolderPlaces::loadFavorites() {
    m_favorites.load();
    showFavorites();
}

void FolderPlaces::loadRecent() {
    m_recent.load();
    showRecent();
}

void FolderPlaces::addFavorite(const QString& key) {
    m_favorites.add(key);
    showFavorites();
}

void FolderPlaces::removeFavorite(const QString& key) {
    m_favorites.remove(key);
    showFavorites();
}

void FolderPlaces::addRecent(const QString& key) {
    m_recent.add(key);
    showRecent();
}

void FolderPlaces::showFavorites() {
    show(m_favoritesMenu, m_favorites, {});
}

void FolderPlaces::showRecent() {
    show(m_recentMenu, m_recent, RecentPrefix.toString());
}

void FolderPlaces::show(QMenu& menu, const FolderList& list, const QString& prefix) {
    for (QAction* action : menu.actions()) {
        if (action->data().isValid()) {
            menu.removeAction(action);
            action->deleteLater();
        }
    }
    for (const QString& key : list.keys()) {
        QAction* action = menu.addAction(captionOf(DecodeFolderKey(key)));
        action->setObjectName(prefix + key);
        action->setData(key);
        connect(action, &QAction::triggered, this, [this, key] { Q_EMIT chosen(key); });
    }
}
