// SPDX-License-Identifier: GPL-2.0-or-later
#include "context.h"

#include "cimportcontext.h"
#include "defaults.h"
#include "outputfile.h"
#include "pictureformat.h"

QString setUpContext(qreal ratio)
{
    Vesk::CImportContext* context = Vesk::CImportContext::instance();
    const QString folder = pictureformat::folder(ratio);
    QString error = reasonAgainstWriting(folder); // makes it
    context->setConfigDir(folder);
    context->setSnapSize(pictureformat::takenSize(ratio));
    context->setFileFormats(QString::fromLatin1(defaults::formats));
    context->setLimitFileFormat(true);
    context->setDvdSupport(true);
    context->setBdSupport(true);
    return error;
}
