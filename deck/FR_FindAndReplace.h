// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "deck/FindReplace.h"
#include "platform/Screens.h"

#include <QDialog>
#include <QPointer>

class QLabel;
class QLineEdit;
class QPushButton;

namespace kalvo {

/// "Find and Replace" over the selected cards. Stays open beside the deck, so that the next area can be selected.
class FR : public QDialog, public Screen
{
    Q_OBJECT

public:
    /// @param name under which `context.screens` knows this instance; it stays above `window`.
    FR(FindReplace& logic, const EditContext& context, QString name, QWidget* window);

    /// Makes the screen of this page known; `window` is its main screen.
    static void registerIn(FindReplace& logic, const EditContext& context, QWidget* window);

    void showScreen() override;
    void hideScreen() override { hide(); }
    bool isScreenVisible() const override { return isVisible(); }

protected:
    void reject() override; // Esc and the window's own button too

private:
    void buildControls();

    FindReplace& m_logic;
    EditContext m_context;
    QString m_name;
    QPointer<QWidget> m_window;
    QLineEdit* Text1 = nullptr;
    QLineEdit* Text2 = nullptr;
    QPushButton* Command1 = nullptr;
    QPushButton* Command2 = nullptr;
    QPushButton* Command3 = nullptr;
};

} // namespace kalvo
