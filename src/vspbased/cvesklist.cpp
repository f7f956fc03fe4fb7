// SPDX-License-Identifier: LGPL-2.1-or-later
#include "vspbased/cvesklist.h"

#include <QtCore/QMutexLocker>

namespace Vesk {

CVeskList::CVeskList(QObject* parent)
    : QObject(parent)
    , m_owner(true)
{}

CVeskList::~CVeskList()
{
    if (m_owner)
        qDeleteAll(m_items);
}

int CVeskList::count()
{
    QMutexLocker lock(&m_mutex);
    return m_items.count();
}

QObject* CVeskList::item(int index)
{
    QMutexLocker lock(&m_mutex);
    return m_items.value(index, 0);
}

void CVeskList::append(QObject* object)
{
    QMutexLocker lock(&m_mutex);
    m_items.append(object);
}

void CVeskList::setOwner(bool owner)
{
    QMutexLocker lock(&m_mutex);
    m_owner = owner;
}

} // namespace Vesk
