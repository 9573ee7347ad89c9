// SPDX-License-Identifier: GPL-3.0-or-later
#include "deck/EditorBox.h"

#include <QApplication>
#include <QContextMenuEvent>
#include <QHelpEvent>
#include <QKeyEvent>
#include <QPainter>
#include <QSignalBlocker>
#include <QValidator>

namespace kalvo {

namespace {

bool isCardCharacter(QChar c)
{
    return c >= u' ' && c <= u'~';
}

/// Ctrl alone: with Alt it is AltGr, which types characters.
bool isCombination(const QKeyEvent& key)
{
    return key.modifiers().testFlag(Qt::ControlModifier) && !key.modifiers().testFlag(Qt::AltModifier);
}

} // namespace

/// Takes out what no deck file may hold, whichever way it came in: typed, pasted, dropped or composed.
class CardCharacters : public QValidator
{
public:
    explicit CardCharacters(EditorBox* box) : QValidator(box), m_box(*box) {}

    State validate(QString& input, int& position) const override
    {
        for (qsizetype i = input.size() - 1; i >= 0; --i) {
            if (isCardCharacter(input[i]) || m_box.m_foreign.contains(input[i]))
                continue;
            input.remove(i, 1);
            if (i < position)
                --position;
        }
        return Acceptable;
    }

private:
    EditorBox& m_box;
};

EditorBox::EditorBox(QWidget* parent) : QLineEdit(parent)
{
    setObjectName(QStringLiteral("Text1"));
    setFrame(false);
    setTextMargins(2, 1, 2, 0);
    setAlignment(Qt::AlignLeft | Qt::AlignTop); // as high as the cells' own texts
    setAttribute(Qt::WA_OpaquePaintEvent, false);
    setAttribute(Qt::WA_MacShowFocusRect, false);
    setAutoFillBackground(true);
    setDragEnabled(false);
    setAcceptDrops(false); // a file dropped here belongs to the main screen
    setValidator(new CardCharacters(this));
    connect(this, &QLineEdit::textChanged, this, &EditorBox::typed);
    setTint(EditBox::Tint::AtRest);
}

void EditorBox::fill(const QString& text)
{
    m_foreign.clear();
    for (const QChar c : text)
        if (!isCardCharacter(c))
            m_foreign += c;
    {
        const QSignalBlocker quiet(this);
        setText(text);
        setCursorPosition(0);
    }
    update();
}

void EditorBox::setTint(EditBox::Tint tint)
{
    m_tint = tint;
    const QColor base(static_cast<QRgb>(tintColor(tint)) | 0xff000000U);
    if (palette().color(QPalette::Base) == base && palette().color(QPalette::Text) == m_textColor)
        return;
    // The colours carry meaning, so they are the same on a dark desktop, and the text stays dark on them.
    QPalette colors = palette();
    colors.setColor(QPalette::Base, base);
    colors.setColor(QPalette::Window, base);
    colors.setColor(QPalette::Text, m_textColor);
    setPalette(colors);
}

void EditorBox::setLook(const QFont& font, const QColor& text)
{
    if (font != this->font())
        setFont(font);
    m_textColor = text;
    setTint(m_tint);
}

bool EditorBox::event(QEvent* event)
{
    // Declining lets the main screen's own Ctrl+C, Ctrl+Z and the like fire, which mean cells and not characters.
    if (event->type() == QEvent::ShortcutOverride && isCombination(*static_cast<QKeyEvent*>(event))) {
        event->ignore();
        return false;
    }
    if (event->type() == QEvent::ToolTip)
        Q_EMIT toolTipAsked();
    return QLineEdit::event(event);
}

void EditorBox::keyPressEvent(QKeyEvent* event)
{
    event->ignore();
    Q_EMIT keyInBox(event);
    if (event->isAccepted())
        return;
    if (isCombination(*event)) {
        event->ignore();
        return;
    }
    event->accept();
    QLineEdit::keyPressEvent(event);
}

void EditorBox::mousePressEvent(QMouseEvent* event)
{
    Q_EMIT mousePressedInBox();
    QLineEdit::mousePressEvent(event);
}

void EditorBox::mouseDoubleClickEvent(QMouseEvent* event)
{
    QLineEdit::mouseDoubleClickEvent(event);
    Q_EMIT doubleClicked();
}

void EditorBox::contextMenuEvent(QContextMenuEvent* event)
{
    Q_EMIT menuAsked(event->globalPos());
    event->accept();
}

void EditorBox::focusInEvent(QFocusEvent* event)
{
    const int caret = cursorPosition();
    QLineEdit::focusInEvent(event);
    // Coming in by the Tab key marks the whole text; a key would then replace it.
    if (event->reason() == Qt::TabFocusReason || event->reason() == Qt::BacktabFocusReason) {
        deselect();
        setCursorPosition(caret);
    }
    Q_EMIT focusChanged(true);
}

void EditorBox::focusOutEvent(QFocusEvent* event)
{
    QLineEdit::focusOutEvent(event);
    Q_EMIT focusChanged(false);
}

void EditorBox::paintEvent(QPaintEvent* event)
{
    QLineEdit::paintEvent(event);
    QPainter painter(this);
    painter.setPen(QPen(QApplication::palette().color(QPalette::Highlight), 1.0));
    painter.drawRect(QRectF(rect()).adjusted(0.5, 0.5, -0.5, -0.5));
}

} // namespace kalvo
