// SPDX-License-Identifier: LGPL-2.1-or-later
#pragma once

#include "vspbased/vspbasedglobal.h"

#include <QtCore/QMap>
#include <QtCore/QString>
#include <QtCore/QStringList>
#include <QtCore/QVariant>

class QObject;

/// Texts for people, properties as maps, and path helpers. Stateless; callable from any thread.
///
/// Packed values, as the engine hands them over (0 means unknown):
///   frame rate    64 bits: numerator in the high 32 bits, denominator in the low 32
///   aspect ratio  32 bits: display ratio, numerator in the high 16 bits, denominator in the low 16
class VSPBASED_EXPORT CBasicUtils
{
public:
    /// `bytes` in the largest unit of 1024 that leaves at least 1: "900 B", "1.4 GB".
    static QString fileSizeToString(quint64 bytes);

    /// A packed frame rate with up to three decimals: "25 fps", "23.976 fps"; empty when unknown.
    static QString framerateToString(quint64 raw);

    /// A packed aspect ratio by its usual name where it has one ("16:9", "4:3"), else against one
    /// ("2.40:1"); empty when unknown.
    static QString aspectRatioToString(unsigned int raw);

    /// Writes each value to the writable Qt property of `target` that has its key as name. Other
    /// keys are passed over.
    static void mapToObject(QObject* target, const QMap<QString, QVariant>& values);

    /// Reads the Qt properties of `source` called `names` into `values`; with no names all that its
    /// classes below QObject declare.
    static void mapFromObject(const QObject* source, QMap<QString, QVariant>& values,
                              const QStringList& names);

    /// `path` with exactly one separator at its end. An empty path stays empty: it means the
    /// current folder, and a separator would make it the root. With `native` the platform's own
    /// separator counts as one too.
    static QString includePathSeparator(const QString& path, bool native);

    /// `path` with no separator at its end; the root stays the root. `native` as above.
    static QString excludePathSeparator(const QString& path, bool native);
};
