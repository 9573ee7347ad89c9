// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "deck/MarkCommands.h"
#include "platform/Screens.h"

#include <QDialog>
#include <QPointer>

#include <functional>

class QLabel;
class QLineEdit;
class QPushButton;

namespace kalvo {

/// " Edit Comments": the free text of one card as one line, in a box over its row. It keeps the main screen waiting:
/// a row inserted meanwhile would move the text into another card.
class editcomms : public QDialog, public Screen
{
    Q_OBJECT

public:
    /// Where the current cell stands on the screen.
    using CellPlace = std::function<QPoint()>;

    editcomms(MarkCommands& marks, const EditContext& context, QString name, QWidget* window, CellPlace place);

    static void registerIn(MarkCommands& marks, const EditContext& context, QWidget* window, const CellPlace& place);

    void showScreen() override;
    void hideScreen() override { hide(); }
    bool isScreenVisible() const override { return isVisible(); }

protected:
    void reject() override; // Esc and the window's own button too

private:
    void buildControls();
    void loadRow();
    void save();
    void getcolumn();
    void placeOverRow();

    MarkCommands& m_marks;
    EditContext m_context;
    QString m_name;
    QPointer<QWidget> m_window;
    CellPlace m_place;
    int m_row = 0;
    int m_firstCardColumn = 3;
    int m_fits = 78; ///< characters
    QLineEdit* Text1 = nullptr;
    QLineEdit* Text2 = nullptr; ///< the row on opening
    QLineEdit* Text3 = nullptr; ///< the column
    QLabel* Label1 = nullptr;
    QLabel* Label2 = nullptr;
    QPushButton* Command1 = nullptr;
    QPushButton* Command2 = nullptr;
};

} // namespace kalvo
