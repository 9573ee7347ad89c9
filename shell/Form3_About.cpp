// SPDX-License-Identifier: GPL-3.0-or-later
#include "shell/Form3_About.h"

#include "platform/Services.h"

#include <QCoreApplication>
#include <QDialogButtonBox>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

namespace kalvo {

namespace {

QLabel* paragraph(const QString& text, QWidget* parent)
{
    auto* label = new QLabel(text, parent);
    label->setWordWrap(true);
    label->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    return label;
}

} // namespace

Form3::Form3(EngineText engineText, QWidget* parent) : QDialog(parent), m_engineText(std::move(engineText))
{
    setObjectName(QStringLiteral("Form3"));
    setWindowTitle(QStringLiteral("About Kalvo"));
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(24, 20, 24, 16);
    layout->setSpacing(10);
    auto* name = new QLabel(QString::fromLatin1(kApplicationTitle), this);
    QFont large = name->font();
    large.setPointSizeF(large.pointSizeF() * 1.8);
    large.setBold(true);
    name->setFont(large);
    layout->addWidget(name);
    layout->addWidget(paragraph(QStringLiteral("Version %1").arg(QCoreApplication::applicationVersion()), this));
    layout->addWidget(paragraph(QStringLiteral("Edits HEC-1 card decks, runs HEC-1 and shows what it wrote."), this));
    m_engine = paragraph(QString(), this);
    m_engine->setObjectName(QStringLiteral("LabelEngine"));
    layout->addWidget(m_engine);
    layout->addWidget(
        paragraph(QStringLiteral("Free software under the GNU General Public License, version 3 or later. "
                                 "It comes without any warranty: check every result before you build "
                                 "on it."),
                  this));
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok, this);
    buttons->button(QDialogButtonBox::Ok)->setObjectName(QStringLiteral("cmdOK"));
    connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    layout->addWidget(buttons);
    layout->setSizeConstraint(QLayout::SetFixedSize); // no taller than its words
    for (QLabel* label : findChildren<QLabel*>())
        label->setFixedWidth(380);
    Form3::repaintScreen();
}

void Form3::registerIn(Screens& screens, EngineText engineText)
{
    screens.add(QStringLiteral("Form3"),
                [engineText = std::move(engineText)] { return std::make_unique<Form3>(engineText); });
}

void Form3::showScreen()
{
    repaintScreen();
    show();
    raise();
    activateWindow();
}

void Form3::repaintScreen()
{
    m_engine->setText(m_engineText ? m_engineText() : QString());
    m_engine->setVisible(!m_engine->text().isEmpty());
}

} // namespace kalvo
