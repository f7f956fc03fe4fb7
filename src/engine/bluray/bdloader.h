// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include "bluray/titlerecord.h"
#include "moviefacts.h"
#include "vspavbased/ibdloader.h"

#include <deque>
#include <memory>
#include <string>
#include <unordered_map>
#include <vector>

namespace engine {

struct BlurayDisc;

/// A Blu-ray disc, read as a whole by open(): stream files, called by their paths (those in an
/// image as if the image were a folder), and titles, called by their playlists. Afterwards it holds
/// records and nothing else.
class BdLoader final : public AVBased::IBDLoader
{
public:
    BdLoader();

    AVBased::IBDList* titleList() override;
    const AVBased::BDPlayInfo* chapters(const char* title, std::uint32_t* count) override;
    const AVBased::BDPlayInfo* titleInfo(const char* title) override;
    const AVBased::AVMovieInfo* fileMovieInfo(const char* file) override;
    bool open(const char* utf8Path) override;
    AVBased::IBDList* fileList() override;
    void release() override;
    const AVBased::BDDiscInfo* discInfo(std::uint32_t index) override;

private:
    ~BdLoader() = default;

    /// Named records, in the order of the disc. They stay where they are.
    template <typename Record>
    struct Directory
    {
        template <typename... Arguments>
        void add(const std::string& name, Arguments&&... arguments);
        Record* find(const char* name);

        std::deque<std::string> texts;
        std::vector<const char*> names;
        std::deque<Record> records;
        std::unordered_map<std::string, Record*> byName;
    };

    void makeRecords(const BlurayDisc& disc);

    bool m_isOpen = false;
    std::string m_discName;
    AVBased::BDDiscInfo m_discInfo;
    Directory<MovieRecord> m_files;
    Directory<TitleRecord> m_titles;
};

} // namespace engine
