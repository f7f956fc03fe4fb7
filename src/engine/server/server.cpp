// SPDX-License-Identifier: GPL-2.0-or-later
#include "server/server.h"

#include "bluray/bdloader.h"
#include "engine.h"
#include "enginelink/log.h"
#include "media/mediaimporter.h"
#include "picture/imageconverter.h"
#include "server/itemwriter.h"
#include "vspavbased/enginelog.h"
#include "vspavbased/iavpicture.h"

#include <exception>

namespace engine {

namespace {

void sendLogLine(const char* message, void* channel)
{
    flatbuffers::FlatBufferBuilder builder;
    const auto line = wire::CreateLogLine(builder, builder.CreateString(message));
    static_cast<wire::Channel*>(channel)->send(builder, line, wire::noDeadline);
}

ImporterPtr openAny(const std::string& path, bool isTimeline)
{
    return ImporterPtr(isTimeline ? openTimeline(path) : engine::openItem(path));
}

} // namespace

Server::Server(wire::Channel& channel)
    : m_channel(channel)
    , m_files(channel)
{
    useFiles(m_files);
    AVBased::setLogReceiver(sendLogLine, &m_channel);
}

void Server::run()
{
    wire::Letter request;
    while (!m_isDone && m_channel.receive(request, wire::noDeadline) == wire::Channel::Result::done)
        answer(request);
}

void Server::answer(wire::Letter& request)
{
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
    const ImporterPtr importer = openAny(path, request.is_timeline());
    flatbuffers::Offset<wire::Item> item = 0;
    if (importer) {
        const auto* media = dynamic_cast<const MediaImporter*>(importer.get());
        item = writeItem(builder, *importer, path, media ? media->reopening().toBytes() : Bytes());
    }
    send(builder, wire::CreateDescribed(builder, item));
}

void Server::readDisc(const wire::ReadDisc& request)
{
    flatbuffers::FlatBufferBuilder builder;
    const std::unique_ptr<BdLoader, Release> loader(new BdLoader);
    flatbuffers::Offset<wire::Disc> disc = 0;
    if (loader->open(request.path()->c_str()))
        disc = writeDisc(builder, *loader);
    send(builder, wire::CreateDiscRead(builder, disc));
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
    ImporterPtr importer;
    if (const auto* kept = request.reopening()) {
        if (const auto reopening = Reopening::fromBytes(kept->data(), kept->size()))
            importer.reset(MediaImporter::reopen(path, *reopening));
    }
    if (!importer)
        importer = openAny(path, request.is_timeline());
    if (importer)
        m_movie = OpenMovie::open(std::move(importer), request.movie(), request.stream());
    m_moviePath = path;
    return m_movie.get();
}

/// Puts the frame read last on the canvas.
bool Server::drawPicture(std::uint32_t width, std::uint32_t height)
{
    AVBased::IAVFrame* frame = m_movie->frame();
    if (!frame || width == 0 || height == 0)
        return false;
    if (!m_converter || width != m_width || height != m_height) {
        m_converter.reset(ImageConverter::create(AVBased::PixelFormatArgb32, width, height));
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

template <typename Table>
void Server::send(flatbuffers::FlatBufferBuilder& builder, flatbuffers::Offset<Table> body)
{
    if (m_channel.send(builder, body, wire::noDeadline) != wire::Channel::Result::done)
        m_isDone = true;
}

} // namespace engine
