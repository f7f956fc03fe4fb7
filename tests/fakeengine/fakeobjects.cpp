// SPDX-License-Identifier: GPL-2.0-or-later
//
// What the engine's boundary gives the module.
#include "fakeobject.h"
#include "vspavbased/cavbasedcontext.h"
#include "vspavbased/iavimporter.h"
#include "vspavbased/iavmanager.h"
#include "vspavbased/iavpicture.h"
#include "vspavbased/iavsource.h"
#include "vspavbased/ibdloader.h"
#include "vspavbased/idvdinfo.h"
#include "vspavbased/iimageconverter.h"
#include "vspavbased/imovieinfoext.h"
#include "vspavbased/isimpleedittimeline.h"

#include <QtCore/QSize>

#include <algorithm>
#include <cstring>
#include <deque>

using namespace AVBased;

namespace {

template <typename T, typename... Arguments>
T* make(Arguments&&... arguments)
{
    return FakeEngine::instance().keep(std::make_unique<T>(std::forward<Arguments>(arguments)...));
}

/// Gives frames that tell where they come from: their number of the reads since the last seek.
class FakeSource : public FakeObject, public IAVSource
{
public:
    explicit FakeSource(const QByteArray& reads)
        : FakeObject("source")
        , m_reads(reads)
    {}

    void seek(std::int32_t positionMs) override
    {
        called("seek", positionMs);
        m_number = 0;
    }

    bool readFrame(std::int64_t* positionMs, IAVFrame** frame, std::int32_t* flags,
                   std::int32_t mode) override
    {
        called("readFrame", mode);
        const char read = m_reads.at(qMin(m_number++, m_reads.size() - 1));
        const bool hasFrame = read == 'f' || read == 'l';
        *frame = hasFrame ? reinterpret_cast<IAVFrame*>(&m_number) : nullptr;
        *positionMs = 0;
        *flags = 0;
        return read == 'f' || read == 'n';
    }

    void release() override { released(); }

private:
    QByteArray m_reads;
    int m_number = 0;
};

/// Its picture is red in the upper half and blue in the lower, and its alpha channel opaque.
class FakeConverter : public FakeObject, public IImageConverter, public IAVPicture
{
public:
    FakeConverter(unsigned width, unsigned height)
        : FakeObject("converter")
        , m_size(int(width), int(height))
        , m_pixels(size_t(width) * height)
    {}

    IAVPicture* convert(IAVFrame* frame) override
    {
        called("convert", *reinterpret_cast<int*>(frame));
        const size_t half = m_pixels.size() / 2;
        for (size_t i = 0; i < m_pixels.size(); ++i)
            m_pixels[i] = (i < half) == isTopDown() ? 0xFFFF0000 : 0xFF0000FF;
        return this;
    }

    void release() override { released(); }
    std::int32_t pixelFormat() override { return FakeEngine::instance().pictureFormat; }
    void dimensions(std::int32_t* width, std::int32_t* height) override
    {
        *width = m_size.width();
        *height = m_size.height();
    }
    bool isTopDown() override { return FakeEngine::instance().topDown; }
    void* plane(std::int32_t index, std::int32_t*, std::int32_t*, std::int32_t*) override
    {
        return index == 0 ? m_pixels.data() : nullptr;
    }

private:
    QSize m_size;
    std::vector<std::uint32_t> m_pixels;
};

class FakeImporter : public FakeObject, public IAVImporter, public IMovieInfoExt, public IDVDInfo
{
public:
    explicit FakeImporter(const FakeItem& item, const char* name = "importer")
        : FakeObject(name)
        , m_item(item)
    {
        for (const FakeMovie& movie : m_item.movies)
            m_movies.push_back(movie.record());
        for (const FakeTitleSet& set : m_item.sets) {
            std::vector<DVDTitleInfo> titles;
            for (const FakeTitle& title : set.titles) {
                titles.push_back(title.record);
                titles.back().duration = title.duration;
                titles.back().chapterCount = quint32(title.chapters.size());
                titles.back().chapterStarts = title.chapters.data();
            }
            m_titles.push_back(std::move(titles));
            m_sets.push_back({set.id, {}, quint32(set.titles.size()), m_titles.back().data()});
        }
    }

    const AVImporterDescriptor* descriptor() override
    {
        static const AVImporterDescriptor descriptor = {"fake", "Fake importer"};
        called("descriptor");
        return &descriptor;
    }

