// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "deck/LookCommands.h"
#include "platform/Screens.h"

#include <QDialog>

class QListWidget;
class QPushButton;

namespace kalvo {

/// "Color Edit": the colours of main screen and Grapher, one line each. A picked colour waits in its line until all are
/// applied; lines that nobody has picked keep what is shown.
class Form4 : public QDialog, public Screen
{
    Q_OBJECT

public:
    Form4(LookCommands& looks, const EditContext& context, QString name);

    static void registerIn(LookCommands& looks, const EditContext& context);

    void showScreen() override;
    void hideScreen() override { hide(); }
    bool isScreenVisible() const override { return isVisible(); }
    /// Starts again from the colours that are shown now.
    void repaintScreen() override;

protected:
    void reject() override; // Esc and the window's own button too
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void buildControls();
    void pick(int index);
    void showSwatch(int index);

    LookCommands& m_looks;
    EditContext m_context;
    QString m_name;
    ItemColors m_colors{};
    QListWidget* List1 = nullptr;
    QPushButton* Command1 = nullptr;
    QPushButton* Command2 = nullptr;
};

} // namespace kalvo
