// SPDX-License-Identifier: GPL-3.0-or-later
#include "graphics/GRAPHER_Grapher.h"

#include "deck/ScreenWindow.h"
#include "graphics/FloatingLabels.h"
#include "graphics/GraphCanvas.h"
#include "platform/CommandGuard.h"
#include "platform/FlexGridView.h"
#include "platform/Hourglass.h"

#include <QCloseEvent>
#include <QFontMetrics>
#include <QLabel>
#include <QListWidget>
#include <QScrollBar>
#include <QSlider>

#include <algorithm>
#include <optional>

namespace kalvo {

namespace {

const QString kNullGraph = QStringLiteral("Can't Display a Null Graph!");
constexpr int kMostBoxes = 10;      ///< all curves of a pass share one scale: the rest is null for the same reason
constexpr double kMostScale = 4.0;  ///< device pixels to one of the picture; beyond it nobody sees a difference
constexpr double kPenUnit = 1000.0; ///< `Slider1` counts tenths of a percent

void takeSelection(const QListWidget& list, ListModel& model)
{
    model.selected.clear();
    for (const QItemSelectionRange& range : list.selectionModel()->selection())
        for (int row = range.top(); row <= range.bottom(); ++row)
            model.selected.append(row);
    std::sort(model.selected.begin(), model.selected.end());
}

void showList(QListWidget& list, const ListModel& model)
{
    list.clear();
    list.addItems(model.items);
    for (const int row : model.selected)
        if (row >= 0 && row < list.count())
            list.item(row)->setSelected(true);
    if (list.count() > 0)
        list.setCurrentRow(model.selected.value(0), QItemSelectionModel::NoUpdate);
}

} // namespace

GRAPHER::GRAPHER(std::shared_ptr<ResultDesk> desk, GraphSources sources)
    : m_desk(std::move(desk)), m_sources(std::move(sources)), m_colors(m_sources.randomPart)
{
    setObjectName(QStringLiteral("GRAPHER"));
    setWindowTitle(QStringLiteral("Kalvo Grapher"));
    m_legend.setFixedRows(0);
    m_legend.setFixedCols(0);
    m_legend.setRows(1);
    m_legend.setCols(1);
    buildControls();
    connectHand();
    takeBackground();
    connect(&m_desk->tables(), &ResultTables::changed, this, &GRAPHER::repaintScreen);
    resize(1240, 700);
    GRAPHER::repaintScreen();
}

GRAPHER::~GRAPHER()
{
    fg->viewport()->removeEventFilter(this); // events come to it while its legend is taken down
    delete takeCentralWidget();              // ahead of the grid that the legend shows
}

void GRAPHER::showScreen()
{
    const bool first = !isVisible();
    if (first)
        fitToDisplay(*this);
    show();
    raise();
    activateWindow();
    if (!first)
        return;
    List1->setFocus();
    render();
    if (m_curves.empty() && missingChoice(m_desk->tables().GRAPHER).isEmpty() && !currentScale().isNull())
        Command2_Click();
}

void GRAPHER::repaintScreen()
{
    guarded(logGraphics(), "repaint", [this] { takeTables(); });
}

void GRAPHER::takeTables()
{
    // Tables that another screen has let go leave the picture of them alone.
    if (takeExtent() && m_extent.maxTime > 0.0 && m_extent.maxFlow > 0.0)
        clearPicture();
    showLists();
    tellExpansions();
}

void GRAPHER::closeEvent(QCloseEvent* event)
{
    event->ignore();
    const std::shared_ptr<ResultDesk> desk = m_desk; // outlives this screen
    desk->screens().unload(objectName());
    desk->tellClosed(objectName());
}

// -- What is chosen ------------------------------------------------------------------------------------------------

void GRAPHER::showLists()
{
    const GrapherLists& lists = m_desk->tables().GRAPHER;
    m_isLoadingLists = true;
    showList(*List1, lists.List1);
    showList(*List2, lists.List2);
    showList(*List3, lists.List3);
    showList(*List4, lists.List4);
    showList(*List5, lists.List5);
    m_isLoadingLists = false;
    tellChoice();
}

void GRAPHER::takeSelections()
{
    if (m_isLoadingLists)
        return;
    GrapherLists& lists = m_desk->tables().GRAPHER;
    takeSelection(*List1, lists.List1);
    takeSelection(*List2, lists.List2);
    takeSelection(*List4, lists.List4);
    takeSelection(*List5, lists.List5);
    tellChoice();
}

/// Says what is still to be done for a first curve, in the place where it will be.
void GRAPHER::tellChoice()
{
    if (!m_curves.empty()) {
        P1->setHint({});
        return;
    }
    const QString missing = missingChoice(m_desk->tables().GRAPHER);
    P1->setHint(missing.isEmpty() ? QStringLiteral("Press \"Run Graph Routine\" to draw what is selected.")
                                  : QStringLiteral("Select one or more entries in each list, then press \"Run Graph "
                                                   "Routine\".\n\nNothing is selected yet in: %1.")
                                        .arg(missing));
}

const CurveIndex& GRAPHER::index()
{
    const ResultTables& tables = m_desk->tables();
    if (m_indexedPeaks != tables.peakRow.revision()) {
        m_index = CurveIndex(tables.peakRow, tables.tableCounts);
        m_indexedPeaks = tables.peakRow.revision();
    }
    return m_index;
}

// -- Scales --------------------------------------------------------------------------------------------------------

ScrollState GRAPHER::verticalState() const
{
    return {VScroll1->minimum(), VScroll1->maximum(), VScroll1->value()};
}

ScrollState GRAPHER::horizontalState() const
{
    return {HScroll1->minimum(), HScroll1->maximum(), HScroll1->value()};
}

bool GRAPHER::takeExtent()
{
    const ResultTables& tables = m_desk->tables();
    const quint64 table = tables.hydrographTable.revision(), peaks = tables.peakRow.revision();
    if (table == m_seenTable && peaks == m_seenPeaks)
        return false;
    m_seenTable = table;
    m_seenPeaks = peaks;
    m_extent = graphExtent(tables.peakRow, tables.hydrographTable);
    return true;
}

GraphScale GRAPHER::currentScale()
{
    takeExtent();
    return graphScale(m_extent, verticalState(), horizontalState(), m_picture.width(), m_picture.height(),
                      HScroll2->value());
}

void GRAPHER::tellExpansions()
{
    m_verticalText->setText(verticalExpansionText(verticalState()));
    Text13->setText(horizontalExpansionText(horizontalState()));
    const QSignalBlocker quiet(HScroll2);
    HScroll2->setMaximum(largestShift(horizontalState(), m_picture.width()));
}

double GRAPHER::penTwips() const
{
    return Slider1->value() / kPenUnit * m_picture.height();
}

// -- Drawing -------------------------------------------------------------------------------------------------------

void GRAPHER::Command2_Click()
{
    guarded(logGraphics(), "Command2", [this] {
        takeSelections();
        walk(chosenCurves(m_desk->tables().GRAPHER, index()));
    });
}

void GRAPHER::walk(const std::vector<CurveId>& curves)
{
    int boxes = 0, absent = 0;
    {
        std::optional<Hourglass> wait;
        if (curves.size() > kManyCurves)
            wait.emplace();
        const FlexGrid::Bulk bulk(m_legend);
        for (const CurveId& curve : curves) {
            if (curve.column == 0) {
                ++absent;
                continue;
            }
            const size_t before = m_curves.size();
            showgraph(curve.column, curve.station, curve.ratio, curve.plan, curve.jd);
            if (m_curves.size() == before && ++boxes == kMostBoxes)
                break;
        }
    }
    QString news = m_curves.size() == 1 ? QStringLiteral("1 curve") : QStringLiteral("%1 curves").arg(m_curves.size());
    if (absent > 0)
        news += QStringLiteral("; chosen but not in this run: %1").arg(absent);
    m_news->setText(news);
    tellChoice();
}

void GRAPHER::showgraph(int column, int station, int ratio, int plan, int jd)
{
    const GraphScale scale = currentScale();
    tellExpansions();
    if (scale.isNull()) {
        m_desk->services().dialogs.tell(kNullGraph);
        return;
    }
    m_scale = scale;
    m_renderedSize = {m_picture.width(), m_picture.height()};
    const auto kept = m_keptColors.constFind(column);
    const Rgb colour = kept == m_keptColors.constEnd() ? m_colors.next() : *kept;
    if (kept != m_keptColors.constEnd()) {
        m_colors.taken(colour);
        m_keptColors.erase(kept); // a second draw of the same curve is another one
    }
    colorgrid(colour, column, station, ratio, plan, jd);
    m_curves.push_back({{column, station, ratio, plan, jd}, colour});
    drawCurve(m_curves.back());
    P1->update();
}

void GRAPHER::drawCurve(const DrawnCurve& curve)
{
    placeaxes({0.0, m_scale.originY()}, m_scale.xScale, m_scale.yScale, m_scale.timeRange, m_scale.flowRange);
    m_picture.drawCurve(m_desk->tables().hydrographTable, curve.id.column, m_scale, curve.color, penTwips());
}

void GRAPHER::colorgrid(Rgb colour, int column, int station, int ratio, int plan, int jd)
{
    const FlexGrid::Bulk bulk(m_legend);
    if (!m_legend.textMatrix(m_legend.rows() - 1, 0).isEmpty())
        m_legend.setRows(m_legend.rows() + 1);
    const int row = m_legend.rows() - 1;
    const ResultTables& tables = m_desk->tables();
    const QString text = legendText(tables.GRAPHER, tables.peakRow, {column, station, ratio, plan, jd});
    m_legend.setTextMatrix(row, 0, text);
    CellFormat look;
    look.backColor = colour;
    look.foreColor = readableOn(colour);
    m_legend.setCellFormat(row, 0, look);
    const int needed = (fg->fontMetrics().horizontalAdvance(text) + 12) * kTwipsPerPixel;
    if (needed > m_legend.colWidth(0))
        m_legend.setColWidth(0, needed);
    m_legend.setCursor(row, 0);
}

void GRAPHER::placeaxes(const QPointF& origin, double xScale, double yScale, double timeRange, double flowRange)
{
    m_picture.drawAxes({origin, xScale, yScale, timeRange, flowRange, m_scale.shift});
}

void GRAPHER::clearPicture()
{
    m_curves.clear();
    m_marks.clear();
    m_colors.forget();
    {
        const FlexGrid::Bulk bulk(m_legend);
        m_legend.clear();
        m_legend.setRows(1);
        m_legend.setColWidth(0, fg->fontMetrics().horizontalAdvance(QStringLiteral("WWWWWWWWWWWWWWWWWW")) *
                                    kTwipsPerPixel);
    }
    m_news->clear();
    render();
    tellChoice();
}

/// After a scroll bar: the choice once more, on empty paper. Where nothing is chosen any more, what was drawn.
void GRAPHER::redraw()
{
    guarded(logGraphics(), "redraw", [this] {
        tellExpansions();
        takeSelections();
        std::vector<CurveId> curves = chosenCurves(m_desk->tables().GRAPHER, index());
        if (curves.empty())
            for (const DrawnCurve& drawn : m_curves)
                curves.push_back(drawn.id);
        if (curves.empty())
            return;
        if (currentScale().isNull()) {
            // What is there stays. A box in the midst of a drag would take the bar's mouse away.
            if (!VScroll1->isSliderDown() && !HScroll1->isSliderDown())
                walk(curves);
            return;
        }
        const std::vector<DrawnCurve> before = m_curves;
        clearPicture();
        for (const DrawnCurve& drawn : before)
            m_keptColors.insert(drawn.id.column, drawn.color);
        walk(curves);
    });
    m_keptColors.clear();
}

/// The same curves and marks on paper of the size that the window now has.
void GRAPHER::render()
{
    guarded(logGraphics(), "render", [this] { renderAgain(); });
}

void GRAPHER::renderAgain()
{
    const double zoom = Slider2->value() / 100.0;
    const QSizeF base = m_window->maximumViewportSize();
    const QSizeF before = P1->size();
    P1->setSizes(base, zoom);
    moveFloating(before);
    if (!m_curves.empty() && currentScale().isNull())
        return; // the tables are gone: what was drawn of them is shown as it is
    m_picture.setFlowUnit(m_desk->flowUnit());
    m_picture.reset(base, std::min(kMostScale, devicePixelRatioF() * zoom));
    tellExpansions();
    if (m_curves.empty())
        return;
    m_scale = currentScale();
    for (const DrawnCurve& curve : m_curves)
        drawCurve(curve);
    const QSizeF size(m_picture.width(), m_picture.height());
    const std::vector<Mark> marks = std::exchange(m_marks, {});
    for (const Mark& mark : marks) {
        Mark moved = mark;
        if (!m_renderedSize.isEmpty())
            moved.at = {mark.at.x() * size.width() / m_renderedSize.width(),
                        mark.at.y() * size.height() / m_renderedSize.height()};
        addMark(moved);
    }
    m_renderedSize = size;
}

} // namespace kalvo
