// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/TextFindBar.h"

#include "platform/LargeTextView.h"

#include <QCheckBox>
#include <QElapsedTimer>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QToolButton>

#include <algorithm>

namespace kalvo {

namespace {

constexpr qint64 kSliceMs = 12; ///< of counting, between which the screen stays live
constexpr qsizetype kLongestTaken = 200;

QToolButton* toolButton(const char* name, const QString& caption, const QString& tip, QWidget* parent)
{
    auto* button = new QToolButton(parent);
    button->setObjectName(QString::fromLatin1(name));
    button->setText(caption);
    button->setToolTip(tip);
    button->setAutoRaise(true);
    return button;
}

} // namespace

TextFindBar::TextFindBar(LargeTextView& view, QWidget* parent) : QWidget(parent), m_view(view)
{
    setObjectName(QStringLiteral("FindBar"));
    build();
    hide();
}

TextFindBar::~TextFindBar() = default;

void TextFindBar::build()
{
    m_text = new QLineEdit(this);
    m_text->setObjectName(QStringLiteral("FindText"));
    m_text->setPlaceholderText(tr("Find"));
    m_text->setClearButtonEnabled(true);
    m_text->setMaximumWidth(320);
    m_matchCase = new QCheckBox(tr("Match &case"), this);
    m_matchCase->setObjectName(QStringLiteral("FindMatchCase"));
    m_told = new QLabel(this);
    m_told->setObjectName(QStringLiteral("FindCount"));
    auto* before = toolButton("FindPrevious", QStringLiteral("\u25B2"), tr("The match before (Shift+Enter)"), this);
    auto* after = toolButton("FindNext", QStringLiteral("\u25BC"), tr("The next match (Enter)"), this);
    auto* shut = toolButton("FindClose", QStringLiteral("\u2715"), tr("Close (Esc)"), this);

    auto* row = new QHBoxLayout(this);
    row->setContentsMargins(6, 3, 6, 3);
    row->addWidget(m_text, 1);
    row->addWidget(before);
    row->addWidget(after);
    row->addWidget(m_matchCase);
    row->addWidget(m_told);
    row->addStretch(1);
    row->addWidget(shut);
    connect(m_text, &QLineEdit::textChanged, this, &TextFindBar::typed);
    connect(m_matchCase, &QCheckBox::toggled, this, &TextFindBar::typed);
    connect(before, &QToolButton::clicked, this, &TextFindBar::findPrevious);
    connect(after, &QToolButton::clicked, this, &TextFindBar::findNext);
    connect(shut, &QToolButton::clicked, this, &TextFindBar::hide);
}

void TextFindBar::open()
{
    m_origin = m_view.SelStart();
    const bool isShort = m_view.SelLength() > 0 && m_view.SelLength() <= kLongestTaken;
    const QString selected = isShort ? m_view.SelText() : QString();
    show();
    if (!selected.isEmpty() && !selected.contains(u'\n') && !selected.contains(u'\r'))
        m_text->setText(selected);
    typed();
    m_text->setFocus();
    m_text->selectAll();
}

/// Empty for a text that no Latin-1 text can hold.
TextNeedle TextFindBar::needle() const
{
    const QString typed = m_text->text();
    if (std::any_of(typed.begin(), typed.end(), [](QChar c) { return c.unicode() > 0xFF; }))
        return TextNeedle(QByteArrayView());
    return TextNeedle(m_text->text().toLatin1(), m_matchCase->isChecked() ? Qt::CaseSensitive : Qt::CaseInsensitive);
}

void TextFindBar::typed()
{
    restart();
    m_wasWrapped = false;
    if (m_text->text().isEmpty())
        m_view.select(m_origin, 0);
    else
        search(true, m_origin);
}

void TextFindBar::restart()
{
    m_matches.clear();
    m_countedTo = 0;
    m_counting.stop();
    m_origin = std::min(m_origin, m_view.text().length());
    const bool finds = isVisible() && !m_text->text().isEmpty();
    m_view.setMarked(finds ? std::optional(needle()) : std::nullopt);
    if (finds)
        m_counting.start(0, this);
    tell();
}

void TextFindBar::findNext()
{
    if (m_text->text().isEmpty())
        return open();
    m_wasWrapped = false;
    search(true, m_view.SelStart() + (m_view.SelLength() > 0 ? 1 : 0));
}

void TextFindBar::findPrevious()
{
    if (m_text->text().isEmpty())
        return open();
    m_wasWrapped = false;
    search(false, m_view.SelStart());
}

void TextFindBar::search(bool forward, qsizetype from)
{
    const TextNeedle wanted = needle();
    const TextBuffer& text = m_view.text();
    qsizetype at = forward ? text.find(wanted, from) : text.findLast(wanted, from);
    if (at < 0) {
        at = forward ? text.find(wanted, 0) : text.findLast(wanted, text.length());
        m_wasWrapped = at >= 0;
    }
    if (at >= 0) {
        const qsizetype line = text.lineFromChar(at);
        if (line < m_view.topLine() || line >= m_view.topLine() + m_view.linesPerPage())
            m_view.setTopLine(line - m_view.linesPerPage() / 3); // with what stands around it
        m_view.select(at, wanted.size());
    } else {
        m_view.setSelLength(0);
    }
    tell();
}

void TextFindBar::count()
{
    const TextNeedle wanted = needle();
    QElapsedTimer since;
    since.start();
    while (m_countedTo >= 0 && since.elapsed() < kSliceMs) {
        const qsizetype at = m_view.text().find(wanted, m_countedTo);
        if (at >= 0 && m_matches.size() < kMostCounted)
            m_matches.push_back(at);
        m_countedTo = at < 0 || m_matches.size() == kMostCounted ? -1 : at + 1;
    }
    if (m_countedTo < 0)
        m_counting.stop();
}

void TextFindBar::timerEvent(QTimerEvent* event)
{
    if (event->timerId() != m_counting.timerId())
        return;
    count();
    tell();
}

void TextFindBar::tell()
{
    QString told;
    if (m_text->text().isEmpty()) {
        told.clear();
    } else if (m_countedTo >= 0) {
        told = tr("Counting ...");
    } else if (m_matches.empty()) {
        told = tr("Not found");
    } else {
        const bool isMost = m_matches.size() == kMostCounted;
        const QString all = isMost ? tr("%1 or more").arg(kMostCounted) : QString::number(m_matches.size());
        const auto found = std::lower_bound(m_matches.begin(), m_matches.end(), m_view.SelStart());
        const bool isOne = m_view.SelLength() > 0 && found != m_matches.end() && *found == m_view.SelStart();
        told = isOne ? tr("%1 of %2").arg(found - m_matches.begin() + 1).arg(all) : tr("%1 match(es)").arg(all);
        if (m_wasWrapped)
            told += tr(", from the other end");
    }
    m_told->setText(told);
}

void TextFindBar::keyPressEvent(QKeyEvent* event)
{
    if (event->key() == Qt::Key_Escape)
        hide();
    else if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter)
        event->modifiers() & Qt::ShiftModifier ? findPrevious() : findNext();
    else
        QWidget::keyPressEvent(event);
}

void TextFindBar::hideEvent(QHideEvent* event)
{
    QWidget::hideEvent(event);
    m_counting.stop();
    m_view.setMarked(std::nullopt);
    m_view.setFocus();
}

} // namespace kalvo
