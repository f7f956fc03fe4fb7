// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include <QtCore/QCoreApplication>

/// The texts of the page for people: Page::tr(), which a program with translations translates.
class Page
{
    Q_DECLARE_TR_FUNCTIONS(Page)
};
