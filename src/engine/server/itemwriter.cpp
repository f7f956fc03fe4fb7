// SPDX-License-Identifier: GPL-2.0-or-later
#include "server/itemwriter.h"

#include "vspavbased/idvdinfo.h"
#include "vspavbased/imovieinfoext.h"

#include <memory>
#include <unordered_map>
#include <utility>

using flatbuffers::FlatBufferBuilder;
using flatbuffers::Offset;

namespace engine {

namespace {

template <typename T>
using Offsets = std::vector<Offset<T>>;

Offset<flatbuffers::String> text(FlatBufferBuilder& builder, const char* text)
{
    return builder.CreateString(text ? text : "");
}

Offset<wire::Stream> writeStream(FlatBufferBuilder& builder, const AVBased::AVStreamInfo& record)
{
    return wire::CreateStream(
        builder, text(builder, record.name), record.kind, record.id,
        text(builder, record.codecName), builder.CreateString(record.fourcc, sizeof(record.fourcc)),
        text(builder, record.language), record.width, record.height, record.frameRate,
        record.aspectRatio, record.sampleRate, record.channels, record.channelLayout,
        record.bitRate, record.duration);
}

Offset<wire::Movie> writeMovie(FlatBufferBuilder& builder, const AVBased::AVMovieInfo& record,
                               bool isMain)
{
    Offsets<wire::Stream> streams;
    for (std::uint32_t i = 0; i < record.streamCount; ++i)
        streams.push_back(writeStream(builder, record.streams[i]));
    Offsets<wire::Tag> tags;
    for (std::uint32_t i = 0; i < record.metaCount; ++i) {
        tags.push_back(wire::CreateTag(builder, text(builder, record.meta[i].key),
                                       text(builder, record.meta[i].value)));
    }
    return wire::CreateMovie(builder, text(builder, record.name), record.id,
                             text(builder, record.format), builder.CreateVector(streams),
                             builder.CreateVector(tags), isMain);
}

Offset<wire::DvdTitle> writeDvdTitle(FlatBufferBuilder& builder,
                                     const AVBased::DVDTitleInfo& record)
{
    Offsets<wire::Subpicture> subpictures;
    for (std::uint32_t i = 0; i < record.subpictureCount; ++i) {
        const AVBased::DVDSubpictureInfo& subpicture = record.subpictures[i];
        subpictures.push_back(
            wire::CreateSubpicture(builder, text(builder, subpicture.name), subpicture.streamId));
    }
    Offsets<wire::AudioTrack> audio;
    for (std::uint32_t i = 0; i < record.audioCount; ++i) {
        const AVBased::DVDAudioInfo& track = record.audio[i];
        audio.push_back(wire::CreateAudioTrack(
            builder, text(builder, track.codec), text(builder, track.language),
            text(builder, track.kind), track.streamId, track.channels, track.sampleRate,
            track.codeExtension));
    }
    return wire::CreateDvdTitle(builder, record.duration,
                                builder.CreateVector(record.chapterStarts, record.chapterCount),
                                builder.CreateVector(subpictures), builder.CreateVector(audio));
}

Offset<wire::Dvd> writeDvd(FlatBufferBuilder& builder, AVBased::IDVDInfo& dvd,
                           const std::string& path)
{
    Offsets<wire::DvdTitleSet> sets;
    for (std::uint32_t i = 0; i < dvd.titleSetCount(); ++i) {
        const AVBased::DVDTitleSetInfo& set = *dvd.titleSet(i);
        Offsets<wire::DvdTitle> titles;
        for (std::uint32_t j = 0; j < set.titleCount; ++j)
            titles.push_back(writeDvdTitle(builder, set.titles[j]));
        sets.push_back(wire::CreateDvdTitleSet(builder, set.id, builder.CreateVector(titles)));
    }
    return wire::CreateDvd(builder, builder.CreateVector(sets), dvd.isDiscScrambled(path.c_str()));
}

/// All that the extension answers to.
Offset<flatbuffers::Vector<Offset<wire::Tag>>> writeFacts(FlatBufferBuilder& builder,
                                                          AVBased::IMovieInfoExt& extension)
{
    Offsets<wire::Tag> facts;
    for (const char* key : {"is_drm_encryption"}) {
        if (const char* value = extension.value(key))
            facts.push_back(wire::CreateTagDirect(builder, key, value));
    }
    return builder.CreateVector(facts);
}

/// Writes a Blu-ray disc. Chapters play with the first of the times of their titles, mostly: each
/// array of times is written once.
class DiscWriter
{
public:
    DiscWriter(FlatBufferBuilder& builder, AVBased::IBDLoader& loader)
        : m_builder(builder)
        , m_loader(loader)
    {}

    Offset<wire::Disc> write();

private:
    struct FreeList
    {
        void operator()(AVBased::IBDList* list) const { list->release(); }
    };
    using ListPtr = std::unique_ptr<AVBased::IBDList, FreeList>;

