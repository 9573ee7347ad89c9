// SPDX-License-Identifier: GPL-3.0-or-later
#include "deck/Catalogue.h"

#include "FakeEditBox.h"
#include "platform/text.h"
#include "tests/support/GridText.h"
#include "tests/support/ScriptedServices.h"

#include <QSet>

#include <gtest/gtest.h>

namespace kalvo {
namespace {

constexpr auto kCards = "BA,TAREA,SNAP,,,,,,,,\r\n"
                        "SL,ELEVL,CAREA,,,,,,,,\r\n"
                        "LS,STRTL,CRVNBR,,,,,,,,\r\n"
                        "LU,STRTL,,,,,,,,,\r\n"
                        "KO,STRAY,,,,,,,,,\r\n";
constexpr auto kVariables = "TAREA\tBA HC\tArea of it\r\n"
                            "CAREA\tSL\tOpening\r\n"
                            "STRTL\tLU\tInitial loss\r\n"
                            "STRTL\tLS\tAbstraction\twith a TAB\r\n";
constexpr auto kDescriptions = "BA\tSubbasin\r\n* \tA comment\r\n";

struct CatalogueTest : testing::Test
{
    ScriptedServices services;
    Catalogue catalogue{services};

    void use(const QByteArray& cards, const QByteArray& variables, const QByteArray& descriptions)
    {
        services.put("hec1datarecs.txt", cards);
        services.put("hec1variabledescription.txt", variables);
        services.put("Carddescriptiontext.txt", descriptions);
        catalogue.load();
    }
    void useSample() { use(kCards, kVariables, kDescriptions); }
    QString info(const char* id, const char* field) const
    {
        return catalogue.GETHECINFO(QString::fromLatin1(id), QString::fromLatin1(field))
            .value_or(QStringLiteral("stays"));
    }
    QString meaning(const char* id, const char* name, const char* cell = "") const
    {
        return catalogue.gethecvariabledesc(QString::fromLatin1(id), QString::fromLatin1(name),
                                            QString::fromLatin1(cell));
    }
};

// -- Panel 6 ---------------------------------------------------------------------------------------------------------

struct InfoCase
{
    const char* name;
    const char* id;
    const char* field;
    const char* panel;
};
struct CatalogueInfo : CatalogueTest, testing::WithParamInterface<InfoCase>
{
};

TEST_P(CatalogueInfo, TellsTheVariableBetweenBlanks)
{
    useSample();
    EXPECT_EQ(info(GetParam().id, GetParam().field), GetParam().panel);
}

INSTANTIATE_TEST_SUITE_P(
    , CatalogueInfo,
    testing::Values(InfoCase{"Field", "BA", "2", " SNAP "}, InfoCase{"FirstRecordIsRowZero", "BA", "1", " TAREA "},
                    InfoCase{"FieldWithoutVariable", "BA", "3", "  "}, InfoCase{"IdColumnTellsTheId", "SL", "", " SL "},
                    InfoCase{"UnknownCard", "XX", "1", "stays"},
                    InfoCase{"IdWithBlankIsAnotherOne", "BA ", "1", "stays"},
                    InfoCase{"FieldPastTheGrid", "BA", "12", "stays"}, InfoCase{"NoId", "", "1", ""},
                    InfoCase{"Diagram", "*D", "1", " DIAGRAM "}, InfoCase{"Format", "*F", "1", " FORMAT "},
                    InfoCase{"NoList", "*N", "1", " NO LIST "}, InfoCase{"List", "*L", "1", " LIST "},
                    InfoCase{"Comment", "*", "1", " INPUT CARD COMMENT "},
                    InfoCase{"CommentFromAFile", "* ", "1", " INPUT CARD COMMENT "},
                    InfoCase{"OtherStar", "**", "1", "stays"}),
    [](const auto& row) { return row.param.name; });

// -- Panel 7 ---------------------------------------------------------------------------------------------------------

TEST_F(CatalogueTest, TellsVariablesOfOneNameApartByTheirCard)
{
    useSample();
    EXPECT_EQ(meaning("LU", " STRTL "), "Initial loss");
    EXPECT_EQ(meaning("LS", " STRTL "), "Abstraction\twith a TAB") << "all behind the second TAB belongs to it";
    EXPECT_EQ(meaning("BA", " STRTL "), "") << "not listed for this card";
    EXPECT_EQ(meaning("BA", " NONE "), "");
    EXPECT_EQ(meaning("", " TAREA "), "") << "an empty ID occurs in every text";
    EXPECT_EQ(meaning("BA", "  "), "") << "rows that no line filled are no match";
}

struct ConversionCase
{
    const char* name;
    const char* variable;
    const char* cell;
    const char* converted;
};
struct CatalogueConversion : testing::TestWithParam<ConversionCase>
{
};

TEST_P(CatalogueConversion, IsTheGeneralTextOfTheRoundedFigure)
{
    EXPECT_EQ(
        convertedValue(QString::fromLatin1(GetParam().variable), leadingNumber(std::string_view(GetParam().cell))),
        GetParam().converted);
}

INSTANTIATE_TEST_SUITE_P(
    , CatalogueConversion,
    testing::Values(ConversionCase{"Area", "TAREA", "0.85", " (544 Acres)"},
                    ConversionCase{"AreaThreeDecimals", "TAREA", ".0000123", " (0.008 Acres)"},
                    ConversionCase{"AreaZero", "TAREA", "0", ""}, ConversionCase{"AreaNegative", "TAREA", "-1", ""},
                    ConversionCase{"NumberAtTheStart", "TAREA", " 2 sq mi", " (1280 Acres)"},
                    ConversionCase{"NoNumber", "TAREA", "abc", ""},
                    ConversionCase{"Lag", "TLAG", ".62", " (1.033 Time of Conc. hrs)"},
                    ConversionCase{"SurfaceArea", "RAREA", "1.5", " (65340 Square Feet)"},
                    ConversionCase{"Diversion", "DSTRMX", "2", " (87120 Cubic Feet)"},
                    ConversionCase{"OpeningWithThePiOfThisProgram", "CAREA", "1", " (13.54 Equiv. Diameter inches )"},
                    ConversionCase{"OpeningZero", "CAREA", "0", ""},
                    ConversionCase{"PastAllNumbers", "DSTRMX", "1E308", ""},
                    ConversionCase{"OtherVariable", "SNAP", "2", ""}),
    [](const auto& row) { return row.param.name; });

TEST_F(CatalogueTest, ANegativeOpeningReplacesTheDescription)
{
    useSample();
    EXPECT_EQ(meaning("SL", " CAREA ", "-2"), "Orifice Area is Negative!");
    EXPECT_EQ(meaning("SL", " CAREA ", "0"), "Opening");
    EXPECT_EQ(meaning("BA", " TAREA ", "-2"), "Area of it");
    EXPECT_EQ(meaning("BA", " TAREA ", "1"), "Area of it (640 Acres)");
}

TEST_F(CatalogueTest, FindsTheDescriptionOfACardByItsExactId)
{
    useSample();
    EXPECT_EQ(catalogue.getcarddescription("BA"), "Subbasin");
    EXPECT_EQ(catalogue.getcarddescription("* "), "A comment");
    EXPECT_EQ(catalogue.getcarddescription("ba"), "");
    EXPECT_EQ(catalogue.getcarddescription(""), "");
    EXPECT_EQ(catalogue.fieldNames("SL").mid(0, 3), (QStringList{"ELEVL", "CAREA", ""}));
    EXPECT_TRUE(catalogue.fieldNames("XX").isEmpty());
}

// -- Files that are not as they should be ----------------------------------------------------------------------------

TEST_F(CatalogueTest, CardRecordsAreAStreamOfItems)
{
    // A record may run over lines; an item too few shifts all that follows; a record that is not whole is dropped.
    use("BA,TAREA\r\n,\"A, B\",,,,,,\r\n,KK,ISTAQ\r\n", "", "");
    EXPECT_EQ(catalogue.fieldNames("BA").mid(0, 4), (QStringList{"TAREA", "", "A, B", ""}));
    EXPECT_EQ(gridText(catalogue.hecgrid1, 1, 0, 1, 1), "|");
}

TEST_F(CatalogueTest, RecordsPastTheLastRowAreDropped)
{
    QByteArray cards, descriptions;
    for (int i = 0; i < 300; ++i) {
        cards += "C" + QByteArray::number(i) + ",V,,,,,,,,,\r\n";
        descriptions += "C" + QByteArray::number(i) + "\tD\r\n";
    }
    use(cards, "", descriptions);
    EXPECT_EQ(info("C125", "1"), " V ");
    EXPECT_EQ(info("C126", "1"), "stays");
    EXPECT_EQ(catalogue.getcarddescription("C198"), "D");
    EXPECT_EQ(catalogue.getcarddescription("C199"), "");
}

TEST_F(CatalogueTest, ALineWithoutATabEndsTheCardDescriptions)
{
    use("", "", "BA\tSubbasin\r\n\r\nKK\tStation\r\n");
    EXPECT_EQ(catalogue.getcarddescription("BA"), "Subbasin");
    EXPECT_EQ(catalogue.getcarddescription("KK"), "");
}

struct BadVariables
{
    const char* name;
    QByteArray bytes;
    const char* told;
};
struct CatalogueVariables : CatalogueTest, testing::WithParamInterface<BadVariables>
{
};

TEST_P(CatalogueVariables, AFailureIsToldAndWhatWasReadIsKept)
{
    services.dialogs.willAnswer(Button::Ok);
    use(kCards, GetParam().bytes, "");
    EXPECT_EQ(services.dialogs.texts(), QStringList{QString::fromLatin1(GetParam().told)});
    EXPECT_EQ(meaning("BA", "TAREA"), "Area of it");
    EXPECT_EQ(gridText(catalogue.grid3, 0, 0, 0, 3), "|Variable|Location|Description");
}

INSTANTIATE_TEST_SUITE_P(
    , CatalogueVariables,
    testing::Values(BadVariables{"OneTab", "TAREA\tBA\tArea of it\r\nSNAP\tBA\r\n",
                                 "Line 2 has fewer than two tabs - Error in Hec1variabledescription.txt file"},
                    BadVariables{"BlankLastLine", "TAREA\tBA\tArea of it\r\n\r\n",
                                 "Line 2 has fewer than two tabs - Error in Hec1variabledescription.txt file"},
                    BadVariables{"LinePast299", QByteArray("TAREA\tBA\tArea of it\r\n").repeated(300),
                                 "More than 299 lines - Error in Hec1variabledescription.txt file"}),
    [](const auto& row) { return row.param.name; });

TEST(CatalogueWithoutFiles, OnlyTheVariablesTellIt)
{
    QTemporaryDir empty;
    ScriptedServices scripted;
    ProgramFolder folder(empty.path(), {});
    Services services{scripted.dialogs, scripted.clipboard, scripted.clock, scripted.process, folder, scripted.measure};
    Catalogue catalogue(services);
    scripted.dialogs.willAnswer(Button::Ok);
    catalogue.load();
    EXPECT_EQ(scripted.dialogs.texts(), QStringList{"File not found - Error in Hec1variabledescription.txt file"});
    EXPECT_FALSE(catalogue.GETHECINFO("BA", "1"));
    EXPECT_EQ(catalogue.getcarddescription("BA"), "");
}

// -- istapeheader ----------------------------------------------------------------------------------------------------

TEST(IsTapeHeader, OnlyTheLengthCounts)
{
    ScriptedDialogs dialogs;
    const QStringList stations{"SUB1"};
    EXPECT_EQ(istapeheader("SUB1", stations, dialogs), 0) << "a match is no header";
    EXPECT_EQ(istapeheader("12345678", stations, dialogs), 0);
    EXPECT_EQ(istapeheader("123456789", stations, dialogs), 1);
    EXPECT_EQ(istapeheader("123456789", {}, dialogs), 0);
    dialogs.willAnswer(Button::Ok);
    EXPECT_EQ(istapeheader("", stations, dialogs), 0);
    EXPECT_EQ(dialogs.texts(), QStringList{"Unknown Error in istapeheader - Restart Application!"});
}

// -- The files that are shipped --------------------------------------------------------------------------------------

struct ShippedCatalogue : CatalogueTest
{
    void SetUp() override { catalogue.load(); }
    QStringList cards() const
    {
        QStringList all;
        for (int row = 0; row < catalogue.hecgrid1.rows() && !catalogue.hecgrid1.textMatrix(row, 0).isEmpty(); ++row)
            all << catalogue.hecgrid1.textMatrix(row, 0);
        return all;
    }
    QByteArray shipped(const char* name) const
    {
        return readFile(services.folder.dataFile(QString::fromLatin1(name))).value_or(QByteArray());
    }
};

TEST_F(ShippedCatalogue, HoldsEveryCardOnce)
{
    const QStringList all =
        QStringLiteral(
            "*F *L *N *D * ID IT IN IO IM JP JR JD OU OR OS OO VS VV KK KM KO KF KP BA BF BI QI QO QP QS PB PI "
            "PC PG PH PM PS PR PT PW HB HC HL HQ HE HS LU LS LE LM LH LG MA MC MD MS MT MW UI UC UA UD US UK "
            "RN RL RD RK RM RT RS RC RX RY SV SA SE SQ SL SS SG SO ST SW SB SI SD DR DT DI DQ DO DC DD WP WR "
            "WO WC WD EC CN PN WN TN WT FR QF SF QD DG EP LO LC LD DU DL CP TR ZR ZW ZZ")
            .split(u' ');
    const QStringList inFile = cards();
    EXPECT_EQ(QSet<QString>(inFile.begin(), inFile.end()), QSet<QString>(all.begin(), all.end()));
    EXPECT_EQ(inFile.size(), all.size());
    EXPECT_LE(inFile.size(), Catalogue::kCardRows);
}

TEST_F(ShippedCatalogue, DescribesEveryCardAndEveryVariableOfIt)
{
    for (const QString& card : cards()) {
        EXPECT_GE(catalogue.getcarddescription(card).size(), 20) << card.toStdString();
        for (const QString& variable : catalogue.fieldNames(card)) {
            if (variable.isEmpty())
                continue;
            EXPECT_GE(catalogue.gethecvariabledesc(card, variable, {}).size(), 20)
                << card.toStdString() << ' ' << variable.toStdString();
        }
    }
    EXPECT_NE(catalogue.getcarddescription("* "), "") << "the ID of a comment card as a file has it";
}

TEST_F(ShippedCatalogue, HasNoLineThatNoFieldLeadsTo)
{
    const QStringList known = cards();
    QSet<QString> seen;
    for (int row = 1; row < catalogue.grid3.rows() && !catalogue.grid3.textMatrix(row, 1).isEmpty(); ++row) {
        const QString variable = catalogue.grid3.textMatrix(row, 1);
        for (const QString& card : catalogue.grid3.textMatrix(row, 2).split(u' ')) {
            EXPECT_TRUE(known.contains(card) && catalogue.fieldNames(card).contains(variable))
                << card.toStdString() << ' ' << variable.toStdString();
            const QString both = card + u' ' + variable;
            EXPECT_FALSE(seen.contains(both)) << "described twice: " << both.toStdString();
            seen.insert(both);
        }
    }
    for (int row = 1; row < catalogue.Grid4.rows() && !catalogue.Grid4.textMatrix(row, 0).isEmpty(); ++row)
        EXPECT_TRUE(known.contains(RTrim(catalogue.Grid4.textMatrix(row, 0)))) << row;
}

TEST_F(ShippedCatalogue, TellsAUnitOfEveryMeasuredField)
{
    // A field that has one of these is useless without its unit; names, codes and texts have none.
    const QStringList units = {"sq mi",  "in (mm)",  "in/hr",   "ft (m)",  "cfs",      "hours",
                               "inutes", "acre",     "percent", "no unit", "No unit",  "ft/ft",
                               "deg F",  "langleys", "mph",     "sq ft",   "ft^0.5/s", "degF-day"};
    const char* measured[][2] = {
        {"BA", "TAREA"},  {"BF", "STRTQ"},  {"IT", "NMIN"},  {"LS", "STRTL"},   {"LS", "CRVNBR"}, {"LU", "CNSTL"},
        {"UD", "TLAG"},   {"UC", "R"},      {"UK", "S"},     {"RD", "WD"},      {"RM", "AMSKK"},  {"RM", "X"},
        {"SV", "RCAP"},   {"SA", "RAREA"},  {"SE", "ELEV"},  {"SL", "CAREA"},   {"SS", "COQW"},   {"SB", "TFAIL"},
        {"DT", "DSTRMX"}, {"DI", "DINFLO"}, {"PH", "PFREQ"}, {"PH", "PNHR(8)"}, {"LG", "XKSAT"},  {"MC", "COEF"},
        {"MT", "TEMPR"},  {"RX", "X(3)"},   {"JR", "RTIO"},  {"HC", "TAREA"},   {"RL", "QLOSS"},  {"WP", "PMPON"}};
    for (const auto& [card, variable] : measured) {
        const QString text = meaning(card, variable);
        EXPECT_TRUE(std::any_of(units.begin(), units.end(), [&](const QString& unit) { return text.contains(unit); }))
            << card << ' ' << variable << ": " << text.toStdString();
    }
}

TEST_F(ShippedCatalogue, IsPlainTextInTheFormatsOfItsReaders)
{
    for (const char* name : {"hec1datarecs.txt", "hec1variabledescription.txt", "Carddescriptiontext.txt"}) {
        const QByteArray bytes = shipped(name);
        EXPECT_TRUE(bytes.endsWith("\r\n") && !bytes.endsWith("\r\n\r\n")) << name;
        EXPECT_EQ(bytes.count('\n'), bytes.count("\r\n")) << name;
        EXPECT_TRUE(std::all_of(bytes.begin(), bytes.end(), [](char c) {
            return (c >= 32 && c < 127) || c == '\r' || c == '\n' || c == '\t';
        })) << name;
    }
    for (const QString& line : linesOf(shipped("hec1datarecs.txt")))
        EXPECT_EQ(line.count(u','), 10) << line.toStdString();
}

// -- On the status bar -----------------------------------------------------------------------------------------------

struct CatalogueOnScreen : ShippedCatalogue
{
    StatusPanels panels;
    Deck deck{services, panels};
    FakeEditBox box{deck};
    CatalogueHelp help{catalogue, deck, panels};
    CellEditing editing{deck};

