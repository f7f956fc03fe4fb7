// SPDX-License-Identifier: LGPL-2.1-or-later
#pragma once

#include "vspbased/vspbasedglobal.h"

#include <QtCore/QList>
#include <QtCore/QMutex>
#include <QtCore/QObject>

namespace Vesk {

/// A list of objects that can itself be handed around as an object.
///
/// The operations may be called from several threads; the items themselves are not guarded. A new
/// list owns its items: they are deleted with it unless setOwner(false) was called.
class VSPBASED_EXPORT CVeskList : public QObject
{
    Q_OBJECT

public:
    /// Without items.
    explicit CVeskList(QObject* parent = 0);
    virtual ~CVeskList();

    /// The number of items.
    virtual int count();

    /// The item at `index`, in the order appended; null outside 0 … count() - 1.
    QObject* item(int index);

    /// Adds `object` at the end.
    void append(QObject* object);

    /// Whether the items are deleted with the list.
    void setOwner(bool owner);

private:
    QMutex m_mutex;
    QList<QObject*> m_items;
    bool m_owner;

    Q_DISABLE_COPY(CVeskList)
};

} // namespace Vesk
