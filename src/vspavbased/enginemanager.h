// SPDX-License-Identifier: GPL-2.0-or-later
//
// The engine, from its door inward:
//
//   accesschain      the way that callers take to it
//   EngineManager    decides which kind of importer opens a path
//   media/           media files           dvd/       DVDs          bluray/   Blu-ray discs
//   timeline/        stream files in a row  picture/   frames into pictures
//   libav.h, libudfread.h   own the handles of the libraries below
//
// No object is shared between threads but the log and the tables that never change. Importers and
// loaders own the records that they hand out, and while idle neither a file nor a demuxer.
#pragma once

#include "vspavbased/iavmanager.h"

namespace engine {

class EngineManager final : public AVBased::IAVManager
{
public:
    EngineManager();

    AVBased::IAVImporter* createNamedImporter(const char* name) override;
    AVBased::IAVImporter* createImporter(const char* utf8Path) override;
    void beginImport() override;
};

} // namespace engine
