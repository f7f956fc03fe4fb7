// SPDX-License-Identifier: GPL-2.0-or-later
#include "media/claimguard.h"

#include "media/matroskaclaims.h"
#include "media/mp4claims.h"

#include <algorithm>
#include <cstring>
#include <iterator>

namespace engine {

namespace {

constexpr std::size_t nameSize = 4;

/// Names that are looked at. No film has so many; from there on all are hidden.
constexpr std::size_t mostNames = 200000;

} // namespace

ClaimGuard::ClaimGuard(ByteSourcePtr file)
    : m_file(std::move(file))
    , m_watches{{"mp4", {"trak", "tfhd", "trun"}, std::make_unique<Mp4Claims>(*m_file)},
                // Tracks, attachments, chapters, tags.
                {"matroska",
                 {"\x16\x54\xAE\x6B", "\x19\x41\xA4\x69", "\x10\x43\xA7\x70", "\x12\x54\xC3\x67"},
                 std::make_unique<MatroskaClaims>(*m_file)}}
{}

bool ClaimGuard::Watch::isFor(const AVInputFormat* other) const
{
    return !other || std::strstr(other->name, format);
}

std::size_t ClaimGuard::read(std::uint64_t offset, std::uint8_t* buffer, std::size_t size,
                             const AVInputFormat* format)
{
    const auto isWatched = [format](const Watch& watch) { return watch.isFor(format); };
    if (std::none_of(std::begin(m_watches), std::end(m_watches), isWatched))
        return m_file->read(offset, buffer, size);

    // A name may lie across either end.
    const std::uint64_t begin = offset - std::min<std::uint64_t>(offset, nameSize - 1);
    const auto before = static_cast<std::size_t>(offset - begin);
    std::string bytes(before + size + nameSize - 1, '\0');
    bytes.resize(m_file->read(begin, reinterpret_cast<std::uint8_t*>(bytes.data()), bytes.size()));
    for (const Watch& watch : m_watches) {
        if (isWatched(watch))
            search(begin, bytes, watch);
    }
    coverUp(begin, bytes);
    return bytes.copy(reinterpret_cast<char*>(buffer), size, std::min(before, bytes.size()));
}

void ClaimGuard::search(std::uint64_t offset, std::string& bytes, const Watch& watch)
{
    for (const std::string_view name : watch.names) {
        for (std::size_t at = bytes.find(name); at != std::string::npos;
             at = bytes.find(name, at + nameSize)) {
            if (m_judged.size() < mostNames)
                judge(offset + at, watch);
            else if (!m_judged.count(offset + at))
                bytes[at] = '\0';
        }
    }
}

void ClaimGuard::judge(std::uint64_t offset, const Watch& watch)
{
    if (!m_judged.insert(offset).second)
        return;
    const auto covers = watch.claims->cover(offset);
    if (!covers)
        m_judged.erase(offset);
    for (const Cover& cover : covers.value_or(std::vector<Cover>()))
        m_covers.emplace(cover.offset, cover.bytes);
}

/// `bytes` lie at `offset`.
void ClaimGuard::coverUp(std::uint64_t offset, std::string& bytes) const
{
    const std::uint64_t end = offset + bytes.size();
    for (auto cover = m_covers.lower_bound(offset - std::min(offset, longestCover));
         cover != m_covers.end() && cover->first < end; ++cover) {
        std::uint64_t at = cover->first;
        for (const char c : cover->second) {
            if (at >= offset && at < end)
                bytes[static_cast<std::size_t>(at - offset)] = c;
            ++at;
        }
    }
}

} // namespace engine
