// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "deck/AuditCommands.h"
#include "platform/Screens.h"

#include <QDialog>
#include <QPointer>

class QLabel;
class QListWidget;
class QPushButton;

namespace kalvo {

/// " Audit HEC-1 Input DATA": the lines of the last audit. It stands open beside the deck; a click on a line puts the
/// deck's cursor on the card, Enter or a double click goes there to edit.
class Form2 : public QDialog, public Screen
{
    Q_OBJECT

public:
    /// @param name under which `context.screens` knows this instance; it stays above `window`.
    Form2(AuditCommands& audit, const EditContext& context, QString name, QWidget* window);

    static void registerIn(AuditCommands& audit, const EditContext& context, QWidget* window);

    void showScreen() override;
    void hideScreen() override { hide(); }
    bool isScreenVisible() const override { return isVisible(); }
    /// Lists what the last audit found.
    void repaintScreen() override;

protected:
    void reject() override; // Esc and the window's own button too
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void buildControls();
    void goToDeck(int index);
    void placeBesideDeck();

    AuditCommands& m_audit;
    EditContext m_context;
    QString m_name;
    QPointer<QWidget> m_window;
    QListWidget* List1 = nullptr;
    QLabel* m_hint = nullptr;
    QPushButton* Command1 = nullptr;
};

} // namespace kalvo
