// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/QtClipboard.h"
#include "platform/QtDialogs.h"
#include "platform/QtTextMeasure.h"
#include "tests/support/GridText.h"

#include <QApplication>
#include <QBuffer>
#include <QClipboard>
#include <QFileDialog>
#include <QImage>
#include <QInputDialog>
#include <QLineEdit>
#include <QMessageBox>
#include <QMimeData>
#include <QPushButton>
#include <QTimer>

#include <gtest/gtest.h>

using namespace kalvo;

namespace {

/// Acts on the dialog that opens next, as its user would.
template <class Dialog> void whenOpen(std::function<void(Dialog&)> act)
{
    auto* timer = new QTimer(qApp);
    QObject::connect(timer, &QTimer::timeout, qApp, [timer, act = std::move(act)] {
        auto* dialog = qobject_cast<Dialog*>(QApplication::activeModalWidget());
        if (!dialog)
            return;
        timer->stop();
        timer->deleteLater();
        act(*dialog);
    });
    timer->start(1);
}

TEST(QtDialogs, FiltersAreQtsOwn)
{
    EXPECT_EQ(qtNameFilters("Decks (*.dat)|*.dat;*.ih1|All Files|*.*"),
              (QStringList{"Decks (*.dat *.ih1)", "All Files (*)"}));
    EXPECT_EQ(qtNameFilters("Peaks|*.pek"), QStringList{"Peaks (*.pek)"});
    EXPECT_TRUE(qtNameFilters("").isEmpty());
    EXPECT_TRUE(qtNameFilters("Caption alone").isEmpty());
}

TEST(QtDialogs, AMessageBoxShowsWhatWasAsked)
{
    QtDialogs dialogs;
    whenOpen<QMessageBox>([](QMessageBox& box) {
        EXPECT_EQ(box.text(), "<b>Save</b> it?");
        EXPECT_EQ(box.windowTitle(), "Kalvo");
        EXPECT_EQ(box.icon(), QMessageBox::Warning);
        EXPECT_EQ(box.textFormat(), Qt::PlainText);
        EXPECT_EQ(box.defaultButton(), box.button(QMessageBox::No));
        box.button(QMessageBox::Yes)->click();
    });
    EXPECT_EQ(dialogs.message({.text = "<b>Save</b> it?",
                               .icon = Icon::Warning,
                               .buttons = Buttons::YesNoCancel,
                               .defaultButton = Button::No}),
              Button::Yes);
}

TEST(QtDialogs, AClosedBoxChangesNothing)
{
    QtDialogs dialogs;
    for (const auto& [buttons, answer] :
         {std::pair{Buttons::Ok, Button::Ok}, std::pair{Buttons::OkCancel, Button::Cancel},
          std::pair{Buttons::YesNo, Button::No}, std::pair{Buttons::YesNoCancel, Button::Cancel}}) {
        whenOpen<QMessageBox>([](QMessageBox& box) { box.done(0); });
        EXPECT_EQ(dialogs.message({.text = "?", .buttons = buttons}), answer);
    }
}

TEST(QtDialogs, AnInputBoxGivesItsTextOrNothing)
{
    QtDialogs dialogs;
    whenOpen<QInputDialog>([](QInputDialog& box) {
        EXPECT_EQ(box.labelText(), "Acres?");
        EXPECT_EQ(box.textValue(), "1");
        box.setTextValue("12");
        box.accept();
    });
    EXPECT_EQ(dialogs.input("Acres?", "Area", "1"), QStringLiteral("12"));
    whenOpen<QInputDialog>([](QInputDialog& box) { box.reject(); });
    EXPECT_EQ(dialogs.input("Acres?", "Area", "1"), std::nullopt);
}

TEST(QtDialogs, AFileDialogIsSetUpAsAsked)
{
    QtDialogs dialogs;
    const QString folder = QDir::tempPath();
    whenOpen<QFileDialog>([&](QFileDialog& box) {
        EXPECT_EQ(box.windowTitle(), "Save HEC-1 Deck");
        EXPECT_EQ(box.acceptMode(), QFileDialog::AcceptSave);
        EXPECT_EQ(box.selectedNameFilter(), "All (*)");
        EXPECT_EQ(box.defaultSuffix(), "dat");
        EXPECT_FALSE(box.testOption(QFileDialog::DontConfirmOverwrite));
        EXPECT_EQ(QFileInfo(box.selectedFiles().value(0)).fileName(), "storm.dat");
        box.reject();
    });
    EXPECT_FALSE(dialogs.saveFile({.title = "Save HEC-1 Deck",
                                   .filter = "Decks|*.dat|All|*.*",
                                   .filterIndex = 2,
                                   .initialName = folder + "/storm.dat",
                                   .defaultExtension = "dat",
                                   .overwritePrompt = true}));
    whenOpen<QFileDialog>([&](QFileDialog& box) {
        EXPECT_EQ(box.fileMode(), QFileDialog::ExistingFile);
        box.reject();
    });
    EXPECT_FALSE(dialogs.openFile({.title = "Open", .filter = "", .fileMustExist = true}));
}

TEST(QtClipboards, GiveLineFeedsOfOthersAsFullLineEnds)
{
    QtClipboard clipboard;
    QGuiApplication::clipboard()->setText("a\nb\n");
    EXPECT_EQ(clipboard.text(), "a\r\nb\r\n");
    clipboard.setText("KK\tSUB1\rBA\t1.5");
    EXPECT_EQ(clipboard.text(), "KK\tSUB1\rBA\t1.5") << "the program's own form comes back as it went";
    EXPECT_TRUE(clipboard.hasText());
    clipboard.clear();
    EXPECT_FALSE(clipboard.hasText());
    EXPECT_EQ(clipboard.text(), "");
}

TEST(QtClipboards, TakeAPictureInPlaceOfTheText)
{
    QtClipboard clipboard;
    clipboard.setText("KK");
    clipboard.setPicture("not a picture");
    EXPECT_EQ(clipboard.text(), "KK");
    QImage image(3, 2, QImage::Format_RGB32);
    image.fill(Qt::red);
    QByteArray png;
    QBuffer buffer(&png);
    ASSERT_TRUE(image.save(&buffer, "PNG"));
    clipboard.setPicture(png);
    EXPECT_FALSE(clipboard.hasText());
    EXPECT_EQ(QGuiApplication::clipboard()->image().size(), QSize(3, 2));
    EXPECT_EQ(QGuiApplication::clipboard()->mimeData()->data("image/png"), png);
}

TEST(QtTextMeasures, AgreeWithTheFontItself)
{
    QFont font = QApplication::font();
    font.setPointSizeF(8.25);
    font.setKerning(false);
    const QtTextMeasure measure(font);
    const QFontMetricsF peer(font);
    for (const QString& text : {QString(), QStringLiteral("BA"), QStringLiteral("0.15625"),
                                QStringLiteral("Tr\u00e9s WAVE"), QStringLiteral("\u0416\u4e2d")})
        EXPECT_NEAR(measure.textWidth(text), peer.horizontalAdvance(text) * 15.0, 2.0) << text.toStdString();
    EXPECT_EQ(measure.textWidth(QString()), 0);
}

} // namespace
