// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include <QtCore/QByteArray>
#include <QtCore/QString>

/// Path of a file that the fixture scripts have made, as "media/one-frame.mp4".
inline QString fixturePath(const QString& name)
{
    return QLatin1String(FIXTURES_DIR "/") + name;
}

inline QByteArray fixtureUtf8(const QString& name)
{
    return fixturePath(name).toUtf8();
}
