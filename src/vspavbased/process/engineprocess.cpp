// SPDX-License-Identifier: LGPL-2.1-or-later
#include "process/engineprocess.h"

#include "enginelink/log.h"
#include "files/itemfiles.h"
#include "process/engineprogram.h"

#include <poll.h>

#include <cerrno>

namespace engine {

namespace {

/// A file says the same thing a few times, never this often.
constexpr int mostLogLines = 1000;
constexpr std::size_t longestLogLine = 4096;

ItemFiles filesOf(const Item& item)
{
    return item.timeline ? ItemFiles::ofTimeline(item.path, *item.timeline)
                         : ItemFiles::ofItem(item.path);
}

wire::FileKind wireKind(ItemFiles::Kind kind)
{
    switch (kind) {
    case ItemFiles::Kind::file:
        return wire::FileKind_File;
    case ItemFiles::Kind::folder:
        return wire::FileKind_Folder;
    case ItemFiles::Kind::other:
        return wire::FileKind_Other;
    case ItemFiles::Kind::none:
        break;
    }
    return wire::FileKind_None;
}

std::string inSeconds(std::chrono::milliseconds time)
{
    return std::to_string((time.count() + 999) / 1000) + " s";
}

} // namespace

EngineProcess::EngineProcess(EngineProgram& program, std::uint32_t number, wire::Descriptor socket)
    : m_program(program)
    , m_supervisor(program.link())
    , m_number(number)
    , m_socket(socket.get())
    , m_channel(std::move(socket), wire::Channel::Descriptors::refused)
{}

EngineProcess::~EngineProcess() = default;

bool EngineProcess::isQuiet() const
{
    pollfd socket = {m_socket, POLLIN, 0};
    return poll(&socket, 1, 0) == 0 || m_protections == 0; // it may just have begun
}

bool EngineProcess::awaitBegin(wire::Clock::time_point deadline)
{
    if (m_protections == 0 && m_channel.receive(m_letter, deadline) == Result::done) {
        if (const auto* told = m_letter.as<wire::Confined>())
            m_protections = told->protections();
    }
    return m_protections != 0;
}

void EngineProcess::letGo()
{
    flatbuffers::FlatBufferBuilder builder;
    m_channel.send(builder, wire::CreateForget(builder), wire::Clock::now());
    m_lastItem.clear();
}

EngineProcess::Outcome EngineProcess::run(Job& job, std::string& failure)
{
    const auto deadline = wire::Clock::now() + job.limit();
    const ItemFiles files = filesOf(job.item());
    m_logLines = 0;
    m_lastItem = job.item().path;
    m_channel.setRequest(++m_request);
    bool isOfAnother = false;
    Result result = ask(job, files, deadline);
    if (result == Result::done)
        result = awaitAnswer(job, files, deadline, isOfAnother);
    switch (result) {
    case Result::done:
        return Outcome::answered;
    case Result::ended:
        failure.clear();
        break;
    case Result::tooLate:
        failure = "gave no answer within " + inSeconds(job.limit());
        break;
    case Result::nonsense:
        failure = "gave an answer that makes no sense";
        break;
    }
    if (isOfAnother)
        return Outcome::unasked;
    return result == Result::tooLate ? Outcome::late : Outcome::failed;
}

EngineProcess::Result EngineProcess::ask(Job& job, const ItemFiles& files,
                                         wire::Clock::time_point deadline)
{
    const Result prepared = prepareCanvas(job.canvasSize(), deadline);
    if (prepared != Result::done)
        return prepared;
    const wire::Descriptor file = files.openItem();
    return job.send(m_channel, deadline, file.get());
}

/// `isOfAnother` tells that what made no sense was said to an earlier request.
EngineProcess::Result EngineProcess::awaitAnswer(Job& job, const ItemFiles& files,
                                                 wire::Clock::time_point deadline,
                                                 bool& isOfAnother)
{
    for (;;) {
        Result result = m_channel.receive(m_letter, deadline, job.largestAnswer());
        bool isServed = false;
        if (result == Result::done) {
            const std::uint32_t request = m_letter.message().request();
            const bool isOfThis = request == m_request || m_letter.as<wire::Confined>();
            isOfAnother = request != 0 && request < m_request;
            result = isOfThis ? serve(files, deadline, isServed) : Result::nonsense;
        }
        if (result != Result::done)
            return result;
        if (!isServed)
            return job.accept(m_letter, m_canvas ? m_canvas->pixels() : nullptr) ? Result::done
                                                                                 : Result::nonsense;
    }
}

/// Larger memory in the place of what is too small for the picture.
EngineProcess::Result EngineProcess::prepareCanvas(std::size_t size,
                                                   wire::Clock::time_point deadline)
{
    if (size == 0 || (m_canvas && m_canvas->size() >= size))
        return Result::done;
    m_canvas = SharedCanvas::make(size);
    if (!m_canvas)
        throw std::bad_alloc();
    flatbuffers::FlatBufferBuilder builder;
    return m_channel.send(builder, wire::CreateUseCanvas(builder, size), deadline,
                          m_canvas->descriptor().get());
}

/// Does what the process asks for while it works. `isServed` stays false for anything else.
EngineProcess::Result EngineProcess::serve(const ItemFiles& files, wire::Clock::time_point deadline,
                                           bool& isServed)
{
    flatbuffers::FlatBufferBuilder builder;
    isServed = true;
    if (const auto* told = m_letter.as<wire::Confined>()) {
        if (m_protections != 0)
            return Result::nonsense;
        m_protections = told->protections();
        return Result::done;
    }
    if (const auto* line = m_letter.as<wire::LogLine>()) {
        if (++m_logLines <= mostLogLines)
            log(line->text()->str().substr(0, longestLogLine));
        return Result::done;
    }
    if (const auto* question = m_letter.as<wire::TellFileKind>()) {
        const auto kind = wireKind(files.kindOf(question->path()->str()));
        return m_channel.send(builder, wire::CreateFileKindTold(builder, kind), deadline);
    }
    if (const auto* question = m_letter.as<wire::OpenFile>()) {
        const wire::Descriptor file = files.open(question->path()->str());
        const int error = file ? 0 : errno;
        return m_channel.send(builder, wire::CreateFileOpened(builder, error), deadline,
                              file.get());
    }
    if (const auto* question = m_letter.as<wire::ListFolder>()) {
        std::vector<ItemFiles::Entry> entries;
        const int error = files.list(question->path()->str(), entries);
        std::vector<flatbuffers::Offset<wire::FolderEntry>> written;
        written.reserve(entries.size());
        for (const ItemFiles::Entry& entry : entries) {
            written.push_back(
                wire::CreateFolderEntry(builder, builder.CreateString(entry.name), entry.isFolder));
        }
        return m_channel.send(
            builder, wire::CreateFolderListed(builder, error, builder.CreateVector(written)),
            deadline);
    }
    isServed = false;
    return Result::done;
}

} // namespace engine
