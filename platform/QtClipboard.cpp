// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/QtClipboard.h"

#include "platform/text.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QImage>
#include <QMimeData>

namespace kalvo {

bool QtClipboard::hasText() const
{
    const QMimeData* data = QGuiApplication::clipboard()->mimeData();
    return data && data->hasText();
}

QString QtClipboard::text() const
{
    return withCrLf(QGuiApplication::clipboard()->text());
}

void QtClipboard::setText(const QString& text)
{
    QGuiApplication::clipboard()->setText(text);
}

void QtClipboard::setPicture(const QByteArray& png)
{
    const QImage image = QImage::fromData(png, "PNG");
    if (image.isNull())
        return;
    // Both forms: most programs take an image, some (and the web) only the PNG file with its own resolution.
    auto* data = new QMimeData;
    data->setImageData(image);
    data->setData(QStringLiteral("image/png"), png);
    QGuiApplication::clipboard()->setMimeData(data);
}

void QtClipboard::clear()
{
    QGuiApplication::clipboard()->clear();
}

} // namespace kalvo
