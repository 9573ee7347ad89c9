// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/Screens.h"

#include <QDialog>

#include <functional>

class QLabel;

namespace kalvo {

/// The about screen: what the program is, its version and licence, and which HEC-1 it starts.
class Form3 : public QDialog, public Screen
{
    Q_OBJECT

public:
    using EngineText = std::function<QString()>;

    explicit Form3(EngineText engineText, QWidget* parent = nullptr);

    /// Makes the screen known as "Form3".
    static void registerIn(Screens& screens, EngineText engineText);

    void showScreen() override;
    void hideScreen() override { hide(); }
    bool isScreenVisible() const override { return isVisible(); }
    /// Asks again which HEC-1 is used.
    void repaintScreen() override;

private:
    EngineText m_engineText;
    QLabel* m_engine = nullptr;
};

} // namespace kalvo
