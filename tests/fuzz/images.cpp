// SPDX-License-Identifier: GPL-2.0-or-later
//
// Disc images. Mostly they are empty, so an input holds only what is not zero: the number of a
// sector, how many bytes there are of it, both in two bytes, the lower first, and the bytes.
#include "bluray/bdloader.h"
#include "boundarywalk.h"
#include "bytes/plainfile.h"
#include "disc/isovolume.h"
#include "disc/sector.h"
#include "disc/udfvolume.h"
#include "engine.h"
#include "memoryfile.h"
#include "server/openmovie.h"

#include <algorithm>

using namespace engine;

namespace {

constexpr int deepest = 6;

/// Reads on until `filesLeft` is used up, as images may hold folders inside of themselves.
void walk(const Volume& volume, const VolumeEntry& folder, int depth, int& filesLeft)
{
    for (const auto& [name, entry] : volume.readFolder(folder, 100)) {
        if (--filesLeft <= 0)
            return;
        if (entry.isFolder && depth < deepest)
            walk(volume, entry, depth + 1, filesLeft);
        const ByteSourcePtr file = volume.open(entry);
        if (!file)
            continue;
        Bytes bytes = readBeginning(*file, 4 * sectorSize);
        file->read(file->size() - std::min<std::uint64_t>(file->size(), bytes.size()), bytes.data(),
                   bytes.size());
    }
}

template <typename VolumePtr>
void walk(const VolumePtr& volume)
{
    int filesLeft = 40; // each may be a folder that is as large as any
    if (volume)
        walk(*volume, volume->root(), 0, filesLeft);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    static MemoryFile file("/image.iso");
    file.clear();
    constexpr std::size_t headSize = 4;
    const ByteView input(data, size);
    for (std::size_t at = 0; input.holds(at, headSize);) {
        const ByteView bytes = input.part(at + headSize, input.le16(at + 2) % (sectorSize + 1));
        file.write(input.le16(at) * std::uint64_t{sectorSize}, bytes.data(), bytes.size());
        at += headSize + bytes.size();
    }
    walk(IsoVolume::open(PlainFile::open(file.path())));
    walk(UdfVolume::open(PlainFile::open(file.path()), file.path()));
    if (const ImporterPtr importer{fullEngine().open(file.path()).importer})
        walk(*importer, file.path().c_str());
    const std::unique_ptr<AVBased::IBDLoader, Release> loader(new BdLoader);
    if (loader->open(file.path().c_str()))
        walk(*loader);
    return 0;
}
