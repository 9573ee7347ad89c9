// SPDX-License-Identifier: GPL-3.0-or-later
#include "deck/GoTo.h"

#include "platform/text.h"

#include <algorithm>

namespace kalvo {

using namespace deck_layout;

namespace {

int startOf(const QString& text)
{
    constexpr double kLargest = 2e9;
    return static_cast<int>(std::clamp(leadingNumber(text), 1.0, kLargest));
}

} // namespace

GoTo::GoTo(const EditContext& context) : m_context(context)
{
    m_context.commands.add(QStringLiteral("frmGOTO_Find"), [this] { search(); });
}

void GoTo::setText(const QString& text)
{
    if (text == m_text)
        return;
    m_text = text;
    m_startRow = QString::number(m_context.grid().row());
    m_startColumn = QString::number(m_context.grid().col());
}

void GoTo::setStart(const QString& row, const QString& column)
{
    m_startRow = row;
    m_startColumn = column;
}

void GoTo::reset()
{
    m_text.clear();
    m_startRow = m_startColumn = QStringLiteral("1");
}

bool GoTo::search()
{
    if (m_text.isEmpty())
        return false;
    const FlexGrid& grid = m_context.grid();
    int first = startOf(m_startColumn);
    for (int row = startOf(m_startRow); row < grid.rows(); ++row) {
        for (int col = first; col < grid.cols(); ++col)
            if (grid.textMatrix(row, col).contains(m_text, Qt::CaseInsensitive))
                return goTo(row, col);
        first = kIdColumn;
    }
    m_startRow = m_startColumn = QStringLiteral("1");
    m_context.tell({QStringLiteral("\"%1\" was not found").arg(m_text)});
    return false;
}

bool GoTo::goTo(int row, int column)
{
    const bool isLastOfRow = column + 1 >= m_context.grid().cols();
    m_startRow = QString::number(isLastOfRow ? row + 1 : row);
    m_startColumn = QString::number(isLastOfRow ? kIdColumn : column + 1);
    {
        const Deck::BulkWork work(m_context.deck);
        m_context.grid().setCursor(row, column);
    }
    m_context.editing.showField();
    if (m_context.deck.isHiddenRow(row))
        m_context.tell({QStringLiteral("\"%1\" stands in a hidden row").arg(m_text)});
    return true;
}

} // namespace kalvo
