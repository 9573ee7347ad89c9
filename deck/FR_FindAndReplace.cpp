// SPDX-License-Identifier: GPL-3.0-or-later
#include "deck/FR_FindAndReplace.h"

#include "deck/ScreenWindow.h"

#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
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

QLabel* label(const char* name, const QString& words, QWidget* buddy, QWidget* parent)
{
    auto* made = new QLabel(words, parent);
    made->setObjectName(QString::fromLatin1(name));
    made->setBuddy(buddy);
    return made;
}

} // namespace

FR::FR(FindReplace& logic, const EditContext& context, QString name, QWidget* window)
    : m_logic(logic), m_context(context), m_name(std::move(name)), m_window(window)
{
    setObjectName(QStringLiteral("FR"));
    setWindowTitle(QStringLiteral("Find and Replace"));
    m_logic.reset();
    buildControls();
    resize(460, sizeHint().height());
}

void FR::registerIn(FindReplace& logic, const EditContext& context, QWidget* window)
{
    const QString name = context.screenName("FR");
    context.screens.add(name,
                        [&logic, context, name, window] { return std::make_unique<FR>(logic, context, name, window); });
}

void FR::buildControls()
{
    Text1 = field("Text1", this);
    Text2 = field("Text2", this);
    auto* fields = new QGridLayout;
    fields->setHorizontalSpacing(12);
    fields->setVerticalSpacing(10);
    fields->addWidget(label("Label1", QStringLiteral("Find"), Text1, this), 0, 0);
    fields->addWidget(Text1, 0, 1);
    fields->addWidget(label("Label2", QStringLiteral("Replace"), Text2, this), 1, 0);
    fields->addWidget(Text2, 1, 1);

    Command1 = namedButton("Command1", QStringLiteral("Replace &All"), this);
    Command2 = namedButton("Command2", QStringLiteral("&Done"), this);
    Command3 = namedButton("Command3", QStringLiteral("&Cancel"), this);
    auto* buttons = new QHBoxLayout;
    buttons->addWidget(Command1);
    buttons->addStretch(1);
    buttons->addWidget(Command2);
    buttons->addWidget(Command3);

    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(16, 16, 16, 16);
    column->setSpacing(14);
    column->addLayout(fields);
    column->addLayout(buttons);

    connect(Text1, &QLineEdit::textEdited, this, [this](const QString& text) {
        m_logic.setFind(text);
        Text2->setText(m_logic.replacement());
    });
    connect(Text2, &QLineEdit::textEdited, this, [this](const QString& text) { m_logic.setReplacement(text); });
    connect(Command1, &QPushButton::clicked, this, [this] { m_context.commands.run(QStringLiteral("FR_ReplaceAll")); });
    connect(Command2, &QPushButton::clicked, this, &FR::reject);
    connect(Command3, &QPushButton::clicked, this, &FR::reject);
}

void FR::showScreen()
{
    showAbove(*this, m_window);
    Text1->setFocus();
}

void FR::reject()
{
    m_context.screens.unload(m_name);
}

} // namespace kalvo
