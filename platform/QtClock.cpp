// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/QtClock.h"

#include <QEventLoop>
#include <QTimer>

namespace kalvo {

QDateTime QtClock::now() const
{
    return QDateTime::currentDateTime();
}

void QtClock::wait(int milliseconds)
{
    QEventLoop loop;
    QTimer::singleShot(milliseconds, Qt::PreciseTimer, &loop, &QEventLoop::quit);
    loop.exec();
}

} // namespace kalvo
