// SPDX-License-Identifier: GPL-2.0-or-later
#include "fakeobjects.h"

#include <QtCore/QFile>

#include <cstring>

FakeMovieRecord::FakeMovieRecord(const FakeMovie& movie)
    : m_movie(movie)
    , m_record()
{
    for (const FakeStream& stream : m_movie.streams) {
        AVBased::AVStreamInfo record{};
        record.name = stream.name.c_str();
        record.kind = stream.kind;
        record.id = stream.id;
        record.codecName = stream.codec.c_str();
        std::memcpy(record.fourcc, "FAKE", 4);
        record.language = stream.language.c_str();
        record.width = stream.width;
        record.height = stream.height;
        record.frameRate = stream.frameRate;
        record.aspectRatio = stream.aspectRatio;
        record.sampleRate = stream.sampleRate;
        record.channels = stream.channels;
        record.channelLayout = stream.channelLayout;
        record.bitRate = stream.bitRate;
        record.duration = stream.duration;
        m_streams.push_back(record);
    }
    for (const auto& tag : m_movie.tags)
        m_tags.push_back({tag.first.c_str(), tag.second.c_str()});
    m_record.name = m_movie.name.c_str();
    m_record.id = m_movie.id;
    m_record.streamCount = quint32(m_streams.size());
    m_record.streams = m_streams.data();
    m_record.metaCount = quint32(m_tags.size());
    m_record.meta = m_tags.data();
    m_record.format = m_movie.format.c_str();
}

AVBased::IAVImporter* FakeManager::createNamedImporter(const char* name)
{
    FakeEngine& engine = FakeEngine::instance();
    engine.note(QStringLiteral("createNamedImporter %1").arg(QLatin1String(name)));
    return engine.hasTimeline ? engine.make<FakeTimeline>() : nullptr;
}

AVBased::IAVImporter* FakeManager::createImporter(const char* utf8Path)
{
    FakeEngine& engine = FakeEngine::instance();
    const QByteArray path(utf8Path);
    const bool isTimeline = path.endsWith(".seix");
    engine.note(QStringLiteral("createImporter %1")
                    .arg(isTimeline ? QStringLiteral("(timeline)") : QString::fromUtf8(path)));
    if (isTimeline)
        return engine.anyTimeline ? engine.make<FakeImporter>(*engine.anyTimeline) : nullptr;
    const auto item = engine.items.constFind(path);
    return item == engine.items.constEnd() ? nullptr : engine.make<FakeImporter>(*item);
}

void FakeManager::beginImport()
{
    FakeEngine::instance().note(QStringLiteral("beginImport"));
}

FakeImporter::FakeImporter(const FakeItem& item)
    : FakeObject(QStringLiteral("importer"))
    , m_item(item)
{
    for (const FakeMovie& movie : m_item.movies)
        m_movies.push_back(std::make_unique<FakeMovieRecord>(movie));
    if (!m_item.dvd)
        return;
    for (const FakeTitleSet& set : m_item.dvd->sets) {
        std::vector<AVBased::DVDTitleInfo> titles;
        for (const FakeTitle& title : set.titles) {
            AVBased::DVDTitleInfo record{};
            record.duration = title.duration;
            record.chapterCount = quint32(title.chapters.size());
            record.chapterStarts = title.chapters.data();
            record.audioCount = title.claimedAudio.value_or(quint32(title.audio.size()));
            std::copy(title.audio.begin(), title.audio.end(), record.audio);
            record.subpictureCount = quint32(title.subtitles.size());
            std::copy(title.subtitles.begin(), title.subtitles.end(), record.subpictures);
            titles.push_back(record);
        }
        m_titles.push_back(std::move(titles));
        AVBased::DVDTitleSetInfo record{};
        record.id = set.id;
        record.titleCount = quint32(m_titles.back().size());
        record.titles = m_titles.back().data();
        m_sets.push_back(record);
    }
}

const AVBased::AVImporterDescriptor* FakeImporter::descriptor()
{
    static const AVBased::AVImporterDescriptor descriptor = {"fake", "Fake importer"};
    called(QStringLiteral("descriptor"));
    return &descriptor;
}

void* FakeImporter::queryExtension(const char* name)
{
    called(QStringLiteral("queryExtension %1").arg(QLatin1String(name)));
    if (std::strcmp(name, "IMovieInfoExt") == 0 && m_item.hasMovieInfoExt)
        return static_cast<AVBased::IMovieInfoExt*>(this);
    if (std::strcmp(name, "IDVDInfo") == 0 && m_item.dvd)
        return static_cast<AVBased::IDVDInfo*>(this);
    return nullptr;
}

std::uint32_t FakeImporter::movieCount()
{
    return quint32(m_movies.size());
}

const AVBased::AVMovieInfo* FakeImporter::movieInfo(std::uint32_t index)
{
    called(QStringLiteral("movieInfo %1").arg(index));
    return index < m_movies.size() ? m_movies[index]->get() : nullptr;
}

