// SPDX-License-Identifier: GPL-3.0-or-later
#include "deck/frmGOTO_GoTo.h"

#include "deck/ScreenWindow.h"

#include <QFormLayout>
#include <QHBoxLayout>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>

namespace kalvo {

namespace {

QLineEdit* field(const char* name, QWidget* parent)
{
    auto* made = new QLineEdit(parent);
    made->setObjectName(QString::fromLatin1(name));
    return made;
}

} // namespace

frmGOTO::frmGOTO(GoTo& logic, const EditContext& context, QString name, QWidget* window)
    : m_logic(logic), m_context(context), m_name(std::move(name)), m_window(window)
{
    setObjectName(QStringLiteral("frmGOTO"));
    setWindowTitle(QStringLiteral(" Go To"));
    m_logic.reset();
    buildControls();
    repaintScreen();
    resize(380, sizeHint().height());
}

void frmGOTO::registerIn(GoTo& logic, const EditContext& context, QWidget* window)
{
    const QString name = context.screenName("frmGOTO");
    context.screens.add(
        name, [&logic, context, name, window] { return std::make_unique<frmGOTO>(logic, context, name, window); });
}

void frmGOTO::buildControls()
{
    Text1 = field("Text1", this);
    Text2 = field("Text2", this);
    Text3 = field("Text3", this);
    auto* fields = new QFormLayout;
    fields->setHorizontalSpacing(12);
    fields->setVerticalSpacing(10);
    fields->addRow(QStringLiteral("Enter Text"), Text1);
    fields->addRow(QStringLiteral("Start Row"), Text2);
    fields->addRow(QStringLiteral("Start Column"), Text3);

    Command1 = new QPushButton(QStringLiteral("&Go To"), this);
    Command1->setObjectName(QStringLiteral("Command1"));
    Command1->setDefault(true); // Enter in any field
    Command3 = namedButton("Command3", QStringLiteral("Cancel"), this);
    auto* buttons = new QHBoxLayout;
    buttons->addStretch(1);
    buttons->addWidget(Command1);
    buttons->addWidget(Command3);

    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(16, 16, 16, 16);
    column->setSpacing(14);
    column->addLayout(fields);
    column->addLayout(buttons);

    connect(Text1, &QLineEdit::textEdited, this, [this](const QString& text) {
        m_logic.setText(text);
        repaintScreen();
    });
    const auto startTyped = [this] { m_logic.setStart(Text2->text(), Text3->text()); };
    connect(Text2, &QLineEdit::textEdited, this, startTyped);
    connect(Text3, &QLineEdit::textEdited, this, startTyped);
    connect(Command1, &QPushButton::clicked, this, &frmGOTO::search);
    connect(Command3, &QPushButton::clicked, this, &frmGOTO::reject);
}

void frmGOTO::repaintScreen()
{
    if (Text1->text() != m_logic.text())
        Text1->setText(m_logic.text());
    Text2->setText(m_logic.startRow());
    Text3->setText(m_logic.startColumn());
}

void frmGOTO::showScreen()
{
    repaintScreen();
    showAbove(*this, m_window);
    Text1->setFocus();
    Text1->selectAll();
}

void frmGOTO::search()
{
    if (m_logic.text().isEmpty())
        return;
    m_context.commands.run(QStringLiteral("frmGOTO_Find"));
    hide();
}

void frmGOTO::reject()
{
    m_context.screens.unload(m_name);
}

} // namespace kalvo
