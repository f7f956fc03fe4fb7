// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include <QtCore/QStringList>

class ImportSession;

/// Whether there is what writes pictures: Qt loads it when it is first asked, unless memory is
/// short. Takes a moment, for which the engine's start has to be waited for anyway.
bool canWritePictures();

/// Why pictures could not be made, as sentences for a person: the import does not say when it
/// cannot write its pictures, nor, for those of Blu-ray discs, into the temporary folder.
QStringList reasonsForLostPictures(const ImportSession& session);
