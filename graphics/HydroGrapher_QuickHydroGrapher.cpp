// SPDX-License-Identifier: GPL-3.0-or-later
#include "graphics/HydroGrapher_QuickHydroGrapher.h"

#include "graphics/QuickChart.h"
#include "graphics/StationRain.h"
#include "platform/Chart.h"
#include "platform/ChartOptionsDialog.h"
#include "platform/CommandGuard.h"
#include "run/ResultTables.h"

#include <QDir>
#include <QFrame>
#include <QMenu>
#include <QMenuBar>
#include <QStatusBar>
#include <QVBoxLayout>

namespace kalvo {
namespace {

/// A metafile is for printing: as many pixels as a page of 300 dots per inch wants.
constexpr double kScaleForPrint = 3.0;

} // namespace

HydroGrapher::HydroGrapher(Services& services, QWidget* parent) : QMainWindow(parent), m_services(services)
{
    setObjectName(QStringLiteral("HydroGrapher"));
    setWindowTitle(QStringLiteral(" Quick HydroGrapher for Kalvo"));
    setAttribute(Qt::WA_DeleteOnClose);
    buildChart();
    buildMenus();
    resize(960, 600);
    MSChart1->setFocus();
}

void HydroGrapher::buildChart()
{
    Picture1 = new QFrame(this);
    Picture1->setObjectName(QStringLiteral("Picture1"));
    MSChart1 = new Chart(Picture1);
    MSChart1->setObjectName(QStringLiteral("MSChart1"));
    MSChart1->setTitleEditorName(QStringLiteral("Text1"));
    MSChart1->setTitle(QStringLiteral("Hydrographs"));
    MSChart1->setAxisTitles(QStringLiteral("Time"), QString(), QStringLiteral("Flow"), QString());
    auto* layout = new QVBoxLayout(Picture1);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(MSChart1);
    setCentralWidget(Picture1);
    connect(MSChart1, &Chart::pointClicked, this, &HydroGrapher::showTip);
    connect(MSChart1, &Chart::seriesDoubleClicked, this, [this](int series) { MSChart1->setExcluded(series, true); });
}

void HydroGrapher::addEntry(QMenu& menu, const char* name, const QString& caption, const QKeySequence& key,
                            void (HydroGrapher::*body)())
{
    QAction* action = menu.addAction(caption);
    action->setObjectName(QString::fromLatin1(name));
    action->setMenuRole(QAction::NoRole);
    action->setShortcut(key);
    connect(action, &QAction::triggered, this,
            [this, name, body] { guarded(logGraphics(), name, [this, body] { (this->*body)(); }); });
}

void HydroGrapher::buildMenus()
{
    using H = HydroGrapher;
    QMenu& file = *menuBar()->addMenu(QStringLiteral("&File"));
    addEntry(file, "mnu_export", QStringLiteral("&Export Hydrograph..."), QKeySequence::Save, &H::mnu_export);
    addEntry(file, "mnu_exportAs", QStringLiteral("Export as &PNG, SVG or PDF..."), QKeySequence(u"Ctrl+Shift+S"_qs),
             &H::mnu_exportAs);
    file.addSeparator();
    addEntry(file, "mnu_quit", QStringLiteral("&Quit"), QKeySequence::Close, &H::mnu_quit);
    QMenu& edit = *menuBar()->addMenu(QStringLiteral("&Edit"));
    addEntry(edit, "mnu_EditTitle", QStringLiteral("Edit &Title"), QKeySequence(Qt::Key_F2), &H::mnu_EditTitle);
    addEntry(edit, "mnu_Copypicture", QStringLiteral("&Copy Picture"), QKeySequence::Copy, &H::mnu_Copypicture);
    addEntry(edit, "mnu_copyMetaFile", QStringLiteral("Copy &Metafile"), {}, &H::mnu_copyMetaFile);
    edit.addSeparator();
    addEntry(edit, "mnu_DeleteSelectedHydrograph", QStringLiteral("&Delete Selected Hydrograph"),
             QKeySequence(Qt::Key_Delete), &H::mnu_DeleteSelectedHydrograph);
    addEntry(edit, "mnu_Exclude", QStringLiteral("E&xclude Selected Hydrograph"), {}, &H::mnu_Exclude);
    m_bringBack = edit.addMenu(QStringLiteral("&Bring Back"));
    m_bringBack->setObjectName(QStringLiteral("mnu_bringBack"));
    QMenu& view = *menuBar()->addMenu(QStringLiteral("&View"));
    addEntry(view, "mnu_ToggleLegend", QStringLiteral("Toggle &Legend"), QKeySequence(Qt::Key_F4),
             &H::mnu_ToggleLegend);
    addEntry(view, "mnu_rain", QStringLiteral("&Rain above the Flow"), QKeySequence(Qt::Key_F6), &H::mnu_rain);
    addEntry(view, "mnu_options", QStringLiteral("&Options..."), {}, &H::mnu_options);
    QMenu& help = *menuBar()->addMenu(QStringLiteral("&Help"));
    addEntry(help, "mnu_help", QStringLiteral("&Help"), QKeySequence::HelpContents, &H::mnu_help);
    connect(MSChart1, &Chart::excludedChanged, this, &HydroGrapher::fillBringBack);
    fillBringBack();

    MSChart1->setContextMenuPolicy(Qt::CustomContextMenu);
    connect(MSChart1, &QWidget::customContextMenuRequested, &edit,
            [this, &edit](const QPoint& at) { edit.popup(MSChart1->mapToGlobal(at)); });
}

void HydroGrapher::drawSelection(const FlexGrid& table, const QString& flowUnit)
{
    // Times that were selected with the flows are curves as well.
    const bool isFlowsAlone = table.selection().left >= ResultTables::kFirstRecord;
    MSChart1->setReadOutUnits(QStringLiteral("hours"), isFlowsAlone ? flowUnit : QString());
    const auto all = quickChartOf(table);
    if (all)
        MSChart1->setSeries(*all);
    else
        m_services.dialogs.tell(QStringLiteral("First select A Column or Block of Data!"));
    fillBringBack();
}

// -- Curves ----------------------------------------------------------------------------------------------------------

void HydroGrapher::showTip(int series, int index)
{
    MSChart1->showPointTip({series, index}, quickTip(MSChart1->series(), {series, index}));
}

void HydroGrapher::excludeSelected()
{
    if (MSChart1->selectedSeries() < 0)
        statusBar()->showMessage(QStringLiteral("Click on a hydrograph first."));
    MSChart1->setExcluded(MSChart1->selectedSeries(), true);
}

void HydroGrapher::fillBringBack()
{
    m_bringBack->clear();
    const QVector<ChartSeries>& all = MSChart1->series();
    for (int s = 0; s < all.size(); ++s)
        if (all[s].excluded) {
            QString caption = all[s].label;
            QAction* entry = m_bringBack->addAction(caption.replace(u'&', QLatin1String("&&")));
            connect(
                entry, &QAction::triggered, this, [this, s] { MSChart1->setExcluded(s, false); },
                Qt::QueuedConnection); // the menu is filled anew by it
        }
    m_bringBack->setEnabled(!m_bringBack->isEmpty());
    if (m_bringBack->isEmpty())
        return;
    m_bringBack->addSeparator();
    QAction* every = m_bringBack->addAction(QStringLiteral("&All"));
    every->setObjectName(QStringLiteral("mnu_bringAllBack"));
    connect(every, &QAction::triggered, MSChart1, &Chart::bringAllBack, Qt::QueuedConnection);
}

int HydroGrapher::seriesMeant() const
{
    if (MSChart1->selectedSeries() >= 0)
        return MSChart1->selectedSeries();
    const QVector<ChartSeries>& all = MSChart1->series();
    for (int s = 0; s < all.size(); ++s)
        if (!all[s].excluded)
            return s;
    return -1;
}

void HydroGrapher::mnu_rain()
{
    if (!MSChart1->rain().times.isEmpty()) {
        MSChart1->setRain({}, {}, {});
        return;
    }
    const int series = seriesMeant();
    if (series < 0)
        return;
    const QString label = MSChart1->series().at(series).label;
    const ChartRain rain = stationRain(m_services.folder.file(QStringLiteral("checky.out")), label);
    if (rain.times.isEmpty())
        m_services.dialogs.tell(QStringLiteral("The report of the last run prints no rain for %1.\r\nHEC-1 prints it "
                                               "for a subbasin whose KO or IO card asks for tables of hydrographs "
                                               "(0, 1 or 2 in field 1).")
                                    .arg(label));
    else
        MSChart1->setRain(rain.times, rain.depths, rain.unit, rain.label);
}

// -- Title, legend, options ------------------------------------------------------------------------------------------

void HydroGrapher::mnu_EditTitle()
{
    MSChart1->editTitle();
}

void HydroGrapher::mnu_ToggleLegend()
{
    MSChart1->setLegendShown(!MSChart1->isLegendShown());
}

void HydroGrapher::mnu_options()
{
    openChartOptions(*MSChart1, this);
}

// -- Pictures --------------------------------------------------------------------------------------------------------

void HydroGrapher::copyPicture(double scale)
{
    QString why;
    const QByteArray png = MSChart1->picture(PictureKind::Png, why, scale);
    if (png.isEmpty())
        m_services.dialogs.warn(why);
    else
        m_services.clipboard.setPicture(png);
}

void HydroGrapher::mnu_Copypicture()
{
    copyPicture(devicePixelRatioF());
}

void HydroGrapher::mnu_copyMetaFile()
{
    copyPicture(kScaleForPrint);
}

void HydroGrapher::savePicture(const QString& path)
{
    QString why;
    const PictureKind kind = pictureKindOf(path).value_or(PictureKind::Bmp);
    const double scale = kind == PictureKind::Png ? 2.0 : 1.0;
    const QByteArray bytes = MSChart1->picture(kind, why, scale);
    if (bytes.isEmpty() || !writeFile(path, bytes, &why))
        m_services.dialogs.warn(QStringLiteral("The picture could not be saved as %1.\r\n%2").arg(path, why));
    else
        statusBar()->showMessage(QStringLiteral("Saved as %1").arg(QDir::toNativeSeparators(path)));
}

void HydroGrapher::mnu_export()
{
    const FileDialog dialog{.title = QStringLiteral("Kalvo Export Hydrograph"),
                            .filter = QStringLiteral("BMP Files(*.bmp)|*.bmp|"),
                            .defaultExtension = QStringLiteral("bmp"),
                            .overwritePrompt = true};
    const QString path = m_services.dialogs.saveFile(dialog).value_or(QString());
    // The picture is on the clipboard afterwards, as users of this command are used to, also when no name was given.
    copyPicture(1.0);
    savePicture(path.isEmpty() ? QDir(m_services.folder.path()).filePath(QStringLiteral("testSave.bmp")) : path);
}

void HydroGrapher::mnu_exportAs()
{
    const FileDialog dialog{.title = QStringLiteral("Kalvo Export Hydrograph"),
                            .filter = QStringLiteral("PNG Files(*.png)|*.png|SVG Files(*.svg)|*.svg|PDF Files(*.pdf)|"
                                                     "*.pdf|BMP Files(*.bmp)|*.bmp"),
                            .defaultExtension = QStringLiteral("png"),
                            .overwritePrompt = true};
    const auto path = m_services.dialogs.saveFile(dialog);
    if (!path || path->isEmpty())
        return;
    if (pictureKindOf(*path))
        savePicture(*path);
    else
        m_services.dialogs.warn(QStringLiteral("'%1' ends in neither .png, .svg, .pdf nor .bmp.").arg(*path));
}

void HydroGrapher::mnu_help()
{
    m_services.dialogs.tell(
        QStringLiteral("Quick HydroGrapher for Hydrodata - Select Groups of Cells in Hydrodata to Graph.\r\n"
                       "Select a Graph then a Data point and the Value can be noted at the Cursor.\r\n"
                       "Double Click a graph to Delete it."));
}

void HydroGrapher::mnu_quit()
{
    close();
}

} // namespace kalvo
