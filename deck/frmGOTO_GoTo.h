// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "deck/GoTo.h"
#include "platform/Screens.h"

#include <QDialog>
#include <QPointer>

class QLineEdit;
class QPushButton;

namespace kalvo {

/// " Go To": looks for a text in the deck. It hides itself after each search and goes on behind the cell that was found
/// when it is shown again; Esc and Cancel make it forget.
class frmGOTO : public QDialog, public Screen
{
    Q_OBJECT

public:
    /// @param name under which `context.screens` knows this instance; it stays above `window`.
    frmGOTO(GoTo& logic, const EditContext& context, QString name, QWidget* window);

    /// Makes the screen of this page known; `window` is its main screen.
    static void registerIn(GoTo& logic, const EditContext& context, QWidget* window);

    void showScreen() override;
    void hideScreen() override { hide(); }
    bool isScreenVisible() const override { return isVisible(); }
    void repaintScreen() override;

protected:
    void reject() override; // Esc on any control and the window's own button too

private:
    void buildControls();
    void search();

    GoTo& m_logic;
    EditContext m_context;
    QString m_name;
    QPointer<QWidget> m_window;
    QLineEdit* Text1 = nullptr;
    QLineEdit* Text2 = nullptr;
    QLineEdit* Text3 = nullptr;
    QPushButton* Command1 = nullptr;
    QPushButton* Command3 = nullptr;
};

} // namespace kalvo
