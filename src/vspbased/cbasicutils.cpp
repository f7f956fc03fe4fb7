// SPDX-License-Identifier: LGPL-2.1-or-later
#include "vspbased/cbasicutils.h"

#include <QtCore/QDir>
#include <QtCore/QMetaProperty>
#include <QtCore/QObject>

#include <cmath>

namespace {

/// `value` with up to `decimals` decimals, without trailing zeros.
QString shortNumber(double value, int decimals)
{
    QString text = QString::number(value, 'f', decimals);
    if (decimals == 0)
        return text;
    while (text.endsWith(QLatin1Char('0')))
        text.chop(1);
    if (text.endsWith(QLatin1Char('.')))
        text.chop(1);
    return text;
}

struct NamedRatio
{
    int width;
    int height;
};

/// Ratios that people call by whole numbers.
const NamedRatio namedRatios[] = {{1, 1}, {5, 4}, {4, 3}, {3, 2},   {16, 10}, {16, 9},
                                  {4, 5}, {3, 4}, {2, 3}, {10, 16}, {9, 16}};

/// Coded sizes are whole macroblocks, so a picture is rarely exactly of its nominal shape: 854x480
/// is meant to be 16:9.
const double ratioTolerance = 0.005;

bool isSeparator(QChar c, bool native)
{
    return c == QLatin1Char('/') || (native && c == QDir::separator());
}

int lengthWithoutSeparators(const QString& path, bool native)
{
    int length = path.length();
    while (length > 0 && isSeparator(path.at(length - 1), native))
        --length;
    return length;
}

QStringList declaredProperties(const QObject* object)
{
    QStringList names;
    const QMetaObject* meta = object->metaObject();
    for (int i = QObject::staticMetaObject.propertyCount(); i < meta->propertyCount(); ++i)
        names.append(QLatin1String(meta->property(i).name()));
    return names;
}

} // namespace

QString CBasicUtils::fileSizeToString(quint64 bytes)
{
    static const char* const units[] = {"B", "KB", "MB", "GB", "TB", "PB", "EB"};
    const int last = int(sizeof(units) / sizeof(units[0])) - 1;
    double size = double(bytes);
    int unit = 0;
    // 1023.95 of a unit would be shown as 1024.0 of it.
    while (unit < last && size >= (unit == 0 ? 1024.0 : 1023.95)) {
        size /= 1024.0;
        ++unit;
    }
    return shortNumber(size, unit == 0 ? 0 : 1) + QLatin1Char(' ') + QLatin1String(units[unit]);
}

QString CBasicUtils::framerateToString(quint64 raw)
{
    const quint32 numerator = quint32(raw >> 32);
    const quint32 denominator = quint32(raw);
    if (numerator == 0 || denominator == 0)
        return QString();
    return shortNumber(double(numerator) / denominator, 3) + QLatin1String(" fps");
}

QString CBasicUtils::aspectRatioToString(unsigned int raw)
{
    const unsigned int width = raw >> 16;
    const unsigned int height = raw & 0xFFFF;
    if (width == 0 || height == 0)
        return QString();
    const double ratio = double(width) / height;
    for (unsigned int i = 0; i < sizeof(namedRatios) / sizeof(namedRatios[0]); ++i) {
        const NamedRatio& named = namedRatios[i];
        const double exact = double(named.width) / named.height;
        if (std::fabs(ratio - exact) <= exact * ratioTolerance)
            return QString::fromLatin1("%1:%2").arg(named.width).arg(named.height);
    }
    return QString::number(ratio, 'f', 2) + QLatin1String(":1");
}

void CBasicUtils::mapToObject(QObject* target, const QMap<QString, QVariant>& values)
{
    const QMetaObject* meta = target->metaObject();
    QMap<QString, QVariant>::const_iterator it = values.constBegin();
    for (; it != values.constEnd(); ++it) {
        const int index = meta->indexOfProperty(it.key().toLatin1().constData());
        if (index >= 0 && meta->property(index).isWritable())
            meta->property(index).write(target, it.value());
    }
}

void CBasicUtils::mapFromObject(const QObject* source, QMap<QString, QVariant>& values,
                                const QStringList& names)
{
    const QMetaObject* meta = source->metaObject();
    const QStringList wanted = names.isEmpty() ? declaredProperties(source) : names;
    for (int i = 0; i < wanted.count(); ++i) {
        const int index = meta->indexOfProperty(wanted.at(i).toLatin1().constData());
        if (index >= 0 && meta->property(index).isReadable())
            values.insert(wanted.at(i), meta->property(index).read(source));
    }
}

QString CBasicUtils::includePathSeparator(const QString& path, bool native)
{
    if (path.isEmpty())
        return path;
    return path.left(lengthWithoutSeparators(path, native)) + QLatin1Char('/');
}

QString CBasicUtils::excludePathSeparator(const QString& path, bool native)
{
    const int length = lengthWithoutSeparators(path, native);
    return length == 0 ? path.left(1) : path.left(length);
}
