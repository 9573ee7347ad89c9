// SPDX-License-Identifier: GPL-3.0-or-later
#include "run/Oform_OutputList.h"

#include <QAction>
#include <QFileInfo>
#include <QFontMetrics>
#include <QListView>
#include <QMenu>
#include <QMenuBar>
#include <QStatusBar>

#include <algorithm>

namespace kalvo {

namespace {

constexpr int kExtent = 800; ///< pixels across
constexpr int kZoomedExtent = 1200;
/// The item that a new report begins with, from 0: not the one that "Top" leads to.
constexpr int kFirstCurrent = 1;

const QString kFileMenu = QStringLiteral("&File");
const QString kEditMenu = QStringLiteral("&Edit");
const QString kViewMenu = QStringLiteral("&View");

} // namespace

// -- Model -----------------------------------------------------------------------------------------------------------

void ReportLines::setText(TextBuffer text)
{
    beginResetModel();
    m_text = std::move(text);
    endResetModel();
}

void ReportLines::setExtent(int pixels, const QFont& font)
{
    const QFontMetrics metrics(font);
    const int widest = static_cast<int>(std::min<qsizetype>(m_text.longestLine() + 2, 100'000));
    Q_EMIT layoutAboutToBeChanged();
    m_itemSize = {std::max(pixels, widest * metrics.horizontalAdvance(u'0')), metrics.height()};
    Q_EMIT layoutChanged();
}

int ReportLines::rowCount(const QModelIndex& parent) const
{
    if (parent.isValid())
        return 0;
    // Behind the last line end stands no line of the file.
    const qsizetype lines = m_text.lineCount();
    return static_cast<int>(m_text.lineLength(lines - 1) == 0 ? lines - 1 : lines);
}

QVariant ReportLines::data(const QModelIndex& index, int role) const
{
    if (role == Qt::DisplayRole)
        return QString::fromLatin1(m_text.line(index.row()));
    if (role == Qt::SizeHintRole)
        return m_itemSize;
    return {};
}

// -- Screen ----------------------------------------------------------------------------------------------------------

Oform::Oform(const ViewerSurroundings& around) : ReportViewer("Oform", QStringLiteral(" HEC-1 OUTPUT"), around)
{
    List1 = new QListView(this);
    List1->setObjectName(QStringLiteral("List1"));
    List1->setSelectionMode(QAbstractItemView::ExtendedSelection);
    List1->setEditTriggers(QAbstractItemView::NoEditTriggers);
    List1->setUniformItemSizes(true);
    List1->setHorizontalScrollMode(QAbstractItemView::ScrollPerPixel);
    List1->setTextElideMode(Qt::ElideNone);
    List1->setModel(&m_lines);
    setCentralWidget(List1);
    hiddenButton("Command2", [this] { jump(true); });
    hiddenButton("Command3", [this] { jump(false); });
    buildMenus();
    buildPopup();
    statusBar()->setSizeGripEnabled(false);
    zoom(false);
    resize(1100, 680);
}

Oform::~Oform()
{
    List1->setModel(nullptr); // which goes ahead of the list
}

void Oform::buildMenus()
{
    addViewerEntry(*this, kFileMenu, "savehec1out", QStringLiteral("Save Hec-1 Output"), [this] {
        savehec1out();
    })->setShortcut(QKeySequence::Save);
    // Printing is still to come.
    addViewerEntry(*this, kFileMenu, "printhec1out", QStringLiteral("Print Hec-1 Output"), [] {})->setEnabled(false);
    addViewerEntry(*this, kFileMenu, "mnu_printSetup", QStringLiteral("Print Setup"), [] {})->setEnabled(false);
    addViewerEntry(*this, kFileMenu, "mnu_leftmargin", QStringLiteral("Printer Left Margin"), [] {})->setEnabled(false);
    addViewerEntry(*this, kEditMenu, "editcopy", QStringLiteral("&Copy"), [this] {
        editcopy();
    })->setShortcut(QKeySequence::Copy);
    addViewerEntry(*this, kEditMenu, "mnu_SelectAll", QStringLiteral("Select &All"), [this] {
        List1->selectAll();
    })->setShortcut(QKeySequence::SelectAll);
    addViewerEntry(*this, kEditMenu, "mnu_SelectNone", QStringLiteral("Select &None"),
                   [this] { List1->clearSelection(); });
    addViewerEntry(*this, kViewMenu, "zoomin", QStringLiteral("Zoom &In"), [this] {
        zoom(true);
    })->setShortcut(QKeySequence::ZoomIn);
    addViewerEntry(*this, kViewMenu, "zoomout", QStringLiteral("Zoom &Out"), [this] {
        zoom(false);
    })->setShortcut(QKeySequence::ZoomOut);
}

void Oform::buildPopup()
{
    m_popup = new QMenu(this);
    m_popup->setObjectName(QStringLiteral("Popup"));
    m_popTop = m_popup->addAction(QStringLiteral("&Top"), this, [this] { jump(false); });
    m_popTop->setObjectName(QStringLiteral("Pop_top"));
    m_popBottom = m_popup->addAction(QStringLiteral("&Bottom"), this, [this] { jump(true); });
    m_popBottom->setObjectName(QStringLiteral("pop_Bot"));
    m_popup->addActions(
        {findChild<QAction*>(QStringLiteral("zoomin")), findChild<QAction*>(QStringLiteral("zoomout"))});
    m_popup->addAction(QStringLiteral("&Return"), this, [this] { close(); })
        ->setObjectName(QStringLiteral("pop_return"));
    List1->setContextMenuPolicy(Qt::CustomContextMenu);
    connect(List1, &QWidget::customContextMenuRequested, m_popup,
            [this](const QPoint& point) { m_popup->popup(List1->viewport()->mapToGlobal(point)); });
}

QWidget& Oform::reportControl()
{
    return *List1;
}

void Oform::loadReport()
{
    const int current = List1->currentIndex().row();
    m_lines.setText(report().take());
    zoom(findChild<QAction*>(QStringLiteral("zoomout"))->isEnabled());
    const bool isThere = current >= 0 && current < m_lines.rowCount();
    List1->setCurrentIndex(m_lines.index(isThere ? current : std::min(kFirstCurrent, m_lines.rowCount() - 1)));
}

void Oform::showLines()
{
    statusBar()->showMessage(report().why().isEmpty() ? tr("%1 lines").arg(m_lines.rowCount())
                                                      : report().why().simplified());
}

void Oform::savehec1out()
{
    FileDialog dialog;
    dialog.title = QStringLiteral("Save As HEC-1 OUTPUT");
    dialog.filter = QStringLiteral("OUT Files(*.OUT)|*.OUT|Text Files (*.txt)|*.txt");
    dialog.defaultExtension = QStringLiteral(".out");
    dialog.initialName = QFileInfo(deckName()).completeBaseName();
    dialog.overwritePrompt = true;
    saveViewerText(services(), m_lines.text().whole(), dialog);
}

void Oform::editcopy()
{
    // By ranges, because a report may have a million selected lines.
    QList<QItemSelectionRange> ranges = List1->selectionModel()->selection();
    std::sort(ranges.begin(), ranges.end(), [](const auto& a, const auto& b) { return a.top() < b.top(); });
    TextBuffer& text = m_lines.text();
    if (ranges.size() == 1) {
        const qsizetype start = text.lineStart(ranges.front().top());
        const qsizetype end = text.lineStart(ranges.front().bottom()) + text.lineLength(ranges.front().bottom());
        copyReport(services(), text, start, end - start);
        return;
    }
    QByteArray lines;
    for (const QItemSelectionRange& range : ranges)
        for (int row = range.top(); row <= range.bottom(); ++row)
            lines += text.line(row) + "\r\n";
    const TextBuffer picked(lines.chopped(std::min<qsizetype>(2, lines.size())));
    copyReport(services(), picked, 0, picked.length());
}

void Oform::zoom(bool in)
{
    List1->setFont(reportFont(in));
    m_lines.setExtent(in ? kZoomedExtent : kExtent, List1->font());
    findChild<QAction*>(QStringLiteral("zoomin"))->setEnabled(!in);
    findChild<QAction*>(QStringLiteral("zoomout"))->setEnabled(in);
}

void Oform::jump(bool toLast)
{
    List1->setCurrentIndex(m_lines.index(toLast ? m_lines.rowCount() - 1 : 0));
    List1->scrollTo(List1->currentIndex());
    m_popTop->setEnabled(toLast);
    m_popBottom->setEnabled(!toLast);
}

} // namespace kalvo
