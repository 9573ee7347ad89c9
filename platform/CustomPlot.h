// SPDX-License-Identifier: GPL-3.0-or-later
// qcustomplot.h is written with Qt's keyword macros, which our own code leaves undefined because they clash with
// ordinary names. They live for this one header alone.
#pragma once

#include <QtGlobal>

#define signals Q_SIGNALS
#define slots Q_SLOTS
#define foreach Q_FOREACH
#include <qcustomplot.h>
#undef signals
#undef slots
#undef foreach
