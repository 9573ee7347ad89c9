// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/Screens.h"

#include <QMainWindow>

#include <memory>

class QPlainTextEdit;
class QTextDocument;

namespace kalvo {

class FlexGridView;
class FreeFormatDesk;

/// " Kalvo FREE Format Input Translation": the free text on the left, its cards in fixed fields on the right, and below
/// them what the user should look at. The left panel is the editor's own text: what is mended there is converted again.
class Form7 : public QMainWindow, public Screen
{
    Q_OBJECT

public:
    Form7(std::shared_ptr<FreeFormatDesk> desk, std::shared_ptr<QTextDocument> text, QWidget* parent = nullptr);
    ~Form7() override;

    void showScreen() override;
    void hideScreen() override { hide(); }
    bool isScreenVisible() const override { return isVisible(); }
    void repaintScreen() override;

private:
    void buildControls();
    void buildMenu();
    void mnu_removesp();

    std::shared_ptr<FreeFormatDesk> m_desk;
    std::shared_ptr<QTextDocument> m_text;
    QPlainTextEdit* RichTextBox1 = nullptr;
    QPlainTextEdit* m_remarks = nullptr;
    FlexGridView* Grid1 = nullptr;
};

} // namespace kalvo
