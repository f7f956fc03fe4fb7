// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include "enginelink/channel.h"
#include "files/files.h"

namespace engine {

/// Files that the near half opens on request, if it lets the item at hand have them. Used while a
/// request is being answered.
class RequestedFiles final : public Files
{
public:
    explicit RequestedFiles(wire::Channel& channel)
        : m_channel(channel)
    {}

    /// The item of the next request, and its descriptor if it is a file: that one needs no asking.
    void setItem(const std::string& path, wire::Descriptor file);

    FileKind kindOf(const std::string& path) override;
    wire::Descriptor open(const std::string& path) override;
    std::vector<FolderEntry> list(const std::string& folder, std::size_t most) override;

private:
    template <typename Answer, typename Question>
    const Answer* ask(flatbuffers::FlatBufferBuilder& builder,
                      flatbuffers::Offset<Question> question);

    wire::Channel& m_channel;
    wire::Letter m_letter;
    std::string m_itemPath;
    wire::Descriptor m_itemFile;
};

} // namespace engine
