// SPDX-License-Identifier: GPL-2.0-or-later
#include "refusals.h"

#include "vspavbased/enginecontrol.h"

#include <QtCore/QMutexLocker>

namespace {

/// The module puts a separator behind a DVD's path.
QString keyOf(QString path)
{
    while (path.length() > 1 && path.endsWith(QLatin1Char('/')))
        path.chop(1);
    return path;
}

} // namespace

Refusals::Refusals()
{
    AVBased::setRefusalReceiver(receive, this);
}

Refusals::~Refusals()
{
    AVBased::setRefusalReceiver(nullptr, nullptr);
}

void Refusals::receive(const char* path, int kind, const char* reason, void* context)
{
    auto* self = static_cast<Refusals*>(context);
    const QString key = keyOf(QString::fromUtf8(path));
    QMutexLocker lock(&self->m_mutex);
    // An image is tried as one kind of disc and then as the other: the greater one tells more.
    const auto known = self->m_refusals.constFind(key);
    if (known == self->m_refusals.constEnd() || kind > known->kind)
        self->m_refusals.insert(key, {kind, QString::fromUtf8(reason)});
}

Refusals::Refusal Refusals::take(const QString& path)
{
    QMutexLocker lock(&m_mutex);
    return m_refusals.take(keyOf(path));
}
