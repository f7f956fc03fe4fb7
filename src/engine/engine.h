// SPDX-License-Identifier: GPL-2.0-or-later
//
// The engine, from its door inward:
//
//   Engine           what is asked of it; fullEngine() decides which kind of importer opens a path
//   server/          the programs that hosts' engine library starts, and how they are confined
//   files/           the one way to the file system
//   media/           media files            picture/   frames into pictures
//   disc/            the files of discs, in folders and images
//   dvd/             DVDs                   bluray/    Blu-ray discs
//   timeline/        stream files in a row
//   bytes/           reading bytes that nobody vouches for
//   libav.h          owns the handles of the library below
//   refusal.h        why an item cannot be opened
//
// Of libraries only libav is asked what a file holds. Those that read the tables of discs crash on
// damaged ones, and those that read images write to standard error: dvd/, bluray/ and disc/ read
// both themselves, and look at every number before they use it.
//
// No object is shared between threads but the log and the tables that never change. Importers and
// loaders own the records that they hand out, and while idle neither a file nor a demuxer.
#pragma once

#include "bytes/bytesource.h"
#include "opening.h"
#include "vspavbased/ibdloader.h"
#include "vspavbased/iimageconverter.h"

#include <string>

namespace engine {

/// What the engine does. Objects that it hands out are the caller's; null, with the reason noted
/// as refusal.h says or in the log, when something cannot be opened or made.
class Engine
{
public:
    /// Opens a media file or a DVD.
    virtual Opening open(const std::string& path) = 0;

    /// Opens a timeline file. It makes other files be read: only what somebody vouches for is to be
    /// opened with this.
    virtual AVBased::IAVImporter* openTimeline(const std::string& path) = 0;

    /// What spares looking for the streams of a media file when it is opened again; empty for
    /// importers of other kinds.
    virtual Bytes reopening(const AVBased::IAVImporter& importer) = 0;

    /// An importer of a file that was described before, for its sources alone. Null, with nothing
    /// in the log, when `reopening` says nothing of use.
    virtual AVBased::IAVImporter* reopen(const std::string& path, const Bytes& reopening) = 0;

    /// Opens a Blu-ray disc.
    virtual AVBased::IBDLoader* openDisc(const std::string& path) = 0;

    /// Pictures of 32 bits a pixel.
    virtual AVBased::IImageConverter* createConverter(unsigned width, unsigned height) = 0;

protected:
    ~Engine() = default;
};

/// All of it.
Engine& fullEngine();

} // namespace engine
