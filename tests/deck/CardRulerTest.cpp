// SPDX-License-Identifier: GPL-3.0-or-later
#include "tests/deck/MainScreen.h"

#include "deck/CardRulerBar.h"

#include <QElapsedTimer>

namespace kalvo {
namespace {

struct CardRulerTest : MainScreen
{
    CardRulerBar& bar() { return *find<CardRulerBar>("CardRulerBar"); }
    /// The words from left to right; a span over several columns says how many.
    std::string words()
    {
        QStringList texts;
        for (const CardRuler::Span& span : bar().ruler().spans)
            texts << (span.right > span.left ? QStringLiteral("%1 x%2").arg(span.text).arg(span.right - span.left + 1)
                                             : span.text);
        return texts.join('|').toStdString();
    }
    int shownAt(int column) { return bar().areaOf({column, column}).left(); }
};

TEST_F(CardRulerTest, NamesTheFieldsOfTheCardUnderTheCursor)
{
    open("ID a deck\r\nKKSUB1  \r\nBA   1.5\r\nLS\r\nPI   0.1\r\n* rain goes on\r\nPI   0.2\r\nIM\r\nQQ\r\nZZ\r\n");
    struct Row
    {
        int row;
        const char* words;
    };
    for (const Row& row :
         {Row{2, "KK|ISTAQ|NAME x9"}, Row{3, "BA|TAREA|SNAP|RATIO|ISTAR||||||"},
          Row{4, "LS|STRTL|CRVNBR|RTIMP|STRTL|CRVNBR|RTIMP||||"},
          Row{5, "PI|PRCPR 1|PRCPR 2|PRCPR 3|PRCPR 4|PRCPR 5|PRCPR 6|PRCPR 7|PRCPR 8|PRCPR 9|PRCPR 10"},
          Row{7, "PI|PRCPR 11|PRCPR 12|PRCPR 13|PRCPR 14|PRCPR 15|PRCPR 16|PRCPR 17|PRCPR 18|PRCPR "
                 "19|PRCPR 20"},
          Row{9, "QQ|QQ is no card that the catalogue knows x10"},
          Row{11, "|No card yet: its ID goes into the first column x10"}}) {
        grid.setCursor(row.row, 3);
        EXPECT_EQ(words(), row.words);
    }
    for (const int row : {1, 6, 8, 10}) { // text, comment, no fields: the card in words
        grid.setCursor(row, 3);
        const CardRuler::Span note = bar().ruler().spans.back(); // a copy: the ruler is made for the call
        EXPECT_TRUE(note.isNote && note.text == page.catalogue.getcarddescription(page.deck.id(row)));
        EXPECT_FALSE(note.text.isEmpty());
    }
}

TEST_F(CardRulerTest, FollowsTheIdThatIsBeingTypedAndUndo)
{
    open("BA   1.5\r\nZZ\r\n");
    editAt(1, 1);
    Text1().selectAll();
    type("UD");
    EXPECT_EQ(words(), "UD|TLAG|||||||||");
    press(Qt::Key_Return);
    EXPECT_EQ(words(), "UD|TLAG|||||||||");
    page.commands.run("mnu_undo");
    page.commands.run("mnu_undo");
    EXPECT_EQ(words(), "BA|TAREA|SNAP|RATIO|ISTAR||||||");
}

TEST_F(CardRulerTest, StandsOverTheColumnsWhateverTheirWidthAndScroll)
{
    open("BA   1.5\r\nZZ\r\n");
    const auto inForm = [this](QWidget& from, int x) { return from.mapTo(&form, QPoint(x, 0)).x(); };
    const auto expectAligned = [&] {
        QTest::qWait(1); // the view follows its grid with the next round of events
        for (int column = 1; column <= 11; ++column) {
            if (bar().areaOf({column, column}).isEmpty())
                continue;
            const int seen = std::max(Grid1().cellRect(0, column).left(), Grid1().cellRect(0, 0).right() + 1);
            EXPECT_EQ(inForm(bar(), shownAt(column)), inForm(Grid1(), seen)) << column;
        }
    };
    expectAligned();
    const int before = shownAt(4);
    grid.setColWidth(3, grid.colWidth(3) + 900);
    expectAligned();
    EXPECT_EQ(shownAt(4), before + 60);
    form.resize(600, 500);
    grid.setCursor(1, 11);
    Grid1().showCursorCell();
    expectAligned();
    EXPECT_TRUE(bar().areaOf({2, 2}).isEmpty()) << "scrolled out on the left";
    EXPECT_FALSE(bar().areaOf({11, 11}).isEmpty());
}

TEST_F(CardRulerTest, TheTipSaysWhatAFieldMeansAndTheMenuHidesTheBar)
{
    open("BA   1.5\r\nZZ\r\n");
    const auto tip = [this](int column) { return bar().tipAt(bar().areaOf({column, column}).center()); };
    EXPECT_TRUE(tip(1).startsWith("BA: Subbasin"));
    EXPECT_TRUE(tip(2).startsWith("BA, field 1, TAREA: ") && tip(2).contains("mi")) << tip(2).toStdString();
    EXPECT_EQ(tip(8), "BA, field 7: not used");
    EXPECT_TRUE(bar().isVisible() && entry("mnu_ruler").isChecked());
    entry("mnu_ruler").trigger();
    EXPECT_FALSE(bar().isVisible() || entry("mnu_ruler").isChecked());
    entry("mnu_ruler").trigger();
    EXPECT_TRUE(bar().isVisible());
    page.deck.setGridShown(false);
    EXPECT_FALSE(bar().isVisible()) << "there is no grid to stand over";
}

TEST_F(CardRulerTest, CostsNextToNothingInALongSeries)
{
    open("ZZ\r\n");
    page.deck.setCards(QStringList(5000, QStringLiteral("PC   0.1")));
    grid.setCursor(4990, 3);
    QElapsedTimer time;
    time.start();
    constexpr int kRounds = 20;
    for (int i = 0; i < kRounds; ++i)
        bar().grab();
    const double each = static_cast<double>(time.nsecsElapsed()) / 1e6 / kRounds;
    RecordProperty("ms_each", std::to_string(each));
    EXPECT_LT(each, 20.0) << "ms, painted anew";
    EXPECT_EQ(bar().ruler().spanAt(3).text, "PRCPR") << "further than a series can be long";
}

} // namespace
} // namespace kalvo
