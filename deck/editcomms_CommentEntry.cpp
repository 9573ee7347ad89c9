// SPDX-License-Identifier: GPL-3.0-or-later
#include "deck/editcomms_CommentEntry.h"

#include "deck/CommentText.h"
#include "deck/ScreenWindow.h"

#include <QFontDatabase>
#include <QGuiApplication>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QScreen>
#include <QVBoxLayout>

#include <algorithm>

namespace kalvo {

namespace {

QLineEdit* hiddenText(const char* name, QWidget* parent)
{
    auto* made = new QLineEdit(parent);
    made->setObjectName(QString::fromLatin1(name));
    made->hide();
    return made;
}

} // namespace

editcomms::editcomms(MarkCommands& marks, const EditContext& context, QString name, QWidget* window, CellPlace place)
    : m_marks(marks), m_context(context), m_name(std::move(name)), m_window(window), m_place(std::move(place))
{
    setObjectName(QStringLiteral("editcomms"));
    setWindowTitle(QStringLiteral(" Edit Comments"));
    setWindowModality(Qt::ApplicationModal);
    buildControls();
    loadRow();
}

void editcomms::registerIn(MarkCommands& marks, const EditContext& context, QWidget* window, const CellPlace& place)
{
    const QString name = context.screenName("editcomms");
    context.screens.add(name, [&marks, context, name, window, place] {
        return std::make_unique<editcomms>(marks, context, name, window, place);
    });
}

void editcomms::buildControls()
{
    Text1 = new QLineEdit(this);
    Text1->setObjectName(QStringLiteral("Text1"));
    Text1->setFont(QFontDatabase::systemFont(QFontDatabase::FixedFont)); // a place in the text is a card column
    const QMargins around = Text1->textMargins() + QMargins(8, 0, 8, 0);
    Text1->setMinimumWidth(Text1->fontMetrics().horizontalAdvance(QString(80, u'0')) + around.left() + around.right());
    Text2 = hiddenText("Text2", this);
    Text3 = hiddenText("Text3", this);

    Label1 = new QLabel(QStringLiteral("Card column"), this);
    Label1->setObjectName(QStringLiteral("Label1"));
    Label2 = new QLabel(this);
    Label2->setObjectName(QStringLiteral("Label2"));
    Label2->setMinimumWidth(Label2->fontMetrics().horizontalAdvance(QStringLiteral("000")));
    Command1 = namedButton("Command1", QStringLiteral("&Save and Exit"), this);
    Command2 = namedButton("Command2", QStringLiteral("&Cancel Edit"), this);

    auto* foot = new QHBoxLayout;
    foot->addWidget(Label1);
    foot->addWidget(Label2);
    foot->addStretch(1);
    foot->addWidget(Command1);
    foot->addWidget(Command2);
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(12, 12, 12, 12);
    column->setSpacing(10);
    column->addWidget(Text1);
    column->addLayout(foot);

    connect(Text1, &QLineEdit::cursorPositionChanged, this, &editcomms::getcolumn);
    connect(Text1, &QLineEdit::textEdited, this, &editcomms::getcolumn);
    connect(Text1, &QLineEdit::returnPressed, this, &editcomms::save);
    connect(Command1, &QPushButton::clicked, this, &editcomms::save);
    connect(Command2, &QPushButton::clicked, this, [this] {
        m_marks.collapseSelection();
        reject();
    });
}

void editcomms::loadRow()
{
    const FlexGrid& grid = m_context.grid();
    m_row = grid.row();
    const QString id = m_context.deck.id(m_row);
    m_firstCardColumn = firstCardColumn(id);
    m_fits = longestCommentText(id);
    const QString text = commentText(grid, m_row);
    // No more is taken than fits; what stands in the deck already is shown whole, so that nothing is cut unseen.
    Text1->setMaxLength(std::max(m_fits, static_cast<int>(text.size())));
    Text1->setText(text);
    Text1->setCursorPosition(0);
    Text2->setText(QString::number(m_row));
    Text3->setText(QString::number(grid.col()));
    getcolumn();
}

void editcomms::getcolumn()
{
    Label2->setText(QString::number(Text1->cursorPosition() + m_firstCardColumn));
    const auto beyond = static_cast<int>(Text1->text().size()) - m_fits;
    Label1->setText(beyond > 0 ? QStringLiteral("%1 behind the card's end: saving leaves them out.   Card column")
                                     .arg(counted(beyond, "character"))
                               : QStringLiteral("Card column"));
}

void editcomms::showScreen()
{
    showAbove(*this, m_window);
    placeOverRow();
    Text1->setFocus();
}

void editcomms::placeOverRow()
{
    QPoint corner = m_place();
    if (const QScreen* display = QGuiApplication::screenAt(corner)) {
        const QRect room = display->availableGeometry();
        corner.setX(std::max(room.left(), std::min(corner.x(), room.right() - frameGeometry().width())));
        corner.setY(std::max(room.top(), std::min(corner.y(), room.bottom() - frameGeometry().height())));
    }
    move(corner);
}

void editcomms::save()
{
    m_marks.saveComment(m_row, Text1->text());
    reject();
}

void editcomms::reject()
{
    m_context.screens.unload(m_name);
}

} // namespace kalvo
