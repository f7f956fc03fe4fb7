// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once
#include "importresult.h"
#include <QtCore/QIODevice>
inline bool writeCsv(QIODevice&, const std::vector<std::shared_ptr<const facts::Item>>&)
{
    return true;
}
