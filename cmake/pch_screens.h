// SPDX-License-Identifier: GPL-3.0-or-later
// Precompiled for screens and their tests.
#pragma once
#include "cmake/pch_logic.h"
#include <QtWidgets>
