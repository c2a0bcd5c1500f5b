#include "ui/common/icons.h"

#include <QFile>
#include <QGuiApplication>
#include <QIconEngine>
#include <QPainter>
#include <QPalette>
#include <QPixmapCache>
#include <QSvgRenderer>

namespace tollwick {
namespace {

// Every outline has this colour; a dark desktop gets the light one.
constexpr const char* kOutline = "#30404f";
constexpr const char* kOutlineOnDark = "#d7dee6";
constexpr qreal kDisabledOpacity = 0.4;

bool isDark() {
    return QGuiApplication::palette().color(QPalette::Window).lightness() < 128;
}

class SvgIconEngine : public QIconEngine {
public:
    explicit SvgIconEngine(QString file) : file_(std::move(file)) {}

    void paint(QPainter* painter, const QRect& rect, QIcon::Mode mode, QIcon::State) override {
        QFile file(file_);
        if (!file.open(QIODevice::ReadOnly))
            return;
        QByteArray svg = file.readAll();
        if (isDark())
            svg.replace(kOutline, kOutlineOnDark);
        QSvgRenderer renderer(svg);
        painter->save();
        if (mode == QIcon::Disabled)
            painter->setOpacity(painter->opacity() * kDisabledOpacity);
        renderer.render(painter, rect);
        painter->restore();
    }

    QPixmap pixmap(const QSize& size, QIcon::Mode mode, QIcon::State state) override {
        const QString key = QStringLiteral("%1 %2x%3 %4 %5")
                                .arg(file_)
                                .arg(size.width())
                                .arg(size.height())
                                .arg(mode == QIcon::Disabled)
                                .arg(isDark());
        QPixmap pixmap;
        if (QPixmapCache::find(key, &pixmap))
            return pixmap;
        pixmap = QPixmap(size);
        pixmap.fill(Qt::transparent);
        QPainter painter(&pixmap);
        paint(&painter, QRect(QPoint(), size), mode, state);
        painter.end();
        QPixmapCache::insert(key, pixmap);
        return pixmap;
    }

    [[nodiscard]] QIconEngine* clone() const override { return new SvgIconEngine(file_); }

private:
    QString file_;
};

} // namespace

QIcon imageIcon(std::string_view image_key) {
    const QString file =
        QStringLiteral(":/icons/%1.svg")
            .arg(QLatin1StringView(image_key.data(), static_cast<qsizetype>(image_key.size())));
    return QFile::exists(file) ? QIcon(new SvgIconEngine(file)) : QIcon();
}

} // namespace tollwick
