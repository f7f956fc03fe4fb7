// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include "bytes/bytesource.h"
#include "libav.h"
#include "media/claims.h"

#include <map>
#include <memory>
#include <set>
#include <string>
#include <string_view>
#include <vector>

namespace engine {

/// Reads a file for libav, which takes numbers in it at their word and allocates memory by them.
/// Parts of the file that claim what cannot be, or what no film has, are hidden: their names are
/// replaced by one of space that is not in use, so that libav passes them over. That happens
/// wherever libav reads them, by whatever way it got there.
class ClaimGuard
{
public:
    explicit ClaimGuard(ByteSourcePtr file);

    /// As ByteSource::read(). `format` is what libav takes the file for; null as long as it does
    /// not know.
    std::size_t read(std::uint64_t offset, std::uint8_t* buffer, std::size_t size,
                     const AVInputFormat* format);

    const ByteSource& file() const { return *m_file; }

private:
    /// What is looked for in files of one format.
    struct Watch
    {
        const char* format; ///< part of libav's name of it
        std::vector<std::string_view> names;
        std::unique_ptr<Claims> claims;

        bool isFor(const AVInputFormat* other) const;
    };

    void search(std::uint64_t offset, std::string& bytes, const Watch& watch);
    void judge(std::uint64_t offset, const Watch& watch);
    void coverUp(std::uint64_t offset, std::string& bytes) const;

    ByteSourcePtr m_file;
    Watch m_watches[2];
    std::set<std::uint64_t> m_judged;              ///< where names lie that have been looked at
    std::map<std::uint64_t, std::string> m_covers; ///< by where they lie
};

} // namespace engine
