// SPDX-License-Identifier: LGPL-2.1-or-later
#include "cdvdsubtitle.h"

namespace Vesk {

class CDVDSubtitlePrivate
{
public:
    QString name;
    unsigned int streamId = 0xFFFFFFFFu;
};

CDVDSubtitle::CDVDSubtitle(QObject* parent)
    : QObject(parent)
    , d(new CDVDSubtitlePrivate)
{}

CDVDSubtitle::~CDVDSubtitle()
{
    delete d;
}

QString CDVDSubtitle::name() const
{
    return d->name;
}

void CDVDSubtitle::setName(const QString& name)
{
    d->name = name;
}

unsigned int CDVDSubtitle::streamId() const
{
    return d->streamId;
}

void CDVDSubtitle::setStreamId(unsigned int id)
{
    d->streamId = id;
}

} // namespace Vesk
