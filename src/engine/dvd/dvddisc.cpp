// SPDX-License-Identifier: GPL-2.0-or-later
#include "dvd/dvddisc.h"

#include "deadline.h"
#include "dvd/videomanager.h"
#include "enginelink/log.h"

#include <algorithm>
#include <cstdio>

namespace engine {

namespace {

/// What one file holds, and how much was wrong with it.
template <typename Content>
struct IfoContent
{
    std::optional<Content> content;
    int findings = 0;
};

template <typename Content>
using IfoParser = std::optional<Content> (*)(const ByteView& ifo, IfoFindings& findings);

template <typename Content>
IfoContent<Content> readIfo(const VideoTs& files, const std::string& name, IfoParser<Content> parse)
{
    const auto bytes = files.read(name);
    if (!bytes)
        return {};
    IfoFindings findings(name);
    std::optional<Content> content = parse(*bytes, findings);
    return {std::move(content), findings.count()};
}

/// From the IFO file called `name`, which lacks its ending, or from its copy if that is better.
template <typename Content>
std::optional<Content> readWithBackup(const VideoTs& files, const std::string& name,
                                      IfoParser<Content> parse)
{
    IfoContent<Content> original = readIfo(files, name + ".IFO", parse);
    if (original.content && original.findings == 0)
        return std::move(original.content);
    IfoContent<Content> copy = readIfo(files, name + ".BUP", parse);
    const bool copyIsBetter =
        copy.content && (!original.content || copy.findings < original.findings);
    return copyIsBetter ? std::move(copy.content) : std::move(original.content);
}

/// The titles of each set, as the disc's table of contents has them. Without that they are those
/// that the sets themselves have: the sets are then without titles here.
std::vector<DvdTitleSet> listTitleSets(const std::optional<VideoManager>& manager)
{
    std::vector<DvdTitleSet> sets(
        static_cast<std::size_t>(manager ? manager->titleSetCount : mostTitleSets));
    if (manager) {
        for (const TitleReference& title : manager->titles) {
            const auto index = static_cast<std::size_t>(title.titleSet - 1);
            sets.resize(std::max(sets.size(), index + 1));
            sets[index].titles.push_back({title.number, {}});
        }
    }
    for (std::size_t i = 0; i < sets.size(); ++i) {
        sets[i].number = static_cast<int>(i + 1);
        std::stable_sort(sets[i].titles.begin(), sets[i].titles.end(),
                         [](const DvdTitle& a, const DvdTitle& b) { return a.number < b.number; });
    }
    return sets;
}

void describe(DvdTitleSet& set, const TitleSet& description)
{
    set.isUsable = true;
    set.video = description.video;
    for (DvdTitle& title : set.titles) {
        const auto index = static_cast<std::size_t>(title.number - 1);
        if (index < description.titles.size())
            title.facts = description.titles[index];
        else
            log("title " + std::to_string(title.number) + " is missing in title set " +
                std::to_string(set.number));
    }
}

/// Up to `most`; how many.
std::size_t listOwnTitles(DvdTitleSet& set, const TitleSet& description, std::size_t most)
{
    const std::size_t count = std::min(description.titles.size(), most);
    for (std::size_t i = 0; i < count; ++i)
        set.titles.push_back({static_cast<int>(i + 1), {}});
    return count;
}

bool isEmpty(const DvdTitleSet& set)
{
    return !set.isUsable && set.titles.empty();
}

bool hasUsableSet(const DvdDisc& disc)
{
    return std::any_of(disc.titleSets.begin(), disc.titleSets.end(),
                       [](const DvdTitleSet& set) { return set.isUsable; });
}

/// Volume names are filled up with blanks.
std::string withoutBlanks(const std::string& name)
{
    return name.substr(0, name.find_last_not_of(' ') + 1);
}

} // namespace

std::optional<TitleSet> readTitleSet(const VideoTs& files, int number)
{
    char name[16];
    std::snprintf(name, sizeof(name), "VTS_%02d_0", number);
    return readWithBackup<TitleSet>(files, name, parseTitleSet);
}

std::optional<DvdDisc> readDvd(const VideoTs& files, const DvdLocation& location)
{
    const auto manager = readWithBackup<VideoManager>(files, "VIDEO_TS", parseVideoManager);

    Deadline deadline(describeLimit);
    DvdDisc disc;
    disc.titleSets = listTitleSets(manager);
    std::size_t titlesLeft = mostTitles; // of the whole disc
    for (DvdTitleSet& set : disc.titleSets) {
        const bool isWanted = !location.titleSet || *location.titleSet == set.number;
        if ((!isWanted && manager) || deadline.expired())
            continue;
        const auto description = readTitleSet(files, set.number);
        if (description && !manager)
            titlesLeft -= listOwnTitles(set, *description, titlesLeft);
        if (description && isWanted)
            describe(set, *description);
    }
    while (!disc.titleSets.empty() && isEmpty(disc.titleSets.back()))
        disc.titleSets.pop_back();
    if (disc.titleSets.empty() || (location.titleSet && !hasUsableSet(disc)))
        return std::nullopt;
    disc.name = withoutBlanks(files.volumeName());
    if (disc.name.empty())
        disc.name = location.name;
    return disc;
}

} // namespace engine
