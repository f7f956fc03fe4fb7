// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include "vspavbased/iavimporter.h"

/// What the module does for a picture: seeks, reads some frames and converts the last. Nothing
/// where the movie or the stream cannot be opened.
void takePicture(AVBased::IAVImporter& importer, int movie, int stream, int positionMs);
