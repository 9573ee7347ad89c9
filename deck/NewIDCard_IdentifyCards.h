// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "deck/EditContext.h"
#include "platform/Screens.h"

#include <QDialog>
#include <QPointer>

class QComboBox;
class QPushButton;

namespace kalvo {

/// " Identify Cards": asks for one of the deck's card IDs and marks the cards that bear it.
class NewIDCard : public QDialog, public Screen
{
    Q_OBJECT

public:
    NewIDCard(const EditContext& context, QString name, QWidget* window);

    static void registerIn(const EditContext& context, QWidget* window);

    void showScreen() override;
    void hideScreen() override { hide(); }
    bool isScreenVisible() const override { return isVisible(); }
    /// Lists the IDs that the deck has now.
    void repaintScreen() override;

protected:
    void reject() override; // Esc and the window's own button too

private:
    void buildControls();
    void followTyping(const QString& text);
    void identify();

    EditContext m_context;
    QString m_name;
    QPointer<QWidget> m_window;
    QComboBox* Combo1 = nullptr;
    QPushButton* OKButton = nullptr;
    QPushButton* CancelButton = nullptr;
};

} // namespace kalvo
