// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include "facts/item.h"

#include <QtCore/QStringList>

/// Whether there is what writes pictures: Qt loads it when it is first asked, unless memory is
/// short. Takes a moment, for which the engine's start has to be waited for anyway.
bool canWritePictures();

/// Whether the pictures of `item`, whose capture is over, could not even be begun with: the import
/// does not say when it cannot write the timeline that those of a Blu-ray disc are taken from.
bool lacksCapture(const facts::Item& item);

/// Why pictures could not be made, as sentences for a person: the import does not say when it
/// cannot write them. `uncaptured` is the path of a disc that lacks its capture; empty without one.
QStringList reasonsForLostPictures(const QString& uncaptured);
