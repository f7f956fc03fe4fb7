// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include "files/files.h"

#include <cstdint>
#include <string>

/// All that the engine finds when it looks for files: one, in memory.
class MemoryFile final : public engine::Files
{
public:
    /// From now on the file at `path`, and empty.
    explicit MemoryFile(const std::string& path);

    const std::string& path() const { return m_path; }

    void clear();
    void write(std::uint64_t offset, const std::uint8_t* data, std::size_t size);

    engine::FileKind kindOf(const std::string& path) override;
    wire::Descriptor open(const std::string& path) override;
    std::vector<engine::FolderEntry> list(const std::string& folder, std::size_t most) override;

private:
    std::string m_path;
    wire::Descriptor m_memory;
};
