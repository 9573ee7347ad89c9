// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/Screens.h"

#include <QMainWindow>

#include <functional>
#include <memory>

class QPlainTextEdit;
class QTextDocument;

namespace kalvo {

class FreeFormatDesk;

/// " Kalvo Free Format Editor": a text editor for a deck whose fields are parted by delimiters. Whatever replaces its
/// text can be taken back.
class Form8 : public QMainWindow, public Screen
{
    Q_OBJECT

public:
    Form8(std::shared_ptr<FreeFormatDesk> desk, std::shared_ptr<QTextDocument> text, QWidget* parent = nullptr);
    ~Form8() override;

    void showScreen() override;
    void hideScreen() override { hide(); }
    bool isScreenVisible() const override { return isVisible(); }

private:
    void buildMenu();
    void mnu_open();
    void mnu_paste();
    void mnu_removeblankLines();
    void showLength();

    std::shared_ptr<FreeFormatDesk> m_desk;
    std::shared_ptr<QTextDocument> m_text;
    QPlainTextEdit* RichTextBox1 = nullptr;
};

} // namespace kalvo
