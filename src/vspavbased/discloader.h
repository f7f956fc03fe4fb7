// SPDX-License-Identifier: LGPL-2.1-or-later
#pragma once

#include "records/discrecord.h"
#include "vspavbased/ibdloader.h"

namespace engine {

/// A described Blu-ray disc.
class DiscLoader final : public AVBased::IBDLoader
{
public:
    /// `record` of a disc that has been read already; null for one that open() is to read.
    explicit DiscLoader(const DiscRecordPtr& record = nullptr)
        : m_record(record)
    {}

    AVBased::IBDList* titleList() override;
    const AVBased::BDPlayInfo* chapters(const char* title, std::uint32_t* count) override;
    const AVBased::BDPlayInfo* titleInfo(const char* title) override;
    const AVBased::AVMovieInfo* fileMovieInfo(const char* file) override;
    bool open(const char* utf8Path) override;
    AVBased::IBDList* fileList() override;
    void release() override;
    const AVBased::BDDiscInfo* discInfo(std::uint32_t index) override;

private:
    ~DiscLoader() = default;

    DiscRecordPtr m_record; ///< null before open() has succeeded
};

} // namespace engine
