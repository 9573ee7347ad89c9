// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>
#include <QWidget>

#include <functional>

class QLabel;

namespace kalvo {

/// "Version:" and the three parts of a version, joined by " -": "1.2.0" gives "Version:1 -2 -0".
QString versionLine(const QString& version);

/// The start screen: stands for 4 seconds, or until it is clicked or a key is pressed, then loads the main screen.
class splash : public QWidget
{
    Q_OBJECT

public:
    static constexpr int kStandsMs = 4000;

    explicit splash(QWidget* parent = nullptr);

    /// Shows itself, waits with events running, tells "Loading ..." while `load` works, then "Loaded    ", lets the
    /// main screen show itself, and goes: there is always one of the two to be seen.
    void begin(const std::function<void()>& load, const std::function<void()>& showMainScreen);

Q_SIGNALS:
    void ended();

protected:
    void mousePressEvent(QMouseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void closeEvent(QCloseEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

private:
    void waitToTheEnd();
    void end();
    void tell(const QString& text);

    QLabel* m_state = nullptr;
    bool m_isEnded = false;
};

} // namespace kalvo
