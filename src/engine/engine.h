// SPDX-License-Identifier: GPL-2.0-or-later
//
// The engine, from its door inward:
//
//   openItem()       decides which kind of importer opens a path
//   server/          the program that hosts' engine library starts, and how it is confined
//   files/           the one way to the file system
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

#include <string>

namespace AVBased {
class IAVImporter;
}

namespace engine {

/// Opens a media file or a DVD. Owned by the caller; null, with the reason in the log, when it
/// cannot be opened.
AVBased::IAVImporter* openItem(const std::string& path);

/// The same for a timeline file. It makes other files be read: only what somebody vouches for is
/// to be opened with this.
AVBased::IAVImporter* openTimeline(const std::string& path);

} // namespace engine
