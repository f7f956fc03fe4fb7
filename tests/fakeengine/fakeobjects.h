// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include "fakeengine.h"
#include "vspavbased/iavimporter.h"
#include "vspavbased/iavmanager.h"
#include "vspavbased/iavpicture.h"
#include "vspavbased/iavsource.h"
#include "vspavbased/ibdloader.h"
#include "vspavbased/idvdinfo.h"
#include "vspavbased/iimageconverter.h"
#include "vspavbased/imovieinfoext.h"
#include "vspavbased/isimpleedittimeline.h"

/// The boundary's record of a scripted movie.
class FakeMovieRecord
{
public:
    explicit FakeMovieRecord(const FakeMovie& movie);
    const AVBased::AVMovieInfo* get() const { return &m_record; }

private:
    FakeMovie m_movie;
    std::vector<AVBased::AVStreamInfo> m_streams;
    std::vector<AVBased::AVMetaItem> m_tags;
    AVBased::AVMovieInfo m_record;
};

class FakeManager : public AVBased::IAVManager
{
public:
    AVBased::IAVImporter* createNamedImporter(const char* name) override;
    AVBased::IAVImporter* createImporter(const char* utf8Path) override;
    void beginImport() override;
};

class FakeImporter : public FakeObject,
                     public AVBased::IAVImporter,
                     public AVBased::IMovieInfoExt,
                     public AVBased::IDVDInfo
{
public:
    explicit FakeImporter(const FakeItem& item);

    const AVBased::AVImporterDescriptor* descriptor() override;
    void* queryExtension(const char* name) override;
    std::uint32_t movieCount() override;
    const AVBased::AVMovieInfo* movieInfo(std::uint32_t index) override;
    AVBased::IAVSource* openSource(std::int32_t movieId, std::int32_t videoStreamId,
                                   std::int32_t audioStreamId) override;
    void close() override;
    void release() override;

    const char* value(const char* key) override;

    std::uint32_t titleSetCount() override;
    const AVBased::DVDTitleSetInfo* titleSet(std::uint32_t index) override;
    bool isDiscScrambled(const char* utf8Path) override;
    bool isMainTitle(std::int32_t movieId) override;

private:
    FakeItem m_item;
    std::vector<std::unique_ptr<FakeMovieRecord>> m_movies;
    std::vector<std::vector<AVBased::DVDTitleInfo>> m_titles;
    std::vector<AVBased::DVDTitleSetInfo> m_sets;
};

/// A frame that tells where it comes from.
class FakeFrame
{
public:
    int number = 0; ///< of the reads since the last seek, from 1
};

class FakeSource : public FakeObject, public AVBased::IAVSource
{
public:
    explicit FakeSource(const std::vector<FakeRead>& reads);

    void seek(std::int32_t positionMs) override;
    bool readFrame(std::int64_t* positionMs, AVBased::IAVFrame** frame, std::int32_t* flags,
                   std::int32_t mode) override;
    void release() override;

private:
    std::vector<FakeRead> m_reads;
    FakeFrame m_frame;
};

/// Its picture is red in the upper half and blue in the lower, and its alpha channel opaque.
class FakeConverter : public FakeObject, public AVBased::IImageConverter, public AVBased::IAVPicture
{
public:
    FakeConverter(int width, int height);

    AVBased::IAVPicture* convert(AVBased::IAVFrame* frame) override;
    void release() override;

    std::int32_t pixelFormat() override;
    void dimensions(std::int32_t* width, std::int32_t* height) override;
    bool isTopDown() override;
    void* plane(std::int32_t index, std::int32_t* stride, std::int32_t* rows,
                std::int32_t* bytes) override;

private:
    int m_width;
    int m_height;
    std::vector<std::uint32_t> m_pixels;
};

class FakeList : public FakeObject, public AVBased::IBDList
{
public:
    explicit FakeList(const std::vector<std::string>& names);

    void release() override;
    std::uint32_t count() override;
    AVBased::IBDListItem* item(std::uint32_t index) override;

private:
    struct Item : AVBased::IBDListItem
    {
        std::string text;
        const char* name() override { return text.c_str(); }
    };
    std::vector<std::unique_ptr<Item>> m_items;
};

class FakeLoader : public FakeObject, public AVBased::IBDLoader
{
public:
    FakeLoader();

    AVBased::IBDList* titleList() override;
    const AVBased::BDPlayInfo* chapters(const char* title, std::uint32_t* count) override;
    const AVBased::BDPlayInfo* titleInfo(const char* title) override;
    const AVBased::AVMovieInfo* fileMovieInfo(const char* file) override;
    bool open(const char* utf8Path) override;
    AVBased::IBDList* fileList() override;
    void release() override;
    const AVBased::BDDiscInfo* discInfo(std::uint32_t index) override;

private:
    struct Play
    {
        std::vector<double> in;
        std::vector<double> out;
        std::unique_ptr<FakeList> clips;
        AVBased::BDPlayInfo record{};
    };
    const AVBased::BDPlayInfo* keep(const FakePlayInfo& info);
    const FakeBdTitle* find(const char* title) const;

    FakeDisc m_disc;
    AVBased::BDDiscInfo m_info{};
    std::vector<std::unique_ptr<FakeMovieRecord>> m_movies;
    std::vector<std::unique_ptr<Play>> m_plays;
    std::vector<std::vector<AVBased::BDPlayInfo>> m_chapters;
};

class FakeTimeline : public FakeObject,
                     public AVBased::IAVImporter,
                     public AVBased::ISimpleEditTimeLine
{
public:
    FakeTimeline();

    const AVBased::AVImporterDescriptor* descriptor() override;
    void* queryExtension(const char* name) override;
    std::uint32_t movieCount() override { return 0; }
    const AVBased::AVMovieInfo* movieInfo(std::uint32_t) override { return nullptr; }
    AVBased::IAVSource* openSource(std::int32_t, std::int32_t, std::int32_t) override
    {
        return nullptr;
    }
    void close() override;
    void release() override;

    void saveToFile(const char* utf8Path) override;
    std::int32_t applyFormat(const AVBased::FormatRecord* format) override;
    void insertSource(std::int32_t position, const AVBased::SourceRecord* source) override;
    void reset() override;
    void selectItem(std::int32_t index) override;

private:
    int m_sources = 0;
};
