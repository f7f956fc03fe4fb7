// SPDX-License-Identifier: GPL-2.0-or-later
//
// Playlists and clip information of Blu-ray discs.
#include "bluray/playlist.h"

#include <cstdlib>

using namespace engine;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const Bytes bytes(data, data + size);
    if (const auto playlist = parsePlaylist(bytes)) {
        for (const PlayMark& mark : playlist->marks) {
            if (mark.item >= playlist->items.size())
                std::abort();
        }
    }
    if (const auto clip = parseClipInformation(bytes)) {
        for (const EntryPoint& entry : clip->entryPoints) {
            const std::size_t sequence = clip->sequenceOf(std::uint8_t(entry.packet), entry.time);
            const std::int64_t position = clip->positionOf(entry.time, sequence);
            if (sequence >= clip->sequences.size() || position < 0 || position > clip->duration())
                std::abort();
        }
    }
    return 0;
}