    void* queryExtension(const char* name) override
    {
        if (!called("queryExtension", name))
            return nullptr;
        if (std::strcmp(name, "IMovieInfoExt") == 0)
            return static_cast<IMovieInfoExt*>(this);
        const bool isDvdInfo = m_item.isDvd && std::strcmp(name, "IDVDInfo") == 0;
        return isDvdInfo ? static_cast<IDVDInfo*>(this) : nullptr;
    }

    std::uint32_t movieCount() override { return quint32(m_movies.size()); }
    const AVMovieInfo* movieInfo(std::uint32_t index) override
    {
        called("movieInfo", index);
        return index < m_movies.size() ? &m_movies[index] : nullptr;
    }

    IAVSource* openSource(std::int32_t movieId, std::int32_t videoStreamId,
                          std::int32_t audioStreamId) override
    {
        const bool opens = called("openSource", movieId, videoStreamId, audioStreamId);
        return opens ? make<FakeSource>(m_item.reads) : nullptr;
    }

    void close() override { called("close"); }
    void release() override { released(); }

    const char* value(const char* key) override
    {
        called("value", key);
        return m_item.drm ? m_item.drm->constData() : nullptr;
    }

    std::uint32_t titleSetCount() override { return quint32(m_sets.size()); }
    const DVDTitleSetInfo* titleSet(std::uint32_t index) override
    {
        called("titleSet", index);
        return index < m_sets.size() ? &m_sets[index] : nullptr;
    }
    bool isDiscScrambled(const char* utf8Path) override
    {
        called("isDiscScrambled", utf8Path);
        return m_item.scrambled;
    }
    bool isMainTitle(std::int32_t) override { return false; }

private:
    FakeItem m_item;
    std::vector<AVMovieInfo> m_movies;
    std::vector<std::vector<DVDTitleInfo>> m_titles;
    std::vector<DVDTitleSetInfo> m_sets;
};

class FakeList : public FakeObject, public IBDList
{
public:
    FakeList()
        : FakeObject("list")
    {}
    void append(const QByteArray& name) { m_items.emplace_back().text = name; }

    void release() override { released(); }
    std::uint32_t count() override { return quint32(m_items.size()); }
    IBDListItem* item(std::uint32_t index) override
    {
        return index < m_items.size() ? &m_items[index] : nullptr;
    }

private:
    struct Item : IBDListItem
    {
        QByteArray text;
        const char* name() override { return text.constData(); }
    };
    std::deque<Item> m_items;
};

class FakeLoader : public FakeObject, public IBDLoader
{
public:
    FakeLoader()
        : FakeObject("loader")
    {}

    bool open(const char* utf8Path) override
    {
        called("open", QString::fromUtf8(utf8Path));
        m_disc = FakeEngine::instance().discs.value(utf8Path);
        return FakeEngine::instance().discs.contains(utf8Path);
    }

    const BDDiscInfo* discInfo(std::uint32_t) override
    {
        m_info.name = m_disc.name.constData();
        return called("discInfo") ? &m_info : nullptr;
    }

    IBDList* fileList() override { return called("fileList") ? listOf(m_disc.files) : nullptr; }
    IBDList* titleList() override { return called("titleList") ? listOf(m_disc.titles) : nullptr; }

    const AVMovieInfo* fileMovieInfo(const char* name) override
    {
        const FakeFile* found = find(m_disc.files, name);
        return found ? &m_movies.emplace_back(found->movie.record()) : nullptr;
    }

    const BDPlayInfo* titleInfo(const char* title) override
    {
        const FakeBdTitle* found = find(m_disc.titles, title);
        return called("titleInfo", title) && found ? keep(found->play) : nullptr;
    }

    const BDPlayInfo* chapters(const char* title, std::uint32_t* count) override
    {
        called("chapters", title);
        auto& records = m_chapters.emplace_back();
        if (const FakeBdTitle* found = find(m_disc.titles, title)) {
            for (const FakePlayInfo& chapter : found->chapters)
                records.push_back(*keep(chapter));
        }
        *count = quint32(records.size());
        return records.data();
    }

    void release() override { released(); }

private:
    struct Play
    {
        std::vector<double> in;
        std::vector<double> out;
        FakeList clips;
        BDPlayInfo record{};
    };

