// SPDX-License-Identifier: GPL-2.0-or-later
#include "media/bytesource.h"

#include <algorithm>

namespace engine {

/// Grows with what there is, not with what the source claims.
std::optional<Bytes> readWhole(const ByteSource& source, std::size_t limit)
{
    constexpr std::uint64_t largestStep = 256 * 1024;
    if (source.size() > limit)
        return std::nullopt;
    Bytes bytes;
    for (;;) {
        const std::size_t done = bytes.size();
        const auto step = static_cast<std::size_t>(std::min(source.size() - done, largestStep));
        bytes.resize(done + step);
        const std::size_t count = source.read(done, bytes.data() + done, step);
        bytes.resize(done + count);
        if (count < step || step == 0)
            return bytes;
    }
}

} // namespace engine
