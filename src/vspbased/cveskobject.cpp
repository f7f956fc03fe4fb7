// SPDX-License-Identifier: LGPL-2.1-or-later
#include "vspbased/cveskobject.h"

namespace Vesk {

CVeskObject::CVeskObject(CVeskObjectPrivate& dd, QObject* parent)
    : QObject(parent)
    , m_private(&dd)
{
    dd.q_ptr = this;
}

CVeskObject::~CVeskObject()
{
    delete m_private;
}

} // namespace Vesk
