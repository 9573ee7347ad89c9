// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "deck/EditContext.h"
#include "platform/Screens.h"

#include <QDialog>

class QPushButton;
class QTabBar;

namespace kalvo {

class FlexGridView;

/// "Color Changes for Main Screen": the four colours that matter most, tried out on a sample grid before they go to the
/// deck's. A click on a tab, or Enter on it, asks for its colour.
class Form21 : public QDialog, public Screen
{
    Q_OBJECT

public:
    Form21(const EditContext& context, QString name);

    static void registerIn(const EditContext& context);

    void showScreen() override;
    void hideScreen() override { hide(); }
    bool isScreenVisible() const override { return isVisible(); }
    /// Takes the four colours of the deck's grid into the sample.
    void repaintScreen() override;

protected:
    void reject() override; // Esc and the window's own button too
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void buildSample();
    void buildControls();
    void askForColor(int tab);
    /// Copies the four colours and leaves the others of `to`.
    static GridColors withFourOf(const GridColors& from, GridColors to);

    EditContext m_context;
    QString m_name;
    FlexGrid m_sample;
    FlexGridView* Grid1 = nullptr;
    QTabBar* TabStrip1 = nullptr;
    QPushButton* Command1 = nullptr;
    QPushButton* Command2 = nullptr;
    QPushButton* Command3 = nullptr;
    QPushButton* Command4 = nullptr;
};

} // namespace kalvo
