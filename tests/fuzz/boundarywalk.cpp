// SPDX-License-Identifier: GPL-2.0-or-later
#include "boundarywalk.h"

#include "vspavbased/idvdinfo.h"
#include "vspavbased/imovieinfoext.h"

#include <cstring>
#include <memory>
#include <vector>

namespace {

/// Keeps the reading from being left out.
volatile std::size_t seen;

void see(const char* text)
{
    seen = seen + std::strlen(text);
}

template <typename T>
void see(const T* values, std::size_t count)
{
    for (std::size_t i = 0; i < count; ++i)
        seen = seen + (values[i] > 0);
}

struct Release
{
    void operator()(AVBased::IBDList* list) const { list->release(); }
};
using ListPtr = std::unique_ptr<AVBased::IBDList, Release>;

void walk(const AVBased::AVMovieInfo& movie)
{
    see(movie.name);
    see(movie.format);
    for (std::uint32_t i = 0; i < movie.streamCount; ++i) {
        const AVBased::AVStreamInfo& stream = movie.streams[i];
        see(stream.name);
        see(stream.codecName);
        see(stream.language);
        see(stream.fourcc, sizeof(stream.fourcc));
        see(&stream.duration, 1);
    }
    for (std::uint32_t i = 0; i < movie.metaCount; ++i) {
        see(movie.meta[i].key);
        see(movie.meta[i].value);
    }
}

void walk(const AVBased::DVDTitleInfo& title)
{
    see(title.chapterStarts, title.chapterCount);
    for (std::uint32_t i = 0; i < title.subpictureCount; ++i)
        see(title.subpictures[i].name);
    for (std::uint32_t i = 0; i < title.audioCount; ++i) {
        see(title.audio[i].codec);
        see(title.audio[i].language);
        see(title.audio[i].kind);
    }
}

void walk(const AVBased::BDPlayInfo& played)
{
    see(played.inTimes, played.clipCount);
    see(played.outTimes, played.clipCount);
    for (std::uint32_t i = 0; played.clips && i < played.clipCount; ++i)
        see(played.clips->item(i)->name());
}

} // namespace

void walk(AVBased::IAVImporter& importer, const char* path)
{
    see(importer.descriptor()->kind);
    see(importer.descriptor()->name);
    auto* dvd = static_cast<AVBased::IDVDInfo*>(importer.queryExtension("IDVDInfo"));
    for (std::uint32_t i = 0; i < importer.movieCount(); ++i) {
        walk(*importer.movieInfo(i));
        seen = seen + (dvd && dvd->isMainTitle(importer.movieInfo(i)->id));
    }
    if (auto* more =
            static_cast<AVBased::IMovieInfoExt*>(importer.queryExtension("IMovieInfoExt"))) {
        if (const char* value = more->value("is_drm_encryption"))
            see(value);
    }
    for (std::uint32_t i = 0; dvd && i < dvd->titleSetCount(); ++i) {
        const AVBased::DVDTitleSetInfo& set = *dvd->titleSet(i);
        for (std::uint32_t j = 0; j < set.titleCount; ++j)
            walk(set.titles[j]);
    }
    seen = seen + (dvd && dvd->isDiscScrambled(path));
}

void walk(AVBased::IBDLoader& loader)
{
    see(loader.discInfo(0)->name);
    const ListPtr files(loader.fileList());
    for (std::uint32_t i = 0; i < files->count(); ++i) {
        if (const AVBased::AVMovieInfo* movie = loader.fileMovieInfo(files->item(i)->name()))
            walk(*movie);
    }
    const ListPtr titles(loader.titleList());
    for (std::uint32_t i = 0; i < titles->count(); ++i) {
        const char* name = titles->item(i)->name();
        walk(*loader.titleInfo(name));
        std::uint32_t count = 0;
        const AVBased::BDPlayInfo* chapters = loader.chapters(name, &count);
        for (std::uint32_t j = 0; j < count; ++j)
            walk(chapters[j]);
    }
}
