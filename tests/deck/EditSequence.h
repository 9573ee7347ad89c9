// SPDX-License-Identifier: GPL-3.0-or-later
// Any row of editing commands, as bytes, with what must hold after each of them. Shared by a test and a fuzz target.
#pragma once

#include "deck/Workspace.h"
#include "platform/text.h"
#include "tests/deck/FakeEditBox.h"

#include <array>
#include <cstdint>
#include <string>
#include <utility>
#include <vector>

namespace kalvo {

class EditSequence
{
public:
    /// The dialogs among the services answer whatever they are asked.
    explicit EditSequence(Services& services) : m_page(services, m_screens), m_box(m_page.deck)
    {
        m_grid.setRows(kStartRows);
        for (int row = 1; row < kStartRows; ++row)
            m_grid.setTextMatrix(row, 1 + row % 3, QString::number(row));
        m_grid.setTextMatrix(kStartRows - 2, 1, QStringLiteral("ZZ"));
        m_page.deck.newlines();
    }

    Workspace& page() { return m_page; }

    /// One step told by four bytes. @return what is wrong afterwards, empty when all holds.
    std::string step(std::uint8_t what, std::uint8_t a, std::uint8_t b, std::uint8_t c)
    {
        if (m_grid.rows() > kMostRows) { // so that a long run stays quick
            m_grid.select(1, 1, kMostRows / 2, 1);
            what = kDeleteLines;
        }
        m_page.deck.storeEditBox();
        const QString before = text(); // entering a cell may have stripped its blanks, which is no edit
        const QString cards = essence();
        const int level = m_page.deck.undoCount;
        const int rows = m_grid.rows();
        m_cut = 0;
        m_wrong.clear();
        act(what, a, b, c);
        m_last = "step " + std::to_string(what % kActs) + " " + std::to_string(a) + " " + std::to_string(b) + " " +
                 std::to_string(c) + " on " + std::to_string(rows) + " rows: ";
        if (std::string wrong = m_wrong + shape(); !wrong.empty())
            return m_last + wrong;
        const int levels = m_page.deck.undoCount - level;
        if (levels < 0)
            return m_last + "levels were lost";
        if (levels == 0 && essence() != cards && m_cut == 0)
            return m_last + "the deck changed without a level";
        if (levels > 0)
            m_before.emplace_back(level, before);
        if (c % 4 == 0 && levels > 0)
            return takeBack(level, before);
        return {};
    }

    /// Takes everything back. @return what is wrong, empty when each level gave back the text of before.
    std::string takeAllBack()
    {
        while (!m_before.empty()) {
            const auto [level, before] = m_before.back();
            m_last = "at the end, level " + std::to_string(level) + ": ";
            if (std::string wrong = takeBack(level, before); !wrong.empty())
                return wrong;
        }
        return {};
    }

private:
    static constexpr int kStartRows = 24;
    static constexpr int kMostRows = 400;
    static constexpr std::uint8_t kActs = 23;
    static constexpr std::uint8_t kDeleteLines = 2; ///< among kCommands

    /// All texts, line numbers and header included.
    QString text() const
    {
        QString all;
        for (int row = 0; row < m_grid.rows(); ++row)
            all += m_grid.rowTexts(row).join(QChar(1)) + QChar(2);
        return all;
    }

    /// The cards alone: entering a cell may strip its leading blanks and let the deck grow, which is no edit.
    QString essence() const
    {
        QString all;
        for (int row = 1; row < m_grid.rows(); ++row) {
            for (const QString& cell : m_grid.rowTexts(row, 1))
                all += LTrim(cell) + QChar(1);
            all += QChar(2);
        }
        const QString emptyRow = QString(m_grid.cols() - 1, QChar(1)) + QChar(2);
        while (all.endsWith(emptyRow))
            all.chop(emptyRow.size());
        return all;
    }

    void typeInto(std::uint8_t a)
    {
        if (!m_box.isShown())
            return;
        m_page.editing.typed(); // records ahead of the text's way into the cell, as the window does
        m_box.setText(m_box.text() + QChar(' ' + a % 95));
    }

