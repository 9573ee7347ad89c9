// SPDX-License-Identifier: GPL-3.0-or-later
#include "deck/NewIDCard_IdentifyCards.h"

#include "deck/CardMarks.h"
#include "deck/ScreenWindow.h"

#include <QComboBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>

namespace kalvo {

NewIDCard::NewIDCard(const EditContext& context, QString name, QWidget* window)
    : m_context(context), m_name(std::move(name)), m_window(window)
{
    setObjectName(QStringLiteral("NewIDCard"));
    setWindowTitle(QStringLiteral(" Identify Cards"));
    buildControls();
    repaintScreen();
    resize(400, sizeHint().height());
}

void NewIDCard::registerIn(const EditContext& context, QWidget* window)
{
    const QString name = context.screenName("NewIDCard");
    context.screens.add(name, [context, name, window] { return std::make_unique<NewIDCard>(context, name, window); });
}

void NewIDCard::buildControls()
{
    auto* label = new QLabel(QStringLiteral("Select the Type of Card and the Line will be Highlighted"), this);
    label->setObjectName(QStringLiteral("Label1"));
    label->setWordWrap(true);
    Combo1 = new QComboBox(this);
    Combo1->setObjectName(QStringLiteral("Combo1"));
    Combo1->setEditable(true);
    Combo1->setInsertPolicy(QComboBox::NoInsert);
    Combo1->setCompleter(nullptr); // would put words of its own into the box
    label->setBuddy(Combo1);
    OKButton = namedButton("OKButton", QStringLiteral("OK"), this);
    CancelButton = namedButton("CancelButton", QStringLiteral("Cancel"), this);

    auto* buttons = new QHBoxLayout;
    buttons->addStretch(1);
    buttons->addWidget(OKButton);
    buttons->addWidget(CancelButton);
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(16, 16, 16, 16);
    column->setSpacing(12);
    column->addWidget(label);
    column->addWidget(Combo1);
    column->addLayout(buttons);

    connect(Combo1->lineEdit(), &QLineEdit::textEdited, this, &NewIDCard::followTyping);
    connect(Combo1->lineEdit(), &QLineEdit::returnPressed, this, &NewIDCard::identify);
    connect(OKButton, &QPushButton::clicked, this, &NewIDCard::identify);
    connect(CancelButton, &QPushButton::clicked, this, &NewIDCard::reject);
}

void NewIDCard::repaintScreen()
{
    Combo1->clear();
    Combo1->addItems(cardIds(m_context.grid()));
    if (Combo1->count() == 0)
        Combo1->setEditText(QStringLiteral("No Data to Identify"));
    else
        Combo1->setCurrentIndex(0);
}

/// An item that was chosen is an ID as it stands in the deck, whatever its letters; only typing is corrected.
void NewIDCard::followTyping(const QString& text)
{
    const QString id = cardIdAsTyped(text);
    if (id != text)
        Combo1->lineEdit()->setText(id); // the caret goes to its end
}

void NewIDCard::showScreen()
{
    if (!isVisible())
        repaintScreen();
    showAbove(*this, m_window);
    OKButton->setFocus();
}

void NewIDCard::identify()
{
    const QString id = Combo1->currentText();
    if (id.isEmpty())
        return;
    m_context.deck.storeEditBox(); // the deck can be edited while this screen stands open
    identifyCards(m_context.deck, id);
    reject();
}

void NewIDCard::reject()
{
    m_context.screens.unload(m_name);
}

} // namespace kalvo
