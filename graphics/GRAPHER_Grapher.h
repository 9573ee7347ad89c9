// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "graphics/CurveChoice.h"
#include "graphics/CurveColors.h"
#include "graphics/GraphPicture.h"
#include "graphics/GraphScale.h"
#include "platform/Screens.h"
#include "results/ResultDesk.h"

#include <QHash>
#include <QMainWindow>
#include <QPointer>

#include <functional>
#include <memory>
#include <vector>

class QBoxLayout;
class QCheckBox;
class QLabel;
class QLineEdit;
class QListWidget;
class QMenu;
class QPushButton;
class QScrollBar;
class QSlider;
class QTimer;

namespace kalvo {

class FlexGridView;
class FloatingRow;
class FloatingText;
class GraphCanvas;
class GraphWindow;

/// What the Grapher takes from elsewhere.
struct GraphSources
{
    std::function<Rgb()> background = {};   ///< of the form, asked at each load; Rgb::None: the desktop's own
    CurveColors::Generator randomPart = {}; ///< 0 to 255; empty: random numbers
};

/// The Grapher: hydrographs of the last run that was read, drawn by hand on a picture. Pressing "Run Graph Routine"
/// adds the chosen curves; moving a scroll bar draws the choice anew on empty paper, in the colours that its curves
/// had. A window of another size and the zoom show the same picture again, with all that was written on it.
class GRAPHER : public QMainWindow, public Screen
{
    Q_OBJECT

public:
    GRAPHER(std::shared_ptr<ResultDesk> desk, GraphSources sources);
    ~GRAPHER() override;

    void showScreen() override;
    void hideScreen() override { hide(); }
    bool isScreenVisible() const override { return isVisible(); }
    /// Takes over lists and tables as they are now; what was drawn of other tables goes.
    void repaintScreen() override;

    /// "Run Graph Routine": draws every combination of the selected entries on top of what is there.
    void Command2_Click();
    /// Draws one curve with its legend row and the axes. A null range is told instead. @param column of the
    /// hydrograph table, from 2; the other indexes from 0.
    void showgraph(int column, int station, int ratio, int plan, int jd);
    /// Adds the curve's legend row to `fg`.
    void colorgrid(Rgb colour, int column, int station, int ratio, int plan, int jd);
    /// Draws axes, ticks and labels. Scales in twips a minute and a unit of flow, ranges in minutes and flow.
    void placeaxes(const QPointF& origin, double xScale, double yScale, double timeRange, double flowRange);

    /// Takes picture and legend away.
    void clearPicture();
    /// True while a label lies on the picture that has not been written on it.
    bool hasFloatingLabels() const;
    const GraphPicture& picture() const { return m_picture; }
    const GraphScale& scale() const { return m_scale; }

protected:
    void closeEvent(QCloseEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    static constexpr size_t kManyCurves = 60; ///< beyond it drawing takes its time

    struct DrawnCurve
    {
        CurveId id;
        Rgb color = Rgb::None;
    };
    /// What the user put on the picture by hand: a text, or with an empty one a wiped box.
    struct Mark
    {
        QPointF at; ///< twips
        QString text = {};
        Rgb color = Rgb::None;
    };

    // Controls, in GRAPHER_Controls.cpp
    void buildControls();
    QWidget* buildChoices();
    QWidget* buildPicture();
    QWidget* buildTools();
    QWidget* buildLegend();
    QListWidget* addList(QBoxLayout& column, const char* name, const QString& caption, int stretch);
    QScrollBar* scrollBar(const char* name, Qt::Orientation orientation, const QString& tip);
    void addActions();
    void takeBackground();

    // Drawing
    ScrollState verticalState() const;
    ScrollState horizontalState() const;
    /// True when the tables are others than those of the last call.
    bool takeExtent();
    GraphScale currentScale();
    void tellExpansions();
    const CurveIndex& index();
    void takeTables();
    void takeSelections();
    void showLists();
    void walk(const std::vector<CurveId>& curves);
    void redraw();
    void render();
    void renderAgain();
    void drawCurve(const DrawnCurve& curve);
    double penTwips() const;
    void tellChoice();

    // By hand, in GRAPHER_ByHand.cpp
    void connectHand();
    void pointAt(const QPointF& pixel, bool isPressed);
    void press(const QPointF& pixel);
    void release();
    void wipeTo(const QPointF& twips);
    void placeText10(const QPointF& pixel);
    void writeText10();
    /// Null for an empty row.
    FloatingRow* floatRow(int row, const QPoint& onCanvas);
    void stick(FloatingRow& row);
    void moveFloating(const QSizeF& sizeBefore);
    void addMark(const Mark& mark);
    bool dragRow(QEvent* event);
    void copyPicture();
    void savePicture();

    const std::shared_ptr<ResultDesk> m_desk;
    const GraphSources m_sources;
    GraphPicture m_picture;
    GraphScale m_scale;
    GraphExtent m_extent;
    CurveIndex m_index;
    CurveColors m_colors;
    std::vector<DrawnCurve> m_curves;
    std::vector<Mark> m_marks;
    QHash<int, Rgb> m_keptColors; ///< by column, during a redraw
    quint64 m_seenTable = ~quint64(0), m_seenPeaks = ~quint64(0), m_indexedPeaks = ~quint64(0);
    QSizeF m_renderedSize; ///< of the picture, twips
    QPointF m_wiped;       ///< where the eraser stands while the button is down
    QPointer<FloatingRow> m_draggedRow;
    bool m_isWiping = false;
    bool m_isLoadingLists = false;

    FlexGrid m_legend;
    GraphCanvas* P1 = nullptr;
    GraphWindow* m_window = nullptr;
    FlexGridView* fg = nullptr;
    FloatingText* Text10 = nullptr;
    QListWidget *List1 = nullptr, *List2 = nullptr, *List3 = nullptr, *List4 = nullptr, *List5 = nullptr;
    QScrollBar *VScroll1 = nullptr, *HScroll1 = nullptr, *HScroll2 = nullptr;
    QSlider *Slider1 = nullptr, *Slider2 = nullptr;
    QCheckBox* Check1 = nullptr;
    QLineEdit *Text8 = nullptr, *Text9 = nullptr;
    QLabel *Text13 = nullptr, *m_verticalText = nullptr, *m_news = nullptr;
    QPushButton* Command2 = nullptr;
    QMenu* m_popup = nullptr;
    QTimer* m_renderLater = nullptr;
};

} // namespace kalvo