    void writeFiles();
    void writeTitles();
    Offset<wire::Title> writeTitle(const char* name, const AVBased::BDPlayInfo& record);
    std::uint32_t writeTimes(const double* times, std::uint32_t count);

    FlatBufferBuilder& m_builder;
    AVBased::IBDLoader& m_loader;
    Offsets<wire::StreamFile> m_files;
    std::unordered_map<std::string, std::uint32_t> m_fileIndex;
    Offsets<wire::Title> m_titles;
    Offsets<wire::ClipTimes> m_times;
    /// By their address: where times have been written, and how many.
    std::unordered_map<const double*, std::pair<std::uint32_t, std::uint32_t>> m_timesIndex;
};

Offset<wire::Disc> DiscWriter::write()
{
    const AVBased::BDDiscInfo& disc = *m_loader.discInfo(0);
    writeFiles();
    writeTitles();
    return wire::CreateDisc(m_builder, text(m_builder, disc.name), disc.scrambled != 0,
                            m_builder.CreateVector(m_files), m_builder.CreateVector(m_titles),
                            m_builder.CreateVector(m_times));
}

void DiscWriter::writeFiles()
{
    const ListPtr files(m_loader.fileList());
    for (std::uint32_t i = 0; i < files->count(); ++i) {
        const char* name = files->item(i)->name();
        const AVBased::AVMovieInfo* record = m_loader.fileMovieInfo(name);
        const auto movie = record ? writeMovie(m_builder, *record, false) : 0;
        m_files.push_back(wire::CreateStreamFile(m_builder, text(m_builder, name), movie));
        m_fileIndex.emplace(name, i);
    }
}

void DiscWriter::writeTitles()
{
    const ListPtr titles(m_loader.titleList());
    for (std::uint32_t i = 0; i < titles->count(); ++i) {
        const char* name = titles->item(i)->name();
        m_titles.push_back(writeTitle(name, *m_loader.titleInfo(name)));
    }
}

Offset<wire::Title> DiscWriter::writeTitle(const char* name, const AVBased::BDPlayInfo& record)
{
    std::vector<std::uint32_t> files;
    for (std::uint32_t i = 0; i < record.clips->count(); ++i)
        files.push_back(m_fileIndex.at(record.clips->item(i)->name()));
    const std::uint32_t inTimes = writeTimes(record.inTimes, record.clipCount);
    const std::uint32_t outTimes = writeTimes(record.outTimes, record.clipCount);
    std::uint32_t count = 0;
    const AVBased::BDPlayInfo* chapters = m_loader.chapters(name, &count);
    Offsets<wire::Chapter> written;
    for (std::uint32_t i = 0; i < count; ++i) {
        const AVBased::BDPlayInfo& chapter = chapters[i];
        written.push_back(
            wire::CreateChapter(m_builder, writeTimes(chapter.inTimes, chapter.clipCount),
                                writeTimes(chapter.outTimes, chapter.clipCount), chapter.clipCount,
                                chapter.timeStamp, chapter.duration));
    }
    return wire::CreateTitle(m_builder, text(m_builder, name), m_builder.CreateVector(files),
                             inTimes, outTimes, record.timeStamp, record.duration,
                             m_builder.CreateVector(written));
}

/// The place of times that begin with these.
std::uint32_t DiscWriter::writeTimes(const double* times, std::uint32_t count)
{
    const auto known = m_timesIndex.find(times);
    if (known != m_timesIndex.end() && known->second.second >= count)
        return known->second.first;
    const auto place = static_cast<std::uint32_t>(m_times.size());
    m_times.push_back(wire::CreateClipTimes(m_builder, m_builder.CreateVector(times, count)));
    m_timesIndex.insert_or_assign(times, std::pair(place, count));
    return place;
}

} // namespace

Offset<wire::Item> writeItem(FlatBufferBuilder& builder, AVBased::IAVImporter& importer,
                             const std::string& path, const std::vector<std::uint8_t>& reopening)
{
    auto* dvd = static_cast<AVBased::IDVDInfo*>(importer.queryExtension("IDVDInfo"));
    auto* extension =
        static_cast<AVBased::IMovieInfoExt*>(importer.queryExtension("IMovieInfoExt"));
    Offsets<wire::Movie> movies;
    for (std::uint32_t i = 0; i < importer.movieCount(); ++i) {
        const AVBased::AVMovieInfo& record = *importer.movieInfo(i);
        movies.push_back(writeMovie(builder, record, dvd && dvd->isMainTitle(record.id)));
    }
    const AVBased::AVImporterDescriptor& descriptor = *importer.descriptor();
    const auto facts = extension ? writeFacts(builder, *extension) : 0;
    const auto disc = dvd ? writeDvd(builder, *dvd, path) : 0;
    return wire::CreateItem(builder, text(builder, descriptor.kind), text(builder, descriptor.name),
                            builder.CreateVector(movies), facts, disc,
                            builder.CreateVector(reopening));
}

Offset<wire::Disc> writeDisc(FlatBufferBuilder& builder, AVBased::IBDLoader& loader)
{
    return DiscWriter(builder, loader).write();
}

} // namespace engine
