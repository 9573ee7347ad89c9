// SPDX-License-Identifier: GPL-3.0-or-later
#include "run/ResultTables.h"

#include <algorithm>

namespace kalvo {

namespace {

void reset(FlexGrid& grid, int rows, int cols)
{
    const FlexGrid::Bulk bulk(grid);
    grid.clear();
    grid.setRows(rows);
    grid.setCols(cols);
}

} // namespace

void ListModel::addNumbers(int count)
{
    for (int number = 1; number <= count; ++number)
        items.append(QString::number(number));
}

void ListModel::clear()
{
    items.clear();
    selected.clear();
}

void ListModel::select(int index)
{
    if (index < 0 || index >= count() || isSelected(index))
        return;
    selected.insert(std::lower_bound(selected.begin(), selected.end(), index), index);
}

ResultTables::ResultTables(QObject* parent) : QObject(parent) {}

void ResultTables::forget(const QString& screen)
{
    if (screen == QLatin1String("hydrodata"))
        reset(hydrographTable, 20, 20);
    else if (screen == QLatin1String("Form9"))
        reset(peakRow, 2, 2);
    else if (screen == QLatin1String("Form10"))
        reset(peakTable, 2, 2);
    else if (screen == QLatin1String("GRAPHER"))
        GRAPHER = {};
    else
        return;
    tellChanged();
}

void ResultTables::follow(Screens& screens)
{
    connect(&screens, &Screens::screenUnloaded, this, &ResultTables::forget, Qt::UniqueConnection);
}

} // namespace kalvo
