// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include "facts/item.h"

#include <QtCore/QRect>

class QPainter;
class QPalette;

/// Draws what stands for an item that has no picture: a note, a disc, a frame of film.
void drawKind(QPainter& painter, const QRect& place, facts::ItemKind kind, const QPalette& palette);
