// SPDX-License-Identifier: GPL-2.0-or-later
//
// Stands in the place of the engine's program and misbehaves as the names of items say: an item
// "kill-11.mp4" ends its process by signal 11, "late.mp4" is answered too late. Any other item is a
// film of ten seconds, and its picture one of grey.
#include "enginelink/channel.h"
#include "enginelink/supervision.h"
#include "server/supervisor.h"

#include <sys/mman.h>

#include <csignal>
#include <cstdlib>
#include <cstring>
#include <random>
#include <string>
#include <thread>

using flatbuffers::FlatBufferBuilder;
using wire::noDeadline;

namespace {

constexpr auto tooLong = std::chrono::seconds(2); // for the tests' deadlines

/// What a message of arbitrary bytes would look like.
struct Garbage
{
    std::uint32_t size = 200;
    unsigned char bytes[200];
};

class ScriptedServer
{
public:
    explicit ScriptedServer(wire::Descriptor socket)
        : m_socket(socket.get())
        , m_channel(std::move(socket), wire::Channel::Descriptors::taken)
    {}

    void run()
    {
        FlatBufferBuilder builder;
        m_channel.send(builder, wire::CreateConfined(builder, wire::allProtections), noDeadline);
        while (m_channel.receive(m_request, noDeadline) == wire::Channel::Result::done)
            answer();
    }

private:
    void answer()
    {
        m_channel.setRequest(m_request.message().request());
        if (const auto* order = m_request.as<wire::UseCanvas>()) {
            m_canvasSize = order->bytes();
            const wire::Descriptor memory = m_request.takeDescriptor();
            m_canvas =
                mmap(nullptr, m_canvasSize, PROT_READ | PROT_WRITE, MAP_SHARED, memory.get(), 0);
            // Nobody may take the pages away from the reader.
            if (ftruncate(memory.get(), 0) == 0)
                std::abort();
        } else if (const auto* request = m_request.as<wire::Describe>()) {
            misbehave(request->path()->str());
            describe(request->path()->str());
        } else if (const auto* request = m_request.as<wire::TakePicture>()) {
            const std::string path = request->path()->str();
            if (path.find("picture-") != std::string::npos)
                misbehave(path);
            takePicture(*request);
        }
    }

    /// What the name of an item asks for before the answer.
    void misbehave(const std::string& path)
    {
        const auto says = [&path](const char* word) {
            return path.find(word) != std::string::npos;
        };
        const bool isPicture = m_request.as<wire::TakePicture>() != nullptr;
        if (says("picture-") != isPicture)
            return;
        const std::size_t signal = path.find("kill-");
        if (signal != std::string::npos) {
            const int number = std::atoi(path.c_str() + signal + 5);
            std::signal(number, SIG_DFL); // of which sanitizers would tell
            kill(getpid(), number);
        }
        if (says("exit"))
            _exit(0);
        if (says("loop"))
            for (volatile int i = 0;; i = i + 1) {
            }
        if (says("sleep"))
            std::this_thread::sleep_for(std::chrono::hours(1));
        if (says("memory"))
            _exit(wire::EndedForMemory);
        if (says("late"))
            std::this_thread::sleep_for(tooLong);
        if (says("order"))
            sendWrongAnswer();
        if (says("random"))
            sendGarbage();
        if (says("endless"))
            announce(UINT32_MAX);
        if (says("short"))
            announce(50000);
        if (says("closed")) {
            close(m_socket);
            std::this_thread::sleep_for(std::chrono::hours(1));
        }
        if (says("deaf"))
            askAndNotListen();
        if (says("flood"))
            flood();
        if (says("twice"))
            describe(path);
    }

    void sendWrongAnswer()
    {
        FlatBufferBuilder builder;
        m_channel.send(builder, wire::CreateDiscRead(builder), noDeadline);
    }

    void sendGarbage()
    {
        std::mt19937 random(static_cast<unsigned>(getpid()));
        Garbage garbage;
        for (unsigned char& byte : garbage.bytes)
            byte = static_cast<unsigned char>(random());
        static_cast<void>(write(m_socket, &garbage, sizeof(garbage)));
    }

    /// A message that is so long, of which nothing comes.
    void announce(std::uint32_t size)
    {
        static_cast<void>(write(m_socket, &size, sizeof(size)));
        std::this_thread::sleep_for(std::chrono::hours(1));
    }

    /// Until the other side has no room for its answers.
    void askAndNotListen()
    {
        for (;;) {
            FlatBufferBuilder builder;
            const auto question = wire::CreateListFolder(builder, builder.CreateString("/usr"));
            m_channel.send(builder, question, noDeadline);
        }
    }

    void flood()
    {
        for (;;) {
            FlatBufferBuilder builder;
            const auto line = wire::CreateLogLine(builder, builder.CreateString("again"));
            m_channel.send(builder, line, noDeadline);
        }
    }

    void describe(const std::string& path)
    {
        const bool lies =
            path.find("lie-") != std::string::npos && path.find("picture-") == std::string::npos;
        FlatBufferBuilder builder;
        const auto stream = wire::CreateStream(
            builder, builder.CreateString(""), 1, 0, builder.CreateString("h264"),
            builder.CreateString(lies ? "a very long code" : "avc1"), builder.CreateString(""),
            lies ? -1 : 64, 48, 0, 0, 0, 0, 0, 0, 10.0);
        const auto movie =
            wire::CreateMovie(builder, builder.CreateString(""), 0, builder.CreateString("mov"),
                              builder.CreateVector(std::vector{stream}),
                              builder.CreateVector(std::vector<flatbuffers::Offset<wire::Tag>>()));
        const auto item =
            wire::CreateItem(builder, builder.CreateString("media"), builder.CreateString("Media"),
                             builder.CreateVector(std::vector{movie}));
        m_channel.send(builder, wire::CreateDescribed(builder, item), noDeadline);
    }

    void takePicture(const wire::TakePicture& request)
    {
        const bool lies = request.path()->str().find("lie-") != std::string::npos;
        FlatBufferBuilder builder;
        const std::vector<wire::Read> reads(request.reads() + (lies ? 100 : 0),
                                            wire::Read(100, true, true));
        const bool hasPicture = request.width() > 0;
        if (hasPicture)
            std::memset(m_canvas, 0x80, m_canvasSize);
        m_channel.send(builder,
                       wire::CreatePictureTaken(builder, true, builder.CreateVectorOfStructs(reads),
                                                hasPicture),
                       noDeadline);
    }

    int m_socket;
    wire::Channel m_channel;
    wire::Letter m_request;
    void* m_canvas = nullptr;
    std::size_t m_canvasSize = 0;
};

} // namespace

int main(int /*argc*/, char** argv)
{
    engine::Supervisor supervisor(wire::Descriptor(wire::supervisorSocket), std::atoi(argv[1]));
    if (wire::Descriptor socket = supervisor.run()) {
        ScriptedServer(std::move(socket)).run();
        _exit(0);
    }
    return 0;
}
