// SPDX-License-Identifier: GPL-3.0-or-later
#include "shell/Form4_ColorEdit.h"

#include "deck/ScreenWindow.h"
#include "shell/ColorScreens.h"

#include <QApplication>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QListWidget>
#include <QPainter>
#include <QPushButton>
#include <QVBoxLayout>

namespace kalvo {

namespace {

constexpr QSize kSwatch(28, 16);

QIcon swatch(const QColor& color, const QColor& frame)
{
    QPixmap picture(kSwatch);
    picture.fill(color);
    QPainter painter(&picture);
    painter.setPen(frame);
    painter.drawRect(0, 0, kSwatch.width() - 1, kSwatch.height() - 1);
    painter.end();
    QIcon icon(picture);
    icon.addPixmap(picture, QIcon::Selected); // the colour itself, not a tint of it
    return icon;
}

} // namespace

Form4::Form4(LookCommands& looks, const EditContext& context, QString name)
    : m_looks(looks), m_context(context), m_name(std::move(name))
{
    setObjectName(QStringLiteral("Form4"));
    setWindowTitle(QStringLiteral("Color Edit"));
    buildControls();
    repaintScreen();
    resize(480, 380);
}

void Form4::registerIn(LookCommands& looks, const EditContext& context)
{
    const QString name = context.screenName("Form4");
    context.screens.add(name, [&looks, context, name] { return std::make_unique<Form4>(looks, context, name); });
}

void Form4::buildControls()
{
    List1 = new QListWidget(this);
    List1->setObjectName(QStringLiteral("List1"));
    List1->setIconSize(kSwatch);
    List1->setSpacing(2);
    for (int i = 0; i < kColorItems; ++i)
        List1->addItem(QString::fromLatin1(colorItemText(static_cast<ColorItem>(i))));
    List1->installEventFilter(this);
    connect(List1, &QListWidget::itemClicked, this, [this](QListWidgetItem* item) { pick(List1->row(item)); });
    auto* hint = new QLabel(QStringLiteral("A click or Enter on a line asks for its color."), this);
    hint->setObjectName(QStringLiteral("Label1"));
    Command1 = namedButton("Command1", QStringLiteral("&Cancel"), this);
    Command2 = namedButton("Command2", QStringLiteral("&Apply"), this);
    connect(Command1, &QPushButton::clicked, this, &Form4::reject);
    connect(Command2, &QPushButton::clicked, this, [this] {
        m_looks.applyItems(m_colors);
        reject();
    });

    auto* buttons = new QHBoxLayout;
    buttons->addWidget(hint, 1);
    buttons->addWidget(Command2);
    buttons->addWidget(Command1);
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(16, 16, 16, 16);
    column->setSpacing(12);
    column->addWidget(List1, 1);
    column->addLayout(buttons);
}

void Form4::repaintScreen()
{
    m_colors = m_looks.itemColors();
    for (int i = 0; i < kColorItems; ++i)
        showSwatch(i);
}

void Form4::showSwatch(int index)
{
    const QColor color = shownColor(static_cast<ColorItem>(index), m_colors, palette());
    List1->item(index)->setIcon(swatch(color, palette().color(QPalette::Mid)));
}

void Form4::pick(int index)
{
    if (index < 0)
        return;
    const Rgb preset = rgbOf(shownColor(static_cast<ColorItem>(index), m_colors, palette()));
    const auto picked = m_context.services.dialogs.color(preset);
    if (!picked)
        return;
    m_colors[static_cast<size_t>(index)] = *picked;
    for (int i = 0; i < kColorItems; ++i)
        showSwatch(i); // cells without a colour follow the grid's
}

bool Form4::eventFilter(QObject* watched, QEvent* event)
{
    if (watched == List1 && event->type() == QEvent::KeyPress) {
        const int key = static_cast<QKeyEvent*>(event)->key();
        if (key == Qt::Key_Return || key == Qt::Key_Enter || key == Qt::Key_Space) {
            pick(List1->currentRow());
            return true;
        }
    }
    return QDialog::eventFilter(watched, event);
}

void Form4::showScreen()
{
    showAbove(*this, QApplication::activeWindow());
    if (List1->currentRow() < 0)
        List1->setCurrentRow(0);
    List1->setFocus();
}

void Form4::reject()
{
    m_context.screens.unload(m_name);
}

} // namespace kalvo
