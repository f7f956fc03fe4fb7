// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include <QtCore/QSize>
#include <QtCore/QString>

/// Pictures of the window: larger than the command-line program's, so that one fills the details,
/// and with as many pixels as the screen has.
namespace pictureformat {

/// Of a picture in the details, in pixels of the window.
const QSize size(480, 270);

/// Of one in the grid.
const QSize gridSize(192, 108);

/// What the import is asked for where each pixel of the window is `ratio` of the screen's a side.
QSize takenSize(qreal ratio);

/// The folder of pictures of that size: a picture that is there already keeps the size it has.
QString folder(qreal ratio);

} // namespace pictureformat
