#include "widgets/SystemIcons.h"

#include "widgets/Icons.h"

#include <QHash>
#include <QIconEngine>
#include <QMimeDatabase>
#include <QMimeType>
#include <QPainter>

#include <algorithm>
#include <utility>

namespace {

struct OwnPicture {
    const char* type;  ///< the name that icon themes have for a kind of files
    const char* name;
};

constexpr OwnPicture OwnPictures[] = {
    {"text-x-generic", "filetext"},    {"text-x-script", "filetext"},
    {"text-html", "filetext"},         {"image-x-generic", "fileimage"},
    {"audio-x-generic", "filemedia"},  {"video-x-generic", "filemedia"},
    {"package-x-generic", "filepack"}, {"application-x-executable", "fileprogram"},
};

/// A picture with a second form, which is shown in the state On.
class TwoForms : public QIconEngine {
 public:
    TwoForms(QIcon off, QIcon on) : m_off(std::move(off)), m_on(std::move(on)) {}

    void paint(QPainter* painter, const QRect& rect, QIcon::Mode mode, QIcon::State state) override {
        form(state).paint(painter, rect, Qt::AlignCenter, mode, QIcon::Off);
    }
    QPixmap pixmap(const QSize& size, QIcon::Mode mode, QIcon::State state) override {
        return form(state).pixmap(size, mode, QIcon::Off);
    }
    QPixmap scaledPixmap(const QSize& size, QIcon::Mode mode, QIcon::State state, qreal scale) override {
        return form(state).pixmap(size / scale, scale, mode, QIcon::Off);
    }
    QIconEngine* clone() const override { return new TwoForms(m_off, m_on); }
    bool isNull() override { return false; }

 private:
    const QIcon& form(QIcon::State state) const { return state == QIcon::On ? m_on : m_off; }

    QIcon m_off;
    QIcon m_on;
};

QIcon themed(const QString& name, const char* own) {
    const QIcon icon = QIcon::fromTheme(name);
    return icon.isNull() ? Icons::named(own) : icon;
}

const char* ownPictureOf(const QString& genericName) {
    const auto* found = std::ranges::find_if(
        OwnPictures, [&](const OwnPicture& each) { return genericName == QLatin1String(each.type); });
    return found == std::end(OwnPictures) ? "file" : found->name;
}

QIcon pictureOf(const QMimeType& type) {
    const QIcon icon = QIcon::fromTheme(type.iconName());
    return icon.isNull() ? themed(type.genericIconName(), ownPictureOf(type.genericIconName())) : icon;
}

}  // namespace

QIcon SystemIcons::ofFile(const QString& path) {
    static QHash<QString, QIcon> byType;
    static const QMimeDatabase database;
    const QMimeType type = database.mimeTypeForFile(path.section(u'/', -1), QMimeDatabase::MatchExtension);
    const auto known = byType.constFind(type.name());
    return known != byType.constEnd() ? *known : *byType.insert(type.name(), pictureOf(type));
}

QIcon SystemIcons::ofFolder(const QString&) {
    static const QIcon icon(new TwoForms(themed(u"folder"_qs, "folder"), themed(u"folder-open"_qs, "folderopen")));
    return icon;
}

QIcon SystemIcons::ofVolume(bool isFixed) {
    static const QIcon fixed = themed(u"drive-harddisk"_qs, "drive");
    static const QIcon removable = themed(u"drive-removable-media"_qs, "driveremovable");
    return isFixed ? fixed : removable;
}
