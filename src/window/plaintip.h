// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include <QtCore/QString>
#include <QtGui/QTextDocument>

/// A tooltip that shows `text` as it is: Qt would take what tags are in it for markup, with
/// pictures to load.
inline QString plainTip(const QString& text)
{
    return Qt::mightBeRichText(text) ? Qt::convertFromPlainText(text) : text;
}
