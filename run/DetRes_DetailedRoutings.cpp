// SPDX-License-Identifier: GPL-3.0-or-later
#include "run/DetRes_DetailedRoutings.h"

#include "platform/LargeTextView.h"
#include "run/DetailedRoutings.h"
#include "run/ReportText.h"
#include "run/RoutingCommands.h"
#include "run/RunFolder.h"

#include <QAction>
#include <QListView>
#include <QMenu>
#include <QSplitter>
#include <QStringListModel>
#include <QStyle>

#include <algorithm>

namespace kalvo {

namespace {

const QString kNoData = QStringLiteral("No Data was provided for Reservoir Routings.");
constexpr int kTextWidth = 720; ///< pixels for the lines beside the list

} // namespace

DetRes::DetRes(ViewerSurroundings around)
    : RoutingWindow("DetRes", QStringLiteral("Detailed Reservoir Routings"), std::move(around))
{
    buildControls();
    buildMenus();
    resize(960, 600);
}

void DetRes::buildControls()
{
    auto* middle = new QSplitter(this);
    List1 = new QListView(middle);
    List1->setObjectName(QStringLiteral("List1"));
    List1->setFont(courierFont());
    List1->setEditTriggers(QAbstractItemView::NoEditTriggers);
    List1->setUniformItemSizes(true);
    List1->setToolTip(QStringLiteral("Station, ratio and place in the text: click to go there"));
    m_entries = new QStringListModel(this);
    List1->setModel(m_entries);
    connect(List1, &QListView::clicked, this, &DetRes::jump);
    connect(List1, &QListView::activated, this, &DetRes::jump);
    rb = new LargeTextView(middle);
    rb->setObjectName(QStringLiteral("rb"));
    rb->setFont(courierFont());
    rb->refresh();
    middle->setStretchFactor(1, 1);
    setCentralWidget(middle);
}

void DetRes::buildMenus()
{
    RoutingMenu menu;
    menu.save = [this] { saveRoutings(services(), rb->editableText().whole()); };
    menu.copy = [this] { copySelection(false); };
    menu.copyAsData = [this] { copySelection(true); };
    menu.selectAll = [this] { rb->select(0, rb->text().length()); };
    menu.find = [this] { find(false); };
    menu.findAgain = [this] { find(true); };
    menu.grid = [this] { screens().show(QStringLiteral("detres2")); };
    menu.goBack = [this] { close(); };
    auto* popup = new QMenu(this);
    popup->setObjectName(QStringLiteral("Popup"));
    popup->addActions(buildRoutingMenu(*this, menu));
    connect(rb, &LargeTextView::contextMenuAsked, popup, [popup](const QPoint& point) { popup->popup(point); });
}

void DetRes::showScreen()
{
    repaintScreen();
    if (!isVisible())
        fitList();
    if (!m_why.isEmpty())
        services().dialogs.warn(
            QStringLiteral("The file %1 cannot be read.\r\n%2").arg(QString::fromLatin1(RunFolder::kStages), m_why));
    else if (rb->text().isEmpty())
        services().dialogs.tell(kNoData);
    bringForward(*rb);
}

void DetRes::fitList()
{
    const int bar = style()->pixelMetric(QStyle::PM_ScrollBarExtent);
    const int wanted = std::max(List1->sizeHintForColumn(0), 0) + bar + 4 * List1->frameWidth();
    auto* middle = static_cast<QSplitter*>(centralWidget());
    resize(wanted + middle->handleWidth() + kTextWidth, height());
    middle->setSizes({wanted, kTextWidth});
}

void DetRes::repaintScreen()
{
    m_why.clear();
    std::optional<TextBuffer> text = TextBuffer::load(RunFolder(services().folder).stages(), &m_why);
    TextBuffer shown = text ? std::move(*text) : TextBuffer();
    const QByteArrayView whole = shown.whole();
    m_entries->setStringList(jumpEntries({whole.data(), static_cast<size_t>(whole.size())}));
    rb->setPlaceholder(kNoData);
    rb->setText(std::move(shown));
    rb->setSelStart(0);
    SetTopLine(0);
}

void DetRes::jump(const QModelIndex& entry)
{
    const auto position = jumpPosition(entry.data().toString());
    if (!position)
        return;
    rb->setSelStart(*position);
    SetTopLine(rb->text().lineFromChar(*position));
}

void DetRes::SetTopLine(qsizetype line)
{
    rb->setTopLine(line);
}

// -- Copy and find ---------------------------------------------------------------------------------------------------

void DetRes::copySelection(bool asData)
{
    if (rb->SelLength() == 0)
        tellNothingSelected();
    else if (mayCopy(services(), rb->SelLength()))
        services().clipboard.setText(asData ? columnsByTabs(rb->SelText()) : rb->SelText());
}

void DetRes::find(bool again)
{
    const std::optional<QString> sought = soughtText(again);
    if (!sought)
        return;
    const QByteArray words = sought->toLatin1();
    qsizetype hit = -1;
    if (QString::fromLatin1(words) == *sought) { // else no file of bytes holds it
        const TextNeedle needle(words, Qt::CaseInsensitive);
        hit = rb->text().find(needle, rb->SelStart() + (again ? 1 : 0));
        if (hit < 0)
            hit = rb->text().find(needle);
    }
    if (hit >= 0)
        rb->select(hit, words.size());
    else
        tellNotFound();
}

} // namespace kalvo
