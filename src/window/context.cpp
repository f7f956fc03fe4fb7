// SPDX-License-Identifier: GPL-2.0-or-later
#include "context.h"

#include "cimportcontext.h"
#include "defaults.h"
#include "pictureformat.h"

#include <QtCore/QDir>

void setUpContext(qreal ratio)
{
    Vesk::CImportContext* context = Vesk::CImportContext::instance();
    const QString folder = pictureformat::folder(ratio);
    QDir().mkpath(folder); // where it cannot be made there are no pictures
    context->setConfigDir(folder);
    context->setSnapSize(pictureformat::takenSize(ratio));
    context->setFileFormats(QString::fromLatin1(defaults::formats));
    context->setLimitFileFormat(true);
    context->setDvdSupport(true);
    context->setBdSupport(true);
}
