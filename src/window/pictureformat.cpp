// SPDX-License-Identifier: GPL-2.0-or-later
#include "pictureformat.h"

#include "defaults.h"

#include <cmath>

namespace pictureformat {

QSize takenSize(qreal ratio)
{
    return size * std::ceil(qBound(1.0, double(ratio), 4.0));
}

QString folder(qreal ratio)
{
    const QSize taken = takenSize(ratio);
    return QStringLiteral("%1-%2x%3")
        .arg(defaults::pictureFolder())
        .arg(taken.width())
        .arg(taken.height());
}

} // namespace pictureformat
