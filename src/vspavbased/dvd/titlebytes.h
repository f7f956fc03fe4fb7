// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include "dvd/titlelayout.h"
#include "dvd/titlevobs.h"
#include "media/bytesource.h"

#include <memory>

namespace engine {

/// The sectors that a title plays, as one stream of bytes.
class TitleBytes final : public ByteSource
{
public:
    TitleBytes(std::shared_ptr<const TitleLayout> layout, std::shared_ptr<TitleVobs> vobs)
        : m_layout(std::move(layout))
        , m_vobs(std::move(vobs))
    {}

    int read(std::uint8_t* buffer, int size) override;
    bool seek(std::int64_t offset) override;
    std::int64_t position() const override { return m_position; }
    std::int64_t size() const override;

private:
    std::shared_ptr<const TitleLayout> m_layout;
    std::shared_ptr<TitleVobs> m_vobs;
    std::int64_t m_position = 0;
};

} // namespace engine
