// The icons as pictures that the build has drawn from the SVG files: the Windows program does
// without Qt's SVG library.
#include "ui/common/icons.h"

#include <QFile>
#include <QGuiApplication>
#include <QHash>
#include <QPalette>

namespace tollwick {

QIcon imageIcon(std::string_view image_key) {
    const bool dark = QGuiApplication::palette().color(QPalette::Window).lightness() < 128;
    const auto key = QString::fromUtf8(image_key.data(), static_cast<qsizetype>(image_key.size()));
    // Lists ask for every row.
    static QHash<QString, QIcon> made;
    QIcon& icon = made[key + QString::number(dark)];
    if (!icon.isNull())
        return icon;
    for (const int size : {TOLLWICK_ICON_SIZES}) {
        const QString file =
            QStringLiteral(":/icons/%1-%2%3.png").arg(key).arg(size).arg(dark ? "-dark" : "");
        if (QFile::exists(file))
            icon.addFile(file, QSize(size, size));
    }
    return icon;
}

} // namespace tollwick
