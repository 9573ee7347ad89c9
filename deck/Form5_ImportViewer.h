// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/Screens.h"
#include "platform/Services.h"

#include <QMainWindow>

#include <memory>

class QLabel;
class QMenu;

namespace kalvo {

class FlexGridView;
class ImportDeck;

/// " Import HEC-1 DATA": shows another deck, from which rows are copied for the main screen.
class Form5 : public QMainWindow, public Screen
{
    Q_OBJECT

public:
    Form5(std::shared_ptr<ImportDeck> deck, Screens& screens, Services& services, QWidget* parent = nullptr);
    ~Form5() override;

    void showScreen() override;
    void hideScreen() override { hide(); }
    bool isScreenVisible() const override { return isVisible(); }
    void repaintScreen() override;

private:
    void buildMenu();

    std::shared_ptr<ImportDeck> m_deck;
    Screens& m_screens;
    Services& m_services;
    FlexGridView* Grid1 = nullptr;
    QLabel* m_advice = nullptr;
    QMenu* m_popup = nullptr;
};

} // namespace kalvo