    void SetUp() override
    {
        ShippedCatalogue::SetUp();
        editing.setFieldHelp(&help);
        putCells(deck.Grid1, 1, 1, "BA|1.5\n* |note\nXX|1\nSL|10|-1|.6\nKK|SUB");
        deck.setTextbox();
    }
};

TEST_F(CatalogueOnScreen, AnUnknownCardKeepsPanel6AndEmptiesPanel7)
{
    deck.Grid1.setCursor(1, 2);
    deck.Grid1.setCursor(3, 2);
    EXPECT_EQ(panels.text(6), " TAREA ");
    EXPECT_EQ(panels.text(7), "");
    deck.Grid1.setCursor(2, 3);
    EXPECT_EQ(panels.text(6), " INPUT CARD COMMENT ");
    EXPECT_EQ(panels.text(7), "");
    deck.Grid1.setCursor(1, 1);
    EXPECT_EQ(panels.text(6), " BA ");
}

TEST_F(CatalogueOnScreen, AMetricDeckSaysThatTheFigureIsEnglish)
{
    deck.Grid1.setCursor(1, 2);
    EXPECT_EQ(panels.toolTip(7), "");
    deck.Grid1.setTextMatrix(9, 1, "IM");
    deck.Grid1.setCursor(1, 3);
    EXPECT_EQ(panels.toolTip(7), "") << "nothing is converted here";
    deck.Grid1.setCursor(1, 2);
    EXPECT_TRUE(panels.toolTip(7).contains("English units only"));
    panels.set(7, "Run O.K.");
    EXPECT_EQ(panels.toolTip(7), "");
}

} // namespace
} // namespace kalvo
