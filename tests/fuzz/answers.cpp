// SPDX-License-Identifier: GPL-2.0-or-later
//
// What an engine process may send to the near half: a byte that says what it was asked, and all
// that comes through its socket.
#include "boundarywalk.h"

#include "ahead/pictureplan.h"
#include "discloader.h"
#include "importer.h"
#include "policy.h"
#include "process/engineprocess.h"
#include "process/engineprogram.h"
#include "process/jobs.h"
#include "refusals.h"

#include <sys/socket.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <random>

using namespace engine;

extern "C" std::size_t LLVMFuzzerMutate(std::uint8_t* data, std::size_t size, std::size_t most);

namespace {

const Item item{"/item", nullptr};

/// How many inputs were answers, for those who wonder what the fuzzer does all day.
struct Tally
{
    ~Tally() { std::fprintf(stderr, "%zu of %zu inputs were answers\n", answers, inputs); }

    std::size_t inputs = 0;
    std::size_t answers = 0;
} tally;

/// What the process sends is there, and the end behind it, before it is asked.
bool isAnswered(Job& job, const std::uint8_t* data, std::size_t size)
{
    int ends[2];
    const int room = 2 * 1024 * 1024;
    if (socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0, ends) != 0)
        std::abort();
    static EngineProgram none(item.path); // which is never started
    EngineProcess process(none, 1, wire::Descriptor(ends[0]));
    const wire::Descriptor farEnd(ends[1]);
    setsockopt(farEnd.get(), SOL_SOCKET, SO_SNDBUF, &room, sizeof(room));
    if (send(farEnd.get(), data, size, MSG_DONTWAIT) != ssize_t(size))
        std::abort();
    shutdown(farEnd.get(), SHUT_WR);
    std::string failure;
    return process.run(job, failure) == EngineProcess::Outcome::answered;
}

/// Whoever answers without a record says why, in a word that the host knows.
template <typename SomeJob>
void checkRefusal(const SomeJob& job, bool answered)
{
    const bool isRefused = answered && !job.record();
    if (isRefused != job.refusal().has_value() ||
        (isRefused && *job.refusal() > AVBased::RefusedNoEngine))
        std::abort();
    if (isRefused)
        refuse(item.path, *job.refusal(), true);
}

bool describe(const std::uint8_t* data, std::size_t size)
{
    DescribeJob job(item);
    const bool answered = isAnswered(job, data, size);
    checkRefusal(job, answered);
    if (job.record()) {
        auto* importer = new Importer(job.record());
        walk(*importer, item.path.c_str());
        planPictures(*job.record());
        importer->release();
    }
    return answered;
}

bool readDisc(const std::uint8_t* data, std::size_t size)
{
    ReadDiscJob job(item);
    const bool answered = isAnswered(job, data, size);
    checkRefusal(job, answered);
    if (job.record()) {
        auto* loader = new DiscLoader(job.record());
        walk(*loader);
        planPictures(*job.record());
        loader->release();
    }
    return answered;
}

/// Of an item that has nothing: that suffices to be asked for a picture.
ItemRecordPtr plainRecord()
{
    static DescribeJob job(item);
    if (job.record())
        return job.record();
    int ends[2];
    if (socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0, ends) != 0)
        std::abort();
    wire::Channel nearEnd(wire::Descriptor(ends[0]), wire::Channel::Descriptors::refused);
    wire::Channel farEnd(wire::Descriptor(ends[1]), wire::Channel::Descriptors::refused);
    flatbuffers::FlatBufferBuilder builder;
    const auto empty =
        wire::CreateItem(builder, builder.CreateString("media"), builder.CreateString("Media file"),
                         builder.CreateVector(std::vector<flatbuffers::Offset<wire::Movie>>()));
    wire::Letter letter;
    farEnd.send(builder, wire::CreateDescribed(builder, empty), wire::noDeadline);
    nearEnd.receive(letter, wire::noDeadline);
    if (!job.accept(letter, nullptr))
        std::abort();
    return job.record();
}

bool takePicture(const std::uint8_t* data, std::size_t size)
{
    FrameWish wish;
    wish.reads = 4;
    wish.width = 16;
    wish.height = 9;
    FramesJob job(plainRecord(), wish);
    const bool answered = isAnswered(job, data, size);
    if (job.reads().size() > wish.reads || job.pixels().size() > wish.width * wish.height)
        std::abort();
    return answered;
}

} // namespace

extern "C" int LLVMFuzzerInitialize(int* /*count*/, char*** /*arguments*/)
{
    const std::chrono::milliseconds limit(500);
    policy().describe = policy().readDisc = policy().takePicture = limit;
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    if (size == 0)
        return -1;
    bool (*const questions[])(const std::uint8_t*, std::size_t) = {describe, readDisc, takePicture};
    ++tally.inputs;
    tally.answers += questions[data[0] % 3](data + 1, size - 1);
    return 0;
}

/// Mostly keeps what makes a message of the input: its size, and where things lie in it.
extern "C" std::size_t LLVMFuzzerCustomMutator(std::uint8_t* data, std::size_t size,
                                               std::size_t most, unsigned seed)
{
    constexpr std::size_t head = 1 + sizeof(std::uint32_t);
    std::minstd_rand random(seed);
    if (size <= head || random() % 8 == 0)
        return LLVMFuzzerMutate(data, size, most);
    if (random() % 2 == 0) {
        const std::size_t at = head + random() % (size - head);
        const std::size_t count = std::min<std::size_t>(1 + random() % 8, size - at);
        LLVMFuzzerMutate(data + at, count, count);
        return size;
    }
    const std::size_t changed = LLVMFuzzerMutate(data + head, size - head, most - head);
    const auto announced = std::uint32_t(changed);
    std::memcpy(data + 1, &announced, sizeof(announced));
    return head + changed;
}
