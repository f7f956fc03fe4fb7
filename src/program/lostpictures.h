// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include <QtCore/QStringList>

class ImportSession;

/// Why pictures could not be made, as sentences for a person: the import does not say when it
/// cannot write its pictures, nor, for those of Blu-ray discs, into the temporary folder.
QStringList reasonsForLostPictures(const ImportSession& session);
