// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/ChartOptionsDialog.h"

#include "platform/Chart.h"

#include <QCheckBox>
#include <QDialog>
#include <QDialogButtonBox>
#include <QDoubleSpinBox>
#include <QFormLayout>
#include <QPushButton>

namespace kalvo {

QDialog* openChartOptions(Chart& chart, QWidget* window)
{
    auto* dialog = new QDialog(window);
    dialog->setObjectName(QStringLiteral("ChartOptions"));
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    dialog->setWindowTitle(QStringLiteral(" Chart Options"));
    auto* form = new QFormLayout(dialog);
    const auto check = [&](const char* name, const QString& caption, bool ChartOptions::*option) {
        auto* box = new QCheckBox(caption, dialog);
        box->setObjectName(QString::fromLatin1(name));
        box->setChecked(chart.options().*option);
        QObject::connect(box, &QCheckBox::toggled, &chart, [&chart, option](bool on) {
            ChartOptions options = chart.options();
            options.*option = on;
            chart.setOptions(options);
        });
        form->addRow(box);
    };
    check("GridLines", QStringLiteral("&Grid lines"), &ChartOptions::gridLines);
    check("Markers", QStringLiteral("&Markers on the curves"), &ChartOptions::markers);
    check("LogValues", QStringLiteral("&Logarithmic flow axis"), &ChartOptions::logValues);

    auto* width = new QDoubleSpinBox(dialog);
    width->setObjectName(QStringLiteral("LineWidth"));
    width->setLocale(QLocale::c());
    width->setRange(0.5, 6.0);
    width->setSingleStep(0.5);
    width->setDecimals(1);
    width->setSuffix(QStringLiteral(" pixels"));
    width->setValue(chart.options().lineWidth);
    QObject::connect(width, &QDoubleSpinBox::valueChanged, &chart, [&chart](double pixels) {
        ChartOptions options = chart.options();
        options.lineWidth = pixels;
        chart.setOptions(options);
    });
    form->addRow(QStringLiteral("Line &width"), width);

    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Close, dialog);
    QObject::connect(buttons, &QDialogButtonBox::rejected, dialog, &QDialog::close);
    form->addRow(buttons);
    dialog->open();
    return dialog;
}

} // namespace kalvo
