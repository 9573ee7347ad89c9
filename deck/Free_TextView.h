// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/Screens.h"

#include <QMainWindow>

#include <memory>

class QLabel;
class QPlainTextEdit;

namespace kalvo {

class FreeFormatDesk;

/// " View of Input File as Delimited Text File": the main deck written out as delimited text.
class Free : public QMainWindow, public Screen
{
    Q_OBJECT

public:
    Free(std::shared_ptr<FreeFormatDesk> desk, Screens& screens, QWidget* parent = nullptr);

    void showScreen() override;
    void hideScreen() override { hide(); }
    bool isScreenVisible() const override { return isVisible(); }
    void repaintScreen() override;

protected:
    void resizeEvent(QResizeEvent* event) override;

private:
    void buildMenu();
    void mnu_Copy();

    std::shared_ptr<FreeFormatDesk> m_desk;
    Screens& m_screens;
    QPlainTextEdit* Text1 = nullptr;
    QLabel* m_advice = nullptr;
};

} // namespace kalvo
