// SPDX-License-Identifier: GPL-2.0-or-later
#include <QtTest/QtTest>
int main()
{
    return 0;
}
