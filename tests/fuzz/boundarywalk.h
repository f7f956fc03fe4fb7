// SPDX-License-Identifier: GPL-2.0-or-later
//
// Reads all that the boundary's objects give, as the module might: what lies outside of anything,
// the sanitizers tell.
#pragma once

#include "vspavbased/iavimporter.h"
#include "vspavbased/ibdloader.h"

/// `path` is the item's.
void walk(AVBased::IAVImporter& importer, const char* path);

/// Of a disc that is open.
void walk(AVBased::IBDLoader& loader);
