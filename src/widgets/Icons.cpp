#include "widgets/Icons.h"

#include "widgets/Contrast.h"

#include <QFile>
#include <QGuiApplication>
#include <QHash>
#include <QIconEngine>
#include <QPainter>
#include <QPixmap>
#include <QSvgRenderer>

#include <utility>

namespace {

constexpr qreal FadedOpacity = 0.4;

/// A colour of the files, which are made for light windows, and its replacement on dark ones.
struct ColourPair {
    const char* onLight;
    const char* onDark;
};

constexpr ColourPair ColourPairs[] = {{"#5c6675", "#b4becc"}, {"#2563d0", "#8ab4f8"}};

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
        const bool onDark = Contrast::isDark(QGuiApplication::palette().color(QPalette::Window));
        if (onDark != std::exchange(m_onDark, onDark))
            m_drawn.clear();
        QPixmap& drawn = m_drawn[{size.width(), size.height()}];
        if (drawn.isNull())
            drawn = draw(size);
        if (mode == QIcon::Normal || mode == QIcon::Active)
            return drawn;
        if (mode == QIcon::Disabled)
            return faded(drawn);
        return inOneColour(drawn, QGuiApplication::palette().color(QPalette::HighlightedText));
    }

    QIconEngine* clone() const override { return new SvgIcon(m_path); }
    bool isNull() override { return false; }

 private:
    /// The style's own grey is made for light windows; on dark ones it looks like an enabled picture.
    static QPixmap faded(const QPixmap& picture) {
        QPixmap pixmap(picture.size());
        pixmap.fill(Qt::transparent);
        QPainter painter(&pixmap);
        painter.setOpacity(FadedOpacity);
        painter.drawPixmap(0, 0, picture);
        return pixmap;
    }

    /// On the highlight of a selected row the pictures' own colours would not be visible.
    static QPixmap inOneColour(QPixmap picture, const QColor& colour) {
        QPainter painter(&picture);
        painter.setCompositionMode(QPainter::CompositionMode_SourceIn);
        painter.fillRect(QRect(QPoint(), picture.deviceIndependentSize().toSize()), colour);
        return picture;
    }

    QPixmap draw(const QSize& size) const {
        QPixmap pixmap(size);
        pixmap.fill(Qt::transparent);
        QSvgRenderer renderer(source());
        QPainter painter(&pixmap);
        renderer.render(&painter);
        return pixmap;
    }

    QByteArray source() const {
        QFile file(m_path);
        QByteArray bytes = file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
        for (const ColourPair& pair : ColourPairs) {
            if (m_onDark)
                bytes.replace(pair.onLight, pair.onDark);
        }
        return bytes;
    }

    QString m_path;
    bool m_onDark = false;  ///< whether m_drawn was drawn for a dark window
    QHash<std::pair<int, int>, QPixmap> m_drawn;
};

}  // namespace

QIcon Icons::named(const char* name) {
    const QString path = u":/icons/%1.svg"_qs.arg(QLatin1String(name));
    return QFile::exists(path) ? QIcon(new SvgIcon(path)) : QIcon();
}
