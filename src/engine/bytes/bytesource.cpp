// SPDX-License-Identifier: GPL-2.0-or-later
#include "bytes/bytesource.h"

#include <algorithm>

namespace engine {

/// Grows with what there is, not with what the source claims.
Bytes readBeginning(const ByteSource& source, std::size_t most)
{
    constexpr std::size_t largestStep = std::size_t{256} * 1024;
    const auto size = static_cast<std::size_t>(std::min<std::uint64_t>(source.size(), most));
    Bytes bytes;
    for (;;) {
        const std::size_t done = bytes.size();
        const std::size_t step = std::min(size - done, largestStep);
        bytes.resize(done + step);
        const std::size_t count = source.read(done, bytes.data() + done, step);
        bytes.resize(done + count);
        if (count < step || step == 0)
            return bytes;
    }
}

} // namespace engine
