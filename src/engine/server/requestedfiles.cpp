// SPDX-License-Identifier: GPL-2.0-or-later
#include "server/requestedfiles.h"

#include "enginelink/log.h"
#include "refusal.h"

#include <fcntl.h>

#include <cerrno>
#include <cstring>

namespace engine {

/// The answer to a question; null when the near half is gone, and with it all work.
template <typename Answer, typename Question>
const Answer* RequestedFiles::ask(flatbuffers::FlatBufferBuilder& builder,
                                  flatbuffers::Offset<Question> question)
{
    if (m_channel.send(builder, question, wire::noDeadline) != wire::Channel::Result::done ||
        m_channel.receive(m_letter, wire::noDeadline) != wire::Channel::Result::done)
        return nullptr;
    return m_letter.as<Answer>();
}

void RequestedFiles::setItem(const std::string& path, wire::Descriptor file)
{
    m_itemPath = path;
    m_itemFile = std::move(file);
}

FileKind RequestedFiles::kindOf(const std::string& path)
{
    if (m_itemFile && path == m_itemPath)
        return FileKind::file;
    flatbuffers::FlatBufferBuilder builder;
    const auto* told = ask<wire::FileKindTold>(
        builder, wire::CreateTellFileKind(builder, builder.CreateString(path)));
    if (!told)
        return FileKind::none;
    switch (told->kind()) {
    case wire::FileKind_File:
        return FileKind::file;
    case wire::FileKind_Folder:
        return FileKind::folder;
    case wire::FileKind_Other:
        return FileKind::other;
    default:
        return FileKind::none;
    }
}

wire::Descriptor RequestedFiles::open(const std::string& path)
{
    if (m_itemFile && path == m_itemPath)
        return wire::Descriptor(fcntl(m_itemFile.get(), F_DUPFD_CLOEXEC, 0));
    flatbuffers::FlatBufferBuilder builder;
    const auto* opened =
        ask<wire::FileOpened>(builder, wire::CreateOpenFile(builder, builder.CreateString(path)));
    wire::Descriptor file = m_letter.takeDescriptor();
    errno = opened ? opened->error() : EIO;
    return file;
}

std::vector<FolderEntry> RequestedFiles::list(const std::string& folder, std::size_t most)
{
    std::vector<FolderEntry> found;
    flatbuffers::FlatBufferBuilder builder;
    const auto* listed = ask<wire::FolderListed>(
        builder, wire::CreateListFolder(builder, builder.CreateString(folder)));
    if (!listed)
        return found;
    for (const auto* entry : *listed->entries()) {
        if (found.size() < most)
            found.push_back({entry->name()->str(), entry->is_folder()});
    }
    noteFileError(listed->error());
    if (listed->error() != 0)
        log(folder + ": " + std::strerror(listed->error()));
    return found;
}

} // namespace engine
