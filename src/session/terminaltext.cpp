// SPDX-License-Identifier: GPL-2.0-or-later
#include "terminaltext.h"

QString terminalText(const QString& text)
{
    QString shown = text;
    for (QChar& c : shown) {
        // Format characters turn the direction of what follows.
        if (c.category() == QChar::Other_Control || c.category() == QChar::Other_Format)
            c = QLatin1Char('?');
    }
    return shown;
}
