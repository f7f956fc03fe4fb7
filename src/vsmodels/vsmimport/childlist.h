// SPDX-License-Identifier: LGPL-2.1-or-later
#pragma once

#include <QtCore/QList>

class QObject;

namespace Vesk {

/// Lists of child objects that a record owns. All information classes share these rules.

/// Shrinks `list` from the end, deleting what it removes, or lets it grow by new objects with
/// `parent`, until it holds `count` of them. A negative count is 0.
template <typename T>
void resizeChildList(QList<T*>& list, int count, QObject* parent = 0)
{
    while (list.count() > qMax(count, 0))
        delete list.takeLast();
    while (list.count() < count)
        list.append(new T(parent));
}

/// The element at `index`; null outside the list.
template <typename T>
T* childAt(const QList<T*>& list, int index)
{
    return list.value(index, 0);
}

/// Deletes the elements in list order and empties the list.
template <typename T>
void clearChildList(QList<T*>& list)
{
    while (!list.isEmpty())
        delete list.takeFirst();
}

} // namespace Vesk
