// SPDX-License-Identifier: LGPL-2.1-or-later
//
// Everything in which Qt 4.8, 5 and 6 differ for this project, in one place. The module and the
// framework's part otherwise use only API that all have. One more stands in cimportplugin.h, where
// moc has to see it.
#pragma once

#include <QtCore/QByteArray>
#include <QtCore/QDateTime>
#include <QtCore/QList>
#include <QtCore/QString>
#include <QtCore/QThread>
#include <QtCore/QtPlugin>

namespace Vesk {

/// Text in the eight-bit encoding of the engine boundary. Qt 4's fromAscii() is fromLatin1() unless
/// the application sets a codec for C strings; later ones have only the latter. A null pointer
/// gives a null string; a negative size means that the text is zero-terminated.
inline QString fromAscii(const char* text, int size = -1)
{
#if QT_VERSION < 0x050000
    return QString::fromAscii(text, size);
#else
    return QString::fromLatin1(text, size);
#endif
}

/// Whole seconds since 1970-01-01 UTC, all bits set for a time that 32 bits cannot say.
inline uint toTime_t(const QDateTime& time)
{
    const qint64 seconds = time.isValid() ? time.toMSecsSinceEpoch() / 1000 : -1;
    return seconds >= 0 && seconds < Q_INT64_C(0xffffffff) ? uint(seconds) : uint(-1);
}

/// Sorts as the qSort() of Qt 4 and 5 does. It is not stable, and which of several equal elements
/// comes last is part of the documented behaviour of the callers, so another sort is no
/// replacement.
template <typename T, typename LessThan>
void quickSort(QList<T>& list, LessThan lessThan, int first, int last)
{
    while (first < last) {
        // The first, middle and last element among themselves; the middle one is the pivot, which
        // waits at the end.
        const int middle = first + (last - first + 1) / 2;
        if (lessThan(list.at(last), list.at(first)))
            qSwap(list[last], list[first]);
        if (last - first == 1)
            return;
        if (lessThan(list.at(middle), list.at(first)))
            qSwap(list[middle], list[first]);
        if (lessThan(list.at(last), list.at(middle)))
            qSwap(list[last], list[middle]);
        if (last - first == 2)
            return;
        qSwap(list[middle], list[last]);

        // Those that are not in order change places, from both ends.
        int low = first;
        int high = last - 1;
        while (low < high) {
            while (low < high && lessThan(list.at(low), list.at(last)))
                ++low;
            while (low < high && lessThan(list.at(last), list.at(high)))
                --high;
            if (low < high)
                qSwap(list[low++], list[high--]);
        }
        if (lessThan(list.at(low), list.at(last)))
            ++low;
        qSwap(list[last], list[low]);
        quickSort(list, lessThan, first, low - 1);
        first = low + 1;
    }
}

template <typename T, typename LessThan>
inline void quickSort(QList<T>& list, LessThan lessThan)
{
    quickSort(list, lessThan, 0, int(list.size()) - 1);
}

/// Whether QThread says in a signal of its own that a thread was terminated.
#if QT_VERSION < 0x050000
const bool qtSignalsTermination = true;
#else
const bool qtSignalsTermination = false;
#endif

/// Connects that signal, where there is one, to `slot` of `receiver`.
inline void connectTerminated(QThread* thread, QObject* receiver, const char* slot)
{
#if QT_VERSION < 0x050000
    QObject::connect(thread, SIGNAL(terminated()), receiver, slot);
#else
    Q_UNUSED(thread);
    Q_UNUSED(receiver);
    Q_UNUSED(slot);
#endif
}

} // namespace Vesk

/// Exports `Class` as the plug-in object of library `name`. Qt 4's macro makes both entry points;
/// later ones make qt_plugin_instance() from Q_PLUGIN_METADATA in the class, and the verification
/// record is added here in the same four-line form.
#if QT_VERSION < 0x050000
#define VESK_EXPORT_PLUGIN(name, Class) Q_EXPORT_PLUGIN2(name, Class)
#else
#ifdef QT_NO_DEBUG
#define VESK_PLUGIN_DEBUG "false"
#else
#define VESK_PLUGIN_DEBUG "true"
#endif
#define VESK_EXPORT_PLUGIN(name, Class)                                                            \
    extern "C" Q_DECL_EXPORT const char* qt_plugin_query_verification_data()                       \
    {                                                                                              \
        return "pattern=QT_PLUGIN_VERIFICATION_DATA\n"                                             \
               "version=" QT_VERSION_STR "\n"                                                      \
               "debug=" VESK_PLUGIN_DEBUG "\n"                                                     \
               "buildkey=" VESK_BUILD_KEY;                                                         \
    }
#endif