AVBased::IAVSource* FakeImporter::openSource(std::int32_t movieId, std::int32_t videoStreamId,
                                             std::int32_t audioStreamId)
{
    called(
        QStringLiteral("openSource %1 %2 %3").arg(movieId).arg(videoStreamId).arg(audioStreamId));
    return m_item.hasSource ? FakeEngine::instance().make<FakeSource>(m_item.reads) : nullptr;
}

void FakeImporter::close()
{
    called(QStringLiteral("close"));
}

void FakeImporter::release()
{
    released();
}

const char* FakeImporter::value(const char* key)
{
    called(QStringLiteral("value %1").arg(QLatin1String(key)));
    return m_item.drm ? m_item.drm->c_str() : nullptr;
}

std::uint32_t FakeImporter::titleSetCount()
{
    return quint32(m_sets.size());
}

const AVBased::DVDTitleSetInfo* FakeImporter::titleSet(std::uint32_t index)
{
    called(QStringLiteral("titleSet %1").arg(index));
    return index < m_sets.size() ? &m_sets[index] : nullptr;
}

bool FakeImporter::isDiscScrambled(const char* utf8Path)
{
    called(QStringLiteral("isDiscScrambled %1").arg(QString::fromUtf8(utf8Path)));
    return m_item.dvd->scrambled;
}

bool FakeImporter::isMainTitle(std::int32_t movieId)
{
    return m_item.dvd->mainMovies.contains(movieId);
}

FakeSource::FakeSource(const std::vector<FakeRead>& reads)
    : FakeObject(QStringLiteral("source"))
    , m_reads(reads)
{}

void FakeSource::seek(std::int32_t positionMs)
{
    called(QStringLiteral("seek %1").arg(positionMs));
    m_frame.number = 0;
}

bool FakeSource::readFrame(std::int64_t* positionMs, AVBased::IAVFrame** frame, std::int32_t* flags,
                           std::int32_t mode)
{
    called(QStringLiteral("readFrame %1").arg(mode));
    const size_t index = qMin(size_t(m_frame.number), m_reads.size() - 1);
    ++m_frame.number;
    const FakeRead read = m_reads[index];
    const bool hasFrame = read == FakeRead::Frame || read == FakeRead::LastFrame;
    *frame = hasFrame ? reinterpret_cast<AVBased::IAVFrame*>(&m_frame) : nullptr;
    *positionMs = 0;
    *flags = 0;
    return read == FakeRead::Frame || read == FakeRead::Nothing;
}

void FakeSource::release()
{
    released();
}

FakeConverter::FakeConverter(int width, int height)
    : FakeObject(QStringLiteral("converter"))
    , m_width(width)
    , m_height(height)
    , m_pixels(size_t(width) * size_t(height))
{}

AVBased::IAVPicture* FakeConverter::convert(AVBased::IAVFrame* frame)
{
    called(QStringLiteral("convert %1").arg(reinterpret_cast<FakeFrame*>(frame)->number));
    const std::uint32_t red = 0xFFFF0000;
    const std::uint32_t blue = 0xFF0000FF;
    const bool topDown = FakeEngine::instance().topDown;
    const size_t half = m_pixels.size() / 2;
    for (size_t i = 0; i < m_pixels.size(); ++i)
        m_pixels[i] = (i < half) == topDown ? red : blue;
    return this;
}

void FakeConverter::release()
{
    released();
}

std::int32_t FakeConverter::pixelFormat()
{
    return FakeEngine::instance().pictureFormat;
}

void FakeConverter::dimensions(std::int32_t* width, std::int32_t* height)
{
    *width = m_width;
    *height = m_height;
}

bool FakeConverter::isTopDown()
{
    return FakeEngine::instance().topDown;
}

void* FakeConverter::plane(std::int32_t index, std::int32_t*, std::int32_t*, std::int32_t*)
{
    return index == 0 ? m_pixels.data() : nullptr;
}

FakeList::FakeList(const std::vector<std::string>& names)
    : FakeObject(QStringLiteral("list"))
{
    for (const std::string& name : names) {
        m_items.push_back(std::make_unique<Item>());
        m_items.back()->text = name;
    }
}

void FakeList::release()
{
    released();
}

std::uint32_t FakeList::count()
{
    return quint32(m_items.size());
}

AVBased::IBDListItem* FakeList::item(std::uint32_t index)
{
    return index < m_items.size() ? m_items[index].get() : nullptr;
}

FakeLoader::FakeLoader()
    : FakeObject(QStringLiteral("loader"))
{}

bool FakeLoader::open(const char* utf8Path)
{
    called(QStringLiteral("open %1").arg(QString::fromUtf8(utf8Path)));
    const auto& discs = FakeEngine::instance().discs;
    const auto disc = discs.constFind(QByteArray(utf8Path));
    if (disc == discs.constEnd())
        return false;
    m_disc = *disc;
    m_info.name = m_disc.name.c_str();
    m_info.scrambled = m_disc.scrambled ? 1 : 0;
    return true;
}

