// SPDX-License-Identifier: LGPL-2.1-or-later
#pragma once

#include "records/itemrecord.h"
#include "vspavbased/iavimporter.h"
#include "vspavbased/idvdinfo.h"
#include "vspavbased/imovieinfoext.h"

namespace engine {

/// A described item. Which process described it does not matter any more: its frames come from any.
class Importer final : public AVBased::IAVImporter,
                       private AVBased::IDVDInfo,
                       private AVBased::IMovieInfoExt
{
public:
    explicit Importer(const ItemRecordPtr& record)
        : m_record(record)
    {}

    const AVBased::AVImporterDescriptor* descriptor() override;
    void* queryExtension(const char* name) override;
    std::uint32_t movieCount() override;
    const AVBased::AVMovieInfo* movieInfo(std::uint32_t index) override;
    AVBased::IAVSource* openSource(std::int32_t movieId, std::int32_t videoStreamId,
                                   std::int32_t audioStreamId) override;
    void close() override;
    void release() override;

private:
    ~Importer() = default;

    std::uint32_t titleSetCount() override;
    const AVBased::DVDTitleSetInfo* titleSet(std::uint32_t index) override;
    bool isDiscScrambled(const char* utf8Path) override;
    bool isMainTitle(std::int32_t movieId) override;
    const char* value(const char* key) override;

    ItemRecordPtr m_record;
};

} // namespace engine