    void act(std::uint8_t what, std::uint8_t a, std::uint8_t b, std::uint8_t c)
    {
        static const std::array<const char*, 11> kCommands = {
            "newinsertrow", "deleterow", "mnu_deletelines", "editcopy",      "editcut", "editpaste",
            "pasteover",    "editclear", "mnu_hiderows",    "FR_ReplaceAll", "unhide"};
        what = what % kActs;
        if (what < kCommands.size()) {
            m_page.edit.menuOpening(a % 2 ? EditCommands::Menu::Edit : EditCommands::Menu::Popup);
            m_page.commands.setEnabled(QStringLiteral("editpaste"), true);
            m_page.commands.run(QString::fromLatin1(kCommands[what]));
            return;
        }
        switch (what) {
        case 11:
            m_grid.select(1 + a % (m_grid.rows() - 1), 1 + b % 11, 1 + c % (m_grid.rows() - 1), 1 + (a + c) % 11);
            return;
        case 12:
            typeInto(a);
            return;
        case 13:
            m_page.services.clipboard.setText(clipboardText(a, b, c));
            return;
        case 14:
            m_page.edit.findReplace.setFind(QString(QChar('0' + a % 12)));
            m_page.edit.findReplace.setReplacement(b % 5 == 0 ? QStringLiteral("\t")
                                                              : QString(b % 4, QChar('1' + c % 9)));
            return;
        case 15:
            m_page.rows.newMulti_Insert(a % 9);
            return;
        case 16:
            m_page.edit.goTo.setText(QString::number(a % 20));
            m_page.edit.goTo.setStart(QString::number(b), QString::number(c));
            m_page.edit.goTo.search();
            return;
        case 17:
            m_page.commands.run(QStringLiteral("mnu_addkocard"));
            return;
        case 18:
            m_page.marks.saveComment(a % m_grid.rows(), QString(b, QChar('a' + c % 26)));
            return;
        case 19: // looks go their own ways in undo: with and without them the texts must come back
            m_page.commands.run(QString::fromLatin1(a % 2 ? "mnu_identkkgroups" : b % 2 ? "mnu_Bold" : "mnu_restore"));
            return;
        case 20:
            stepBackAndForth();
            return;
        case 21:
            m_cut = 1;
            if (b % 8 == 0)
                m_page.commands.run(QStringLiteral("auditdata"));
            return;
        default:
            m_cut = 1; // takes rows and records no level: what was recorded still gives back its own text
            if (b % 8 == 0)
                m_page.commands.run(QStringLiteral("trimtozz"));
        }
    }

    void stepBackAndForth()
    {
        if (m_page.deck.undoCount < 2)
            return;
        const QString now = text();
        m_page.undo.NewUndo();
        m_page.undo.NewRedo();
        if (text() != now)
            m_wrong = "redo does not give back the text of before the step back; ";
    }

    static QString clipboardText(std::uint8_t a, std::uint8_t b, std::uint8_t c)
    {
        static const std::array<const char*, 8> kPieces = {"\t", "\r", "\r\n", "\n", "KK", "*", "12.5", ""};
        QString all;
        for (unsigned bits = a + 256U * b + 65536U * (c % 8U); bits; bits /= 8)
            all += QString::fromLatin1(kPieces[bits % 8]);
        if (c == 77)
            all += QChar(0);
        return all;
    }

    std::string shape() const
    {
        const int rows = m_grid.rows();
        if (m_grid.cols() != deck_layout::kColumns || rows < 2)
            return "the grid has " + std::to_string(rows) + " x " + std::to_string(m_grid.cols());
        const FlexGrid::Area area = m_grid.selection();
        if (area.top < 1 || area.left < 1 || area.bottom >= rows || area.right >= m_grid.cols())
            return "cursor or selection left the cards";
        for (int col = 0; col < m_grid.cols(); ++col)
            if (m_grid.textMatrix(0, col) != (col < 2 ? QString() : QString::number(col - 1)))
                return "the header changed";
        int number = 0;
        for (int row = 1; row < rows; ++row)
            if (m_grid.textMatrix(row, 0) != (m_page.deck.isCommentRow(row) ? QString() : QString::number(++number)))
                return "line numbers are stale from row " + std::to_string(row) + " on";
        if (!m_page.deck.isEditorActive())
            return "the editor stayed locked";
        if (m_grid.fillStyle() != FlexGrid::FillStyle::Single)
            return "the fill style stayed";
        if (m_box.text() != m_page.deck.editText(m_grid.row(), m_grid.col()) && !m_box.edited)
            return "the editor shows another cell's text";
        return {};
    }

    std::string takeBack(int level, const QString& before)
    {
        while (m_page.deck.undoCount > level)
            m_page.undo.NewUndo();
        while (!m_before.empty() && m_before.back().first >= level)
            m_before.pop_back();
        for (int row = 1; row < m_grid.rows(); ++row)
            if (m_page.deck.isHiddenRow(row))
                return m_last + "a row is hidden after a step back";
        return text() == before ? std::string() : m_last + "undo does not give back the text of before";
    }

    /// An editor that knows whether the user has typed into it since it was filled.
    struct TypedBox : FakeEditBox
    {
        explicit TypedBox(Deck& deck) : FakeEditBox(deck) {}
        void setText(const QString& text) override
        {
            edited = true;
            FakeEditBox::setText(text);
        }
        void place() override
        {
            edited = false;
            FakeEditBox::place();
        }
        bool edited = false;
    };

    Screens m_screens;
    Workspace m_page;
    FlexGrid& m_grid = m_page.deck.Grid1;
    TypedBox m_box;
    std::vector<std::pair<int, QString>> m_before; ///< level, and the text that it must give back
    std::string m_last;
    std::string m_wrong; ///< found by the act itself
    int m_cut = 0;
};

} // namespace kalvo
