// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/FlexGridModel.h"
#include "tests/support/GridText.h"

#include <gtest/gtest.h>

#include <QAbstractItemModelTester>
#include <QSignalSpy>

using namespace kalvo;

namespace {

const auto kFatal = QAbstractItemModelTester::FailureReportingMode::Fatal;

std::string modelText(const QAbstractItemModel& model)
{
    QStringList rows;
    for (int row = 0; row < model.rowCount(); ++row) {
        QStringList cells{model.headerData(row, Qt::Vertical).toString()};
        for (int col = 0; col < model.columnCount(); ++col)
            cells.append(model.index(row, col).data().toString());
        rows.append(cells.join(QLatin1Char('|')));
    }
    return rows.join(QLatin1Char('\n')).toStdString();
}

} // namespace

TEST(FlexGridModel, FixedRowsAndColumnsAreItsHeaders)
{
    auto grid = gridOf("|ID|1\n1|KK|SUB1\n2|BA|1.5");
    grid.setFixedRows(1);
    grid.setFixedCols(1);
    FlexGridModel model(grid);
    const QAbstractItemModelTester tester(&model, kFatal);
    EXPECT_EQ(modelText(model), "1|KK|SUB1\n2|BA|1.5");
    EXPECT_EQ(model.headerData(1, Qt::Horizontal).toString(), "1");
    EXPECT_EQ(model.itemAt(2, 1).data().toString(), "BA");
    EXPECT_FALSE(model.itemAt(0, 1).isValid());
    EXPECT_FALSE(model.itemAt(1, 0).isValid());

    grid.setFixedRows(2);
    EXPECT_EQ(modelText(model), "2|BA|1.5");
    EXPECT_EQ(model.headerData(1, Qt::Horizontal).toString(), "1\nSUB1");
}

TEST(FlexGridModel, FollowsEveryChangeOfSizeWithoutBreakingTheRules)
{
    auto grid = gridOf("|ID|1\n1|KK|SUB1\n2|BA|1.5\n3|ZZ|");
    grid.setFixedRows(1);
    grid.setFixedCols(1);
    FlexGridModel model(grid);
    const QAbstractItemModelTester tester(&model, kFatal);
    QSignalSpy inserted(&model, &QAbstractItemModel::rowsInserted);
    QSignalSpy removed(&model, &QAbstractItemModel::rowsRemoved);
    QSignalSpy reset(&model, &QAbstractItemModel::modelReset);

    grid.insertRow(2);
    EXPECT_EQ(modelText(model), "1|KK|SUB1\n||\n2|BA|1.5\n3|ZZ|");
    EXPECT_EQ(inserted.size(), 1);
    grid.removeRow(1, 2);
    EXPECT_EQ(modelText(model), "2|BA|1.5\n3|ZZ|");
    EXPECT_EQ(removed.size(), 1);
    grid.setCols(5);
    grid.setCols(2);
    EXPECT_EQ(modelText(model), "2|BA\n3|ZZ");
    const FlexGrid::Snapshot snapshot = grid.snapshot();
    grid.setRows(0);
    EXPECT_EQ(modelText(model), "");
    grid.restore(snapshot);
    EXPECT_EQ(modelText(model), "2|BA\n3|ZZ");
    EXPECT_EQ(reset.size(), 2); // with no rows at all there is no fixed one either
}

TEST(FlexGridModel, TellsOfOneCellAsOneAndOfABulkOnce)
{
    auto grid = gridOf("|ID|1\n1|KK|SUB1\n2|BA|1.5\n3|ZZ|");
    grid.setFixedRows(1);
    grid.setFixedCols(1);
    FlexGridModel model(grid);
    const QAbstractItemModelTester tester(&model, kFatal);
    QSignalSpy data(&model, &QAbstractItemModel::dataChanged);
    QSignalSpy headers(&model, &QAbstractItemModel::headerDataChanged);

    grid.setTextMatrix(2, 1, "LS");
    ASSERT_EQ(data.size(), 1);
    EXPECT_EQ(data.at(0).at(0).toModelIndex(), model.index(1, 0));
    EXPECT_EQ(data.at(0).at(1).toModelIndex(), model.index(1, 0));
    EXPECT_EQ(headers.size(), 0);
    grid.setTextMatrix(0, 2, "F");
    grid.setTextMatrix(3, 0, "9");
    EXPECT_EQ(data.size(), 1);
    EXPECT_EQ(headers.size(), 2);
    {
        const FlexGrid::Bulk bulk(grid);
        for (int row = 1; row < 500; ++row) {
            grid.setRows(row + 1);
            grid.setTextMatrix(row, 1, "QI");
        }
        EXPECT_EQ(model.rowCount(), 3);
        EXPECT_EQ(model.index(2, 1).data(), QVariant(QString()));
    }
    EXPECT_EQ(model.rowCount(), 499);
    EXPECT_EQ(data.size(), 2);
}
