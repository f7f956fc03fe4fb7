// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include "engine_generated.h"
#include "vspavbased/iavimporter.h"
#include "vspavbased/ibdloader.h"

#include <cstdint>
#include <string>
#include <vector>

namespace engine {

/// The engine's records as a message. `path` is the item's; `reopening` spares looking for the
/// streams again when a picture is taken.
flatbuffers::Offset<wire::Item> writeItem(flatbuffers::FlatBufferBuilder& builder,
                                          AVBased::IAVImporter& importer, const std::string& path,
                                          const std::vector<std::uint8_t>& reopening);

/// Of a loader that is open.
flatbuffers::Offset<wire::Disc> writeDisc(flatbuffers::FlatBufferBuilder& builder,
                                          AVBased::IBDLoader& loader);

} // namespace engine
