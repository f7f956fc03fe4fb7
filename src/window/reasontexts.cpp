// SPDX-License-Identifier: GPL-2.0-or-later
#include "reasontexts.h"

#include <QtCore/QCoreApplication>

namespace {

/// For lupdate to find; nothing reads it. What src/vspavbased/refusals.cpp,
/// src/session/errornames.h and sourcefinder.cpp say.
[[maybe_unused]] const char* const reasons[] = {
    QT_TRANSLATE_NOOP("Reason", "not a media file, or of a kind that is not known"),
    QT_TRANSLATE_NOOP("Reason", "no disc in it"),
    QT_TRANSLATE_NOOP("Reason", "no video or audio in it"),
    QT_TRANSLATE_NOOP("Reason", "it is damaged or not complete"),
    QT_TRANSLATE_NOOP("Reason", "it is cut off"),
    QT_TRANSLATE_NOOP("Reason", "it is cut off: its index is missing"),
    QT_TRANSLATE_NOOP("Reason", "protected against copying"),
    QT_TRANSLATE_NOOP("Reason", "it took too long"),
    QT_TRANSLATE_NOOP("Reason", "its decoder crashed, or needed too much memory"),
    QT_TRANSLATE_NOOP("Reason", "the file is empty"),
    QT_TRANSLATE_NOOP("Reason", "the disk cannot read it"),
    QT_TRANSLATE_NOOP("Reason", "neither a file nor a folder"),
    QT_TRANSLATE_NOOP("Reason", "it is not there any more"),
    QT_TRANSLATE_NOOP("Reason", "no permission to read it"),
    QT_TRANSLATE_NOOP("Reason", "the engine cannot be started"),
    QT_TRANSLATE_NOOP("Reason", "it cannot be opened or read"),
    QT_TRANSLATE_NOOP("Reason", "not among the formats to import"),
    QT_TRANSLATE_NOOP("Reason", "among the forbidden formats"),
    QT_TRANSLATE_NOOP("Reason", "cannot be opened or read"),
    QT_TRANSLATE_NOOP("Reason", "no such file or folder"),
    QT_TRANSLATE_NOOP("Reason", "the name is no valid text"),
    QT_TRANSLATE_NOOP("Reason", "the folder cannot be read"),
};

} // namespace

QString translatedReason(const QString& reason)
{
    return QCoreApplication::translate("Reason", reason.toUtf8().constData());
}
