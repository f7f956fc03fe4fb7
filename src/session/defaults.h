// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include <QtCore/QSize>
#include <QtCore/QString>

/// What the programs here import by, where nobody says otherwise.
namespace defaults {

/// Suffixes of media files, as "*.avi;*.mp4;".
extern const char* const formats;

/// Of a picture on a screen of ordinary density.
const QSize pictureSize(320, 180);

/// The folder of the pictures, in the user's cache.
QString pictureFolder();

} // namespace defaults
