// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include "engine.h"
#include "enginelink/channel.h"
#include "server/canvas.h"
#include "server/openmovie.h"
#include "server/requestedfiles.h"
#include "vspavbased/iimageconverter.h"

#include <string>
#include <vector>

namespace engine {

/// One engine process at work: answers the requests that come through a channel, one after another,
/// until the other end is closed. What it keeps from one to the next, it can make again.
class Server
{
public:
    Server(wire::Channel& channel, Engine& engine);

    /// Returns when the near half is gone, or says what nobody can understand.
    void run();

private:
    void answer(wire::Letter& request);
    void describe(const wire::Describe& request);
    void readDisc(const wire::ReadDisc& request);
    void takePicture(const wire::TakePicture& request);
    OpenMovie* openMovie(const wire::TakePicture& request);
    bool drawPicture(std::uint32_t width, std::uint32_t height);

    void keepLine(const char* line);
    void sendLines();
    template <typename Table>
    void send(flatbuffers::FlatBufferBuilder& builder, flatbuffers::Offset<Table> body);

    ImporterPtr reopen(const wire::TakePicture& request, const std::string& path);

    wire::Channel& m_channel;
    Engine& m_engine;
    RequestedFiles m_files;
    Canvas m_canvas;
    std::unique_ptr<OpenMovie> m_movie;
    std::string m_moviePath; ///< of the item of m_movie
    std::unique_ptr<AVBased::IImageConverter, Release> m_converter;
    std::uint32_t m_width = 0; ///< of m_converter
    std::uint32_t m_height = 0;
    std::vector<std::string> m_lines; ///< of the log, not yet sent
    bool m_isDone = false;
};

} // namespace engine
