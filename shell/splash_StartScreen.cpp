// SPDX-License-Identifier: GPL-3.0-or-later
#include "shell/splash_StartScreen.h"

#include <QCoreApplication>
#include <QEventLoop>
#include <QLabel>
#include <QLinearGradient>
#include <QPainter>
#include <QPainterPath>
#include <QScreen>
#include <QTimer>
#include <QVBoxLayout>

#include <cmath>

namespace kalvo {

namespace {

constexpr QSize kSize(460, 260);
constexpr QRgb kDeep = qRgb(16, 58, 92);
constexpr QRgb kShallow = qRgb(34, 110, 150);

QLabel* line(const QString& text, double scale, bool bold, QWidget* parent)
{
    auto* label = new QLabel(text, parent);
    QFont font = label->font();
    font.setPointSizeF(font.pointSizeF() * scale);
    font.setBold(bold);
    label->setFont(font);
    QPalette colors = label->palette();
    colors.setColor(QPalette::WindowText, Qt::white);
    label->setPalette(colors);
    return label;
}

/// Flow over time with a steep rise and a long fall: what the program is about.
double flow(double time)
{
    return std::pow(time * std::exp(1.0 - time), 3.2);
}

} // namespace

QString versionLine(const QString& version)
{
    return QStringLiteral("Version:") + version.split(u'.').join(QStringLiteral(" -"));
}

splash::splash(QWidget* parent) : QWidget(parent, Qt::SplashScreen | Qt::FramelessWindowHint)
{
    setObjectName(QStringLiteral("splash"));
    setFixedSize(kSize);
    setFocusPolicy(Qt::StrongFocus);
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(32, 26, 32, 18);
    layout->setSpacing(2);
    layout->addWidget(line(QStringLiteral("Kalvo"), 3.2, true, this));
    layout->addWidget(line(QStringLiteral("HEC-1 Interactive"), 1.4, false, this));
    layout->addWidget(line(QStringLiteral("Graphical Interface"), 1.4, false, this));
    layout->addStretch();
    layout->addWidget(line(versionLine(QCoreApplication::applicationVersion()), 1.0, false, this));
    m_state = line(QString(), 1.0, false, this);
    m_state->setObjectName(QStringLiteral("Label3"));
    layout->addWidget(m_state);
}

void splash::begin(const std::function<void()>& load, const std::function<void()>& showMainScreen)
{
    if (const QScreen* at = screen())
        move(at->availableGeometry().center() - rect().center());
    show();
    waitToTheEnd();
    tell(QStringLiteral("Loading ..."));
    load();
    tell(QStringLiteral("Loaded    "));
    showMainScreen();
    close();
}

void splash::waitToTheEnd()
{
    if (m_isEnded) // clicked while it came up
        return;
    QEventLoop loop;
    connect(this, &splash::ended, &loop, &QEventLoop::quit);
    QTimer::singleShot(kStandsMs, &loop, &QEventLoop::quit);
    loop.exec();
}

void splash::end()
{
    m_isEnded = true;
    Q_EMIT ended();
}

void splash::tell(const QString& text)
{
    m_state->setText(text);
    repaint();
}

void splash::mousePressEvent(QMouseEvent*)
{
    end();
}

void splash::keyPressEvent(QKeyEvent*)
{
    end();
}

void splash::closeEvent(QCloseEvent* event)
{
    end();
    QWidget::closeEvent(event);
}

void splash::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    QLinearGradient water(0, 0, 0, height());
    water.setColorAt(0.0, QColor(kDeep));
    water.setColorAt(1.0, QColor(kShallow));
    painter.fillRect(rect(), water);
    QPainterPath hydrograph;
    const double base = height() - 58.0;
    const double start = 0.38 * width(); // the words have the left
    hydrograph.moveTo(-2, base);
    hydrograph.lineTo(start, base);
    for (double x = start; x <= width() + 2; x += 2)
        hydrograph.lineTo(x, base - 150.0 * flow(4.5 * (x - start) / (width() - start)));
    hydrograph.lineTo(width() + 2, height() + 2);
    hydrograph.lineTo(-2, height() + 2);
    painter.fillPath(hydrograph, QColor(255, 255, 255, 28));
    painter.setPen(QPen(QColor(255, 255, 255, 90), 1.6));
    painter.drawPath(hydrograph);
}

} // namespace kalvo
