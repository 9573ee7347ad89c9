// SPDX-License-Identifier: GPL-3.0-or-later
#include "deck/FitCommands.h"

#include "deck/TextSize.h"

#include <limits>

namespace kalvo {

namespace {

/// What the window needs beside the columns, twips.
constexpr int kWindowMargins = 725;

} // namespace

FitCommands::FitCommands(const EditContext& context) : m_context(context), m_grid(context.deck.Grid1)
{
    struct Row
    {
        const char* name;
        void (FitCommands::*body)();
    };
    static constexpr Row kRows[] = {
        {"mnufitrows", &FitCommands::mnufitrows},       {"mnufitcolumns", &FitCommands::mnufitcolumns},
        {"mnu_fitboth", &FitCommands::mnu_fitboth},     {"mnu_Bold", &FitCommands::mnu_Bold},
        {"highlight", &FitCommands::highlight},         {"mnu_hifont", &FitCommands::mnu_hifont},
        {"mnu_gridlines", &FitCommands::mnu_gridlines}, {"mnu_adjustgrids", &FitCommands::mnu_adjustgrids},
        {"mnu_cleanup", &FitCommands::mnu_cleanup},
    };
    for (const Row& row : kRows)
        m_context.commands.add(QString::fromLatin1(row.name), [this, body = row.body] { (this->*body)(); });
}

void FitCommands::mnufitrows()
{
    getmaxrowh(m_context.deck);
}

void FitCommands::mnufitcolumns()
{
    getmaxcolw(m_context.deck);
}

void FitCommands::mnu_fitboth()
{
    const Deck::BulkWork work(m_context.deck);
    mnufitrows();
    mnufitcolumns();
}

void FitCommands::mnu_Bold()
{
    const Deck::BulkWork work(m_context.deck);
    const RepeatFill repeat(m_grid);
    m_grid.setCellFontBold(!m_grid.cellFontBold());
}

void FitCommands::highlight()
{
    const auto color = m_context.services.dialogs.color(m_grid.cellForeColor());
    if (!color)
        return;
    const Deck::BulkWork work(m_context.deck);
    const RepeatFill repeat(m_grid);
    m_grid.setCellForeColor(*color);
}

void FitCommands::mnu_hifont()
{
    CellFormat preset = m_grid.cellFormat(m_grid.row(), m_grid.col());
    preset.fontName = m_grid.cellFontName();
    preset.fontSize = m_grid.cellFontSize();
    const auto font = m_context.services.dialogs.font(preset);
    if (!font)
        return;
    const Deck::BulkWork work(m_context.deck);
    {
        const RepeatFill repeat(m_grid);
        m_grid.setCellFontName(font->fontName);
        m_grid.setCellFontSize(font->fontSize);
        m_grid.setCellForeColor(font->foreColor);
        m_grid.setCellFontBold(font->bold);
        m_grid.setCellFontItalic(font->italic);
        m_grid.setCellFontUnderline(font->underline);
        m_grid.setCellFontStrikeThrough(font->strikeThrough);
    }
    getmaxrowh(m_context.deck);
}

void FitCommands::mnu_gridlines()
{
    const bool ticked = m_grid.gridLines();
    m_grid.setGridLines(!ticked);
    m_context.commands.setChecked(QStringLiteral("mnu_gridlines"), ticked);
}

void FitCommands::mnu_adjustgrids()
{
    const QString name = QStringLiteral("mnu_adjustgrids");
    m_context.commands.setChecked(name, !m_context.commands.isChecked(name));
}

void FitCommands::mnu_cleanup()
{
    m_context.deck.setGridShown(true);
    {
        const Deck::BulkWork work(m_context.deck);
        m_context.runIfThere("newdefaultmnu");
        mnu_fitboth();
        m_context.runIfThere("hiliteKK");
        m_context.runIfThere("mnu_identkkgroups");
    }
    int sum = 0;
    for (int col = 0; col < m_grid.cols(); ++col) {
        sum += m_grid.colWidth(col);
        if (sum > std::numeric_limits<qint16>::max())
            return; // no window is as wide as that
    }
    Q_EMIT formWidthWanted(sum + kWindowMargins);
}

} // namespace kalvo