const AVBased::BDDiscInfo* FakeLoader::discInfo(std::uint32_t)
{
    called(QStringLiteral("discInfo"));
    return m_disc.hasDisc ? &m_info : nullptr;
}

AVBased::IBDList* FakeLoader::fileList()
{
    called(QStringLiteral("fileList"));
    std::vector<std::string> names;
    for (const auto& file : m_disc.files)
        names.push_back(file.first);
    return m_disc.hasFiles ? FakeEngine::instance().make<FakeList>(names) : nullptr;
}

AVBased::IBDList* FakeLoader::titleList()
{
    called(QStringLiteral("titleList"));
    std::vector<std::string> names;
    for (const FakeBdTitle& title : m_disc.titles)
        names.push_back(title.name);
    return m_disc.hasTitles ? FakeEngine::instance().make<FakeList>(names) : nullptr;
}

const AVBased::AVMovieInfo* FakeLoader::fileMovieInfo(const char* file)
{
    for (const auto& candidate : m_disc.files) {
        if (candidate.first == file) {
            m_movies.push_back(std::make_unique<FakeMovieRecord>(candidate.second));
            return m_movies.back()->get();
        }
    }
    return nullptr;
}

const FakeBdTitle* FakeLoader::find(const char* title) const
{
    for (const FakeBdTitle& candidate : m_disc.titles) {
        if (candidate.name == title)
            return &candidate;
    }
    return nullptr;
}

const AVBased::BDPlayInfo* FakeLoader::keep(const FakePlayInfo& info)
{
    auto play = std::make_unique<Play>();
    std::vector<std::string> names;
    for (const FakeClip& clip : info.clips) {
        play->in.push_back(clip.in);
        play->out.push_back(clip.out);
        names.push_back(clip.file);
    }
    play->clips = std::make_unique<FakeList>(names);
    play->record.clipCount = info.claimedClips.value_or(quint32(names.size()));
    play->record.clips = play->clips.get();
    play->record.inTimes = play->in.data();
    play->record.outTimes = play->out.data();
    play->record.timeStamp = info.timeStamp;
    play->record.duration = info.duration;
    m_plays.push_back(std::move(play));
    return &m_plays.back()->record;
}

const AVBased::BDPlayInfo* FakeLoader::titleInfo(const char* title)
{
    called(QStringLiteral("titleInfo %1").arg(QLatin1String(title)));
    const FakeBdTitle* found = find(title);
    return found && found->hasInfo ? keep(found->play) : nullptr;
}

const AVBased::BDPlayInfo* FakeLoader::chapters(const char* title, std::uint32_t* count)
{
    called(QStringLiteral("chapters %1").arg(QLatin1String(title)));
    std::vector<AVBased::BDPlayInfo> records;
    if (const FakeBdTitle* found = find(title)) {
        for (const FakePlayInfo& chapter : found->chapters)
            records.push_back(*keep(chapter));
    }
    m_chapters.push_back(std::move(records));
    *count = quint32(m_chapters.back().size());
    return m_chapters.back().data();
}

void FakeLoader::release()
{
    released();
}

FakeTimeline::FakeTimeline()
    : FakeObject(QStringLiteral("timeline"))
{}

const AVBased::AVImporterDescriptor* FakeTimeline::descriptor()
{
    static const AVBased::AVImporterDescriptor descriptor = {"timeline", "Fake timeline"};
    return &descriptor;
}

void* FakeTimeline::queryExtension(const char* name)
{
    called(QStringLiteral("queryExtension %1").arg(QLatin1String(name)));
    return static_cast<AVBased::ISimpleEditTimeLine*>(this);
}

void FakeTimeline::close()
{
    called(QStringLiteral("close"));
}

void FakeTimeline::release()
{
    released();
}

void FakeTimeline::saveToFile(const char* utf8Path)
{
    called(QStringLiteral("saveToFile %1")
               .arg(QString::fromUtf8(utf8Path).endsWith(QLatin1String(".seix"))
                        ? QStringLiteral("(timeline)")
                        : QString::fromUtf8(utf8Path)));
}

std::int32_t FakeTimeline::applyFormat(const AVBased::FormatRecord* format)
{
    called(QStringLiteral("applyFormat %1ms %2x%3 %4 %5Hz %6ch %7")
               .arg(format->durationMs)
               .arg(format->width)
               .arg(format->height)
               .arg(format->frameRate)
               .arg(format->sampleRate)
               .arg(format->channels)
               .arg(format->aspectRatio));
    return m_sources;
}

void FakeTimeline::insertSource(std::int32_t position, const AVBased::SourceRecord* source)
{
    ++m_sources;
    called(QStringLiteral("insertSource %1 %2 %3-%4")
               .arg(QString::number(position), QString::fromUtf8(source->url),
                    QString::number(source->inPointMs), QString::number(source->outPointMs)));
}

void FakeTimeline::reset()
{
    called(QStringLiteral("reset"));
}

void FakeTimeline::selectItem(std::int32_t index)
{
    called(QStringLiteral("selectItem %1").arg(index));
}
