// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/QtClipboard.h"

#include "platform/text.h"

#include <QClipboard>
#include <QGuiApplication>
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

void QtClipboard::clear()
{
    QGuiApplication::clipboard()->clear();
}

} // namespace kalvo
