// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/Services.h"

namespace kalvo {

/// The desktop's clipboard.
class QtClipboard : public Clipboard
{
public:
    bool hasText() const override;
    QString text() const override;
    void setText(const QString& text) override;
    void setPicture(const QByteArray& png) override;
    void clear() override;
};

} // namespace kalvo
