// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include <QtCore/QString>

/// Tells the module, which is loaded, what the window imports and where its pictures go. Each pixel
/// of the window is `ratio` of the screen's a side. Before the first import.
/// Why pictures cannot be written; empty when they can.
QString setUpContext(qreal ratio);
