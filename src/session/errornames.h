// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include <QtCore/QString>

/// The module's kinds of import error, as they are named and as they are said to a person. Here by
/// number, since saved reports are read without the module.
struct ErrorName
{
    const char* enumerator;
    const char* reason;
};

inline ErrorName errorName(int type)
{
    static const ErrorName names[] = {
        {"ErrorUnKnownSource", "not among the formats to import"},
        {"ErrorUnSupportSource", "among the forbidden formats"},
        {"ErrorImportFalsed", "cannot be opened or read"},
    };
    const int count = int(sizeof(names) / sizeof(names[0]));
    return type >= 0 && type < count ? names[type] : ErrorName{"Unknown", "unknown kind of error"};
}
