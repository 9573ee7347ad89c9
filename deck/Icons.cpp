// SPDX-License-Identifier: GPL-3.0-or-later
#include "deck/Icons.h"

#include <QFile>
#include <QPainter>
#include <QPalette>
#include <QPixmap>
#include <QSvgRenderer>

// A resource in a static library is linked in only when somebody asks for it.
static void initIcons()
{
    Q_INIT_RESOURCE(icons);
}

namespace kalvo {

namespace {

constexpr int kIconSize = 20;

QPixmap drawn(QByteArray svg, const QColor& color, int scale)
{
    svg.replace("currentColor", color.name().toLatin1());
    QSvgRenderer renderer(svg);
    QPixmap picture(kIconSize * scale, kIconSize * scale);
    picture.fill(Qt::transparent);
    QPainter painter(&picture);
    painter.setOpacity(color.alphaF());
    renderer.render(&painter);
    painter.end();
    picture.setDevicePixelRatio(scale);
    return picture;
}

} // namespace

QIcon lineIcon(const QString& name, const QPalette& palette)
{
    initIcons();
    QFile file(QStringLiteral(":/icons/%1.svg").arg(name));
    QIcon icon;
    if (!file.open(QIODevice::ReadOnly))
        return icon;
    const QByteArray svg = file.readAll();
    const QColor color = palette.color(QPalette::Active, QPalette::ButtonText);
    QColor faint = color;
    faint.setAlphaF(0.32F);
    for (const int scale : {1, 2, 3}) {
        icon.addPixmap(drawn(svg, color, scale), QIcon::Normal);
        icon.addPixmap(drawn(svg, faint, scale), QIcon::Disabled);
    }
    return icon;
}

} // namespace kalvo
