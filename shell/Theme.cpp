// SPDX-License-Identifier: GPL-3.0-or-later
#include "shell/Theme.h"

#include <QApplication>
#include <QStyle>
#include <QStyleFactory>

namespace kalvo {

QPalette darkPalette()
{
    const QColor window(45, 47, 50);
    const QColor base(30, 31, 34);
    const QColor text(224, 226, 230);
    const QColor faint(128, 131, 137);
    const QColor accent(61, 133, 198);
    QPalette colors(text, window.lighter(118), window.lighter(160), window.darker(180), window.darker(130), text,
                    Qt::white, base, window);
    colors.setColor(QPalette::AlternateBase, base.lighter(120));
    colors.setColor(QPalette::ToolTipBase, window.lighter(125));
    colors.setColor(QPalette::ToolTipText, text);
    colors.setColor(QPalette::PlaceholderText, faint);
    colors.setColor(QPalette::Highlight, accent);
    colors.setColor(QPalette::HighlightedText, Qt::white);
    colors.setColor(QPalette::Link, accent.lighter(140));
    for (const QPalette::ColorRole role : {QPalette::Text, QPalette::WindowText, QPalette::ButtonText})
        colors.setColor(QPalette::Disabled, role, faint);
    colors.setColor(QPalette::Disabled, QPalette::Highlight, window.lighter(140));
    return colors;
}

void applyTheme(const QString& theme)
{
    if (theme != QLatin1String("dark") && theme != QLatin1String("light"))
        return;
    QApplication::setStyle(QStyleFactory::create(QStringLiteral("Fusion")));
    QApplication::setPalette(theme == QLatin1String("dark") ? darkPalette() : QApplication::style()->standardPalette());
}

} // namespace kalvo
