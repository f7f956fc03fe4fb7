// SPDX-License-Identifier: GPL-2.0-or-later
//
// The engine, from its door inward:
//
//   accesschain      the way that callers take to it
//   EngineManager    decides which kind of importer opens a path
//   media/           media files            picture/   frames into pictures
//   disc/            the files of discs, in folders and images
//   dvd/             DVDs                   bluray/    Blu-ray discs
//   timeline/        stream files in a row
//   bytes/           reading bytes that nobody vouches for
//   libav.h          owns the handles of the library below
//
// Of libraries only libav is asked what a file holds. Those that read the tables of discs crash on
// damaged ones, and those that read images write to standard error: dvd/, bluray/ and disc/ read
// both themselves, and look at every number before they use it.
//
// No object is shared between threads but the log and the tables that never change. Importers and
// loaders own the records that they hand out, and while idle neither a file nor a demuxer.
#pragma once

#include "vspavbased/iavmanager.h"

namespace engine {

class EngineManager final : public AVBased::IAVManager
{
public:
    AVBased::IAVImporter* createNamedImporter(const char* name) override;
    AVBased::IAVImporter* createImporter(const char* utf8Path) override;
    void beginImport() override;
};

} // namespace engine
