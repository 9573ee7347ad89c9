// SPDX-License-Identifier: GPL-3.0-or-later
#include "run/OutlineDock.h"

#include "platform/DarkPaper.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QLineEdit>
#include <QListView>
#include <QTimerEvent>
#include <QVBoxLayout>

#include <algorithm>

namespace kalvo {

namespace {

using Kind = OutlineEntry::Kind;

constexpr qsizetype kLinesAtOnce = 4000;
constexpr qint64 kSliceMs = 12;

QColor messageColor(Kind kind)
{
    const bool dark = hasDarkPaper(QApplication::palette());
    if (kind == Kind::Error)
        return dark ? QColor(255, 128, 118) : QColor(176, 16, 16);
    return dark ? QColor(240, 190, 90) : QColor(138, 84, 0);
}

} // namespace

// -- Model -----------------------------------------------------------------------------------------------------------

OutlineModel::OutlineModel(const TextBuffer& report, QObject* parent)
    : QAbstractListModel(parent), m_report(report), m_outline(std::make_unique<ReportOutline>(report))
{
}

void OutlineModel::restart()
{
    beginResetModel();
    m_outline = std::make_unique<ReportOutline>(m_report);
    m_rows.clear();
    m_listed = 0;
    endResetModel();
}

bool OutlineModel::readOn(qint64 milliseconds)
{
    QElapsedTimer since;
    since.start();
    bool goesOn = true;
    while (goesOn && since.elapsed() < milliseconds)
        goesOn = m_outline->scan(kLinesAtOnce);
    const std::vector<quint32> more = shownFrom(m_listed);
    m_listed = m_outline->entries().size();
    if (!more.empty()) {
        beginInsertRows({}, rowCount(), rowCount() + static_cast<int>(more.size()) - 1);
        m_rows.insert(m_rows.end(), more.begin(), more.end());
        endInsertRows();
    }
    return goesOn;
}

void OutlineModel::setFilter(const QString& text)
{
    beginResetModel();
    m_filter = text;
    m_listed = m_outline->entries().size();
    m_rows = shownFrom(0);
    endResetModel();
}

bool OutlineModel::isShown(const OutlineEntry& entry) const
{
    return m_filter.isEmpty() || outlineTitle(m_report, entry).contains(m_filter, Qt::CaseInsensitive);
}

std::vector<quint32> OutlineModel::shownFrom(size_t first) const
{
    std::vector<quint32> rows;
    for (size_t i = first; i < m_outline->entries().size(); ++i)
        if (isShown(m_outline->entries()[i]))
            rows.push_back(static_cast<quint32>(i));
    return rows;
}

int OutlineModel::rowOfLine(qsizetype line) const
{
    const auto behind = std::upper_bound(m_rows.begin(), m_rows.end(), line, [this](qsizetype wanted, quint32 row) {
        return wanted < static_cast<qsizetype>(m_outline->entries()[row].line);
    });
    return static_cast<int>(behind - m_rows.begin()) - 1;
}

int OutlineModel::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : static_cast<int>(m_rows.size());
}

QVariant OutlineModel::data(const QModelIndex& index, int role) const
{
    if (!index.isValid() || index.row() >= rowCount())
        return {};
    const OutlineEntry& shown = entry(index.row());
    switch (role) {
    case Qt::DisplayRole:
        return (shown.isPart() ? QStringLiteral("     ") : QString()) + outlineTitle(m_report, shown);
    case Qt::ToolTipRole:
        return QStringLiteral("%1\nline %2").arg(outlineTitle(m_report, shown)).arg(shown.line + 1);
    case Qt::ForegroundRole:
        return shown.kind == Kind::Error || shown.kind == Kind::Warning ? messageColor(shown.kind) : QVariant();
    case Qt::FontRole: {
        QFont font;
        font.setBold(!shown.isPart() && shown.kind != Kind::Warning);
        return font;
    }
    default:
        return {};
    }
}

// -- Dock ------------------------------------------------------------------------------------------------------------

OutlineDock::OutlineDock(const TextBuffer& report, QWidget* parent)
    : QDockWidget(tr("Outline"), parent), m_model(report)
{
    setObjectName(QStringLiteral("Outline"));
    setAllowedAreas(Qt::LeftDockWidgetArea | Qt::RightDockWidgetArea);
    auto* middle = new QWidget(this);
    m_filter = new QLineEdit(middle);
    m_filter->setObjectName(QStringLiteral("OutlineFilter"));
    m_filter->setPlaceholderText(tr("Station or table"));
    m_filter->setClearButtonEnabled(true);
    m_list = new QListView(middle);
    m_list->setObjectName(QStringLiteral("OutlineList"));
    m_list->setUniformItemSizes(true);
    m_list->setEditTriggers(QAbstractItemView::NoEditTriggers);
    m_list->setTextElideMode(Qt::ElideRight);
    m_list->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    m_list->setModel(&m_model);
    auto* layout = new QVBoxLayout(middle);
    layout->setContentsMargins(4, 4, 4, 4);
    layout->setSpacing(4);
    layout->addWidget(m_filter);
    layout->addWidget(m_list, 1);
    setWidget(middle);
    connect(m_list, &QListView::clicked, this, &OutlineDock::choose);
    connect(m_list, &QListView::activated, this, &OutlineDock::choose);
    connect(m_filter, &QLineEdit::textChanged, &m_model, &OutlineModel::setFilter);
    connect(m_filter, &QLineEdit::returnPressed, this, [this] { choose(m_model.index(0)); });
}

OutlineDock::~OutlineDock()
{
    m_list->setModel(nullptr); // which goes ahead of the list
}

void OutlineDock::restart()
{
    m_model.restart();
    m_reading.start(0, this);
}

void OutlineDock::timerEvent(QTimerEvent* event)
{
    if (event->timerId() == m_reading.timerId() && !m_model.readOn(kSliceMs))
        m_reading.stop();
}

void OutlineDock::follow(qsizetype line)
{
    if (m_isChoosing || !isVisible())
        return;
    const QModelIndex index = m_model.index(m_model.rowOfLine(line));
    m_list->setCurrentIndex(index);
}

void OutlineDock::choose(const QModelIndex& index)
{
    if (!index.isValid())
        return;
    m_isChoosing = true; // near the end of a report the top line belongs to an entry further up
    m_list->setCurrentIndex(index);
    Q_EMIT lineChosen(m_model.entry(index.row()).line);
    m_isChoosing = false;
}

} // namespace kalvo
