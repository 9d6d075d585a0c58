#include "platform/Icons.h"

#include <QApplication>
#include <QFile>
#include <QHash>
#include <QIconEngine>
#include <QPainter>
#include <QPixmap>
#include <QStyle>
#include <QStyleOption>
#include <QSvgRenderer>

#include <utility>

namespace {

constexpr qreal fadedOpacity = 0.4;

class SvgIcon : public QIconEngine {
 public:
    explicit SvgIcon(QString path) : m_path(std::move(path)) {}

    void paint(QPainter* painter, const QRect& rect, QIcon::Mode mode, QIcon::State state) override {
        const qreal ratio = painter->device()->devicePixelRatio();
        painter->drawPixmap(rect, scaledPixmap(rect.size() * ratio, mode, state, ratio));
    }

    QPixmap pixmap(const QSize& size, QIcon::Mode mode, QIcon::State state) override {
        return scaledPixmap(size, mode, state, 1.0);
    }

    /// Size in device pixels.
    QPixmap scaledPixmap(const QSize& size, QIcon::Mode mode, QIcon::State, qreal) override {
        QPixmap& drawn = m_drawn[{size.width(), size.height()}];
        if (drawn.isNull())
            drawn = draw(size);
        if (mode == QIcon::Normal || mode == QIcon::Active)
            return drawn;
        if (mode == QIcon::Disabled)
            return faded(drawn);
        const QStyleOption option;
        return QApplication::style()->generatedIconPixmap(mode, drawn, &option);
    }

    QIconEngine* clone() const override { return new SvgIcon(m_path); }
    bool isNull() override { return false; }

 private:
    /// The style's own grey is made for light windows; on dark ones it looks like that of a picture that can be chosen.
    static QPixmap faded(const QPixmap& picture) {
        QPixmap pixmap(picture.size());
        pixmap.fill(Qt::transparent);
        QPainter painter(&pixmap);
        painter.setOpacity(fadedOpacity);
        painter.drawPixmap(0, 0, picture);
        return pixmap;
    }

    QPixmap draw(const QSize& size) const {
        QPixmap pixmap(size);
        pixmap.fill(Qt::transparent);
        QSvgRenderer renderer(m_path);
        QPainter painter(&pixmap);
        renderer.render(&painter);
        return pixmap;
    }

    QString m_path;
    QHash<std::pair<int, int>, QPixmap> m_drawn;
};

}  // namespace

QIcon Icons::named(const char* name) {
    const QString path = QStringLiteral(":/icons/%1.svg").arg(QLatin1String(name));
    return QFile::exists(path) ? QIcon(new SvgIcon(path)) : QIcon();
}