    template <typename T>
    static const T* find(const std::vector<T>& items, const char* name)
    {
        const auto found = std::find_if(items.begin(), items.end(),
                                        [name](const T& item) { return item.name == name; });
        return found == items.end() ? nullptr : &*found;
    }

    template <typename T>
    static IBDList* listOf(const std::vector<T>& items)
    {
        auto* list = make<FakeList>();
        for (const T& item : items)
            list->append(item.name);
        return list;
    }

    const BDPlayInfo* keep(const FakePlayInfo& info)
    {
        Play& play = m_plays.emplace_back();
        for (const FakeClip& clip : info.clips) {
            play.in.push_back(clip.in);
            play.out.push_back(clip.out);
            play.clips.append(clip.file);
        }
        const quint32 count = info.claimedClips.value_or(play.clips.count());
        play.record = {count,         &play.clips, play.in.data(), play.out.data(), info.timeStamp,
                       info.duration, {}};
        return &play.record;
    }

    FakeDisc m_disc;
    BDDiscInfo m_info{};
    std::deque<AVMovieInfo> m_movies;
    std::deque<Play> m_plays;
    std::deque<std::vector<BDPlayInfo>> m_chapters;
};

/// Of a path; timelines have names that no two imports share.
QString nameOf(const char* utf8Path)
{
    const QString path = QString::fromUtf8(utf8Path);
    return path.endsWith(".seix") ? QString("(timeline)") : path;
}

class FakeTimeline : public FakeImporter, public ISimpleEditTimeLine
{
public:
    FakeTimeline()
        : FakeImporter(FakeItem(), "timeline")
    {}

    void* queryExtension(const char* name) override
    {
        called("queryExtension", name);
        return static_cast<ISimpleEditTimeLine*>(this);
    }
    void saveToFile(const char* utf8Path) override { called("saveToFile", nameOf(utf8Path)); }
    std::int32_t applyFormat(const FormatRecord* f) override
    {
        called("applyFormat", f->durationMs, f->width, f->height, f->frameRate, f->sampleRate,
               f->channels, f->aspectRatio);
        return m_sources;
    }
    void insertSource(std::int32_t position, const SourceRecord* source) override
    {
        ++m_sources;
        called("insertSource", position, QString::fromUtf8(source->url), source->inPointMs,
               source->outPointMs);
    }
    void reset() override { called("reset"); }
    void selectItem(std::int32_t index) override { called("selectItem", index); }

private:
    int m_sources = 0;
};

class FakeManager : public IAVManager
{
public:
    IAVImporter* createNamedImporter(const char* name) override
    {
        const bool exists = FakeEngine::instance().note(callText("createNamedImporter", name));
        return exists ? make<FakeTimeline>() : nullptr;
    }

    IAVImporter* createImporter(const char* utf8Path) override
    {
        FakeEngine& engine = FakeEngine::instance();
        const QString name = nameOf(utf8Path);
        engine.note(callText("createImporter", name));
        if (name == "(timeline)")
            return engine.anyTimeline ? make<FakeImporter>(*engine.anyTimeline) : nullptr;
        const auto item = engine.items.constFind(utf8Path);
        return item == engine.items.constEnd() ? nullptr : make<FakeImporter>(*item);
    }

    void beginImport() override { FakeEngine::instance().note("beginImport"); }
};

} // namespace

namespace Vesk {

CAVBasedContext* CAVBasedContext::instance()
{
    static CAVBasedContext context;
    return &context;
}

CAVBasedModel* CAVBasedContext::avbasedModel()
{
    static CAVBasedModel model;
    return &model;
}

CAVBasedModelWrapper* CAVBasedModel::w_func()
{
    static CAVBasedModelWrapper wrapper;
    return &wrapper;
}

IAVManager* CAVBasedModelWrapper::avmanager()
{
    static FakeManager manager;
    return &manager;
}

IBDLoader* CAVBasedModelWrapper::createBDLoader()
{
    return FakeEngine::instance().note("createBDLoader") ? make<FakeLoader>() : nullptr;
}

IImageConverter* CAVBasedModelWrapper::CreateImageConverterEx(unsigned pixelFormat, unsigned width,
                                                              unsigned height, unsigned flags)
{
    const QString call = callText("createConverter", pixelFormat, width, height, flags);
    return FakeEngine::instance().note(call) ? make<FakeConverter>(width, height) : nullptr;
}

} // namespace Vesk
