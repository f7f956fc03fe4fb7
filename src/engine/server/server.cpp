// SPDX-License-Identifier: GPL-2.0-or-later
#include "server/server.h"

#include "enginelink/log.h"
#include "refusal.h"
#include "server/itemwriter.h"
#include "vspavbased/enginelog.h"
#include "vspavbased/iavpicture.h"

namespace engine {

namespace {

/// Lines that wait for an answer to go with, so that the near half is not woken for each.
constexpr std::size_t mostLines = 100;

} // namespace

Server::Server(wire::Channel& channel, Engine& engine)
    : m_channel(channel)
    , m_engine(engine)
    , m_files(channel)
{
    useFiles(m_files);
    AVBased::setLogReceiver(
        [](const char* line, void* server) { static_cast<Server*>(server)->keepLine(line); }, this);
}

void Server::run()
{
    wire::Letter request;
    while (!m_isDone && m_channel.receive(request, wire::noDeadline) == wire::Channel::Result::done)
        answer(request);
}

void Server::answer(wire::Letter& request)
{
    m_channel.setRequest(request.message().request());
    if (const auto* question = request.as<wire::Describe>()) {
        m_files.setItem(question->path()->str(), request.takeDescriptor());
        describe(*question);
    } else if (const auto* question = request.as<wire::ReadDisc>()) {
        m_files.setItem(question->path()->str(), request.takeDescriptor());
        readDisc(*question);
    } else if (const auto* question = request.as<wire::TakePicture>()) {
        m_files.setItem(question->path()->str(), request.takeDescriptor());
        takePicture(*question);
    } else if (const auto* order = request.as<wire::UseCanvas>()) {
        m_canvas.use(request.takeDescriptor(), static_cast<std::size_t>(order->bytes()));
    } else if (request.as<wire::Forget>()) {
        m_movie.reset();
    } else {
        m_isDone = true;
    }
    m_files.setItem({}, {});
}

void Server::describe(const wire::Describe& request)
{
    flatbuffers::FlatBufferBuilder builder;
    const std::string path = request.path()->str();
    takeRefusal();
    const Opening opening =
        request.is_timeline() ? Opening::opened(m_engine.openTimeline(path)) : m_engine.open(path);
    const ImporterPtr importer(opening.importer);
    flatbuffers::Offset<wire::Item> item = 0;
    if (importer)
        item = writeItem(builder, *importer, path, m_engine.reopening(*importer));
    const bool isForOthers = opening.answer == Opening::Answer::notMine;
    send(builder, wire::CreateDescribed(builder, item, isForOthers, takeRefusal()));
}

void Server::readDisc(const wire::ReadDisc& request)
{
    flatbuffers::FlatBufferBuilder builder;
    takeRefusal();
    const std::unique_ptr<AVBased::IBDLoader, Release> loader(
        m_engine.openDisc(request.path()->str()));
    flatbuffers::Offset<wire::Disc> disc = 0;
    if (loader)
        disc = writeDisc(builder, *loader);
    send(builder, wire::CreateDiscRead(builder, disc, takeRefusal()));
}

void Server::takePicture(const wire::TakePicture& request)
{
    flatbuffers::FlatBufferBuilder builder;
    OpenMovie* movie = openMovie(request);
    std::vector<wire::Read> reads;
    bool isDrawn = false;
    if (movie) {
        if (request.seeks() || request.first_read() + request.reads() > 0) {
            movie->goTo(request.seeks() ? std::optional(request.position_ms()) : std::nullopt,
                        request.first_read());
        }
        reads = movie->read(request.reads());
        isDrawn = drawPicture(request.width(), request.height());
    }
    send(builder, wire::CreatePictureTaken(builder, movie != nullptr,
                                           builder.CreateVectorOfStructs(reads), isDrawn));
}

/// The movie that is asked for, which mostly is the one that is open.
OpenMovie* Server::openMovie(const wire::TakePicture& request)
{
    const std::string path = request.path()->str();
    if (m_movie && m_moviePath == path) {
        if (m_movie->is(request.movie(), request.stream()) ||
            m_movie->change(request.movie(), request.stream()))
            return m_movie.get();
        m_movie.reset();
        return nullptr;
    }
    m_movie.reset(); // first, so that no two are open
    ImporterPtr importer = reopen(request, path);
    if (importer)
        m_movie = OpenMovie::open(std::move(importer), request.movie(), request.stream());
    m_moviePath = path;
    return m_movie.get();
}

ImporterPtr Server::reopen(const wire::TakePicture& request, const std::string& path)
{
    if (request.is_timeline())
        return ImporterPtr(m_engine.openTimeline(path));
    const auto* kept = request.reopening();
    ImporterPtr importer(kept ? m_engine.reopen(path, Bytes(kept->begin(), kept->end())) : nullptr);
    if (!importer)
        importer.reset(m_engine.open(path).importer);
    return importer;
}

/// Puts the frame read last on the canvas.
bool Server::drawPicture(std::uint32_t width, std::uint32_t height)
{
    AVBased::IAVFrame* frame = m_movie->frame();
    if (!frame || width == 0 || height == 0)
        return false;
    if (!m_converter || width != m_width || height != m_height) {
        m_converter.reset(m_engine.createConverter(width, height));
        m_width = width;
        m_height = height;
    }
    AVBased::IAVPicture* picture = m_converter ? m_converter->convert(frame) : nullptr;
    if (!picture)
        log(m_moviePath + ": a frame cannot be made into a picture");
    std::int32_t stride = 0;
    std::int32_t rows = 0;
    std::int32_t bytes = 0;
    const void* pixels = picture ? picture->plane(0, &stride, &rows, &bytes) : nullptr;
    return pixels && m_canvas.write(pixels, static_cast<std::size_t>(bytes));
}

void Server::keepLine(const char* line)
{
    m_lines.emplace_back(line);
    if (m_lines.size() == mostLines)
        sendLines();
}

void Server::sendLines()
{
    flatbuffers::FlatBufferBuilder builder;
    for (const std::string& line : m_lines) {
        builder.Clear();
        m_channel.send(builder, wire::CreateLogLine(builder, builder.CreateString(line)),
                       wire::noDeadline);
    }
    m_lines.clear();
}

template <typename Table>
void Server::send(flatbuffers::FlatBufferBuilder& builder, flatbuffers::Offset<Table> body)
{
    sendLines();
    if (m_channel.send(builder, body, wire::noDeadline) != wire::Channel::Result::done)
        m_isDone = true;
}

} // namespace engine
