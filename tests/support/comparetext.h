// SPDX-License-Identifier: GPL-2.0-or-later
//
// QCOMPARE of a text, or of a list of texts with ", " between, with what a test writes down.
#pragma once

#include <QtCore/QStringList>
#include <QtTest/QtTest>

namespace QTest {

// Not as templates, which would be no better a match than Qt's own.
#define VSPIMPORT_COMPARE(Actual, Expected, asText)                                                \
    inline bool qCompare(const Actual& actual, Expected expected, const char* actualText,          \
                         const char* expectedText, const char* file, int line)                     \
    {                                                                                              \
        return qCompare(asText, QString(expected), actualText, expectedText, file, line);          \
    }
VSPIMPORT_COMPARE(QString, const char*, actual)
VSPIMPORT_COMPARE(QStringList, const char*, actual.join(", "))
VSPIMPORT_COMPARE(QStringList, const QString&, actual.join(", "))
#if QT_VERSION < 0x060000 // since then one type
VSPIMPORT_COMPARE(QList<QString>, const char*, QStringList(actual).join(", "))
VSPIMPORT_COMPARE(QList<QString>, const QString&, QStringList(actual).join(", "))
#endif
#undef VSPIMPORT_COMPARE

} // namespace QTest
