// SPDX-License-Identifier: LGPL-2.1-or-later
#pragma once

#include "engine_generated.h"
#include "enginelink/descriptor.h"

#include <chrono>
#include <cstdint>
#include <vector>

namespace wire {

using Clock = std::chrono::steady_clock;

/// Of the richest disc, many times over.
constexpr std::size_t largestMessage = std::size_t{128} * 1024 * 1024;

/// Never reached.
constexpr Clock::time_point noDeadline = Clock::time_point::max();

/// What came through a channel: a message in which every offset and every text has been looked at,
/// so that reading it stays inside it. What the values in it mean has not.
class Letter
{
public:
    /// Only after Channel::receive() has filled it.
    const Message& message() const { return *GetMessage(m_bytes.data()); }

    /// The message's body; null when it is something else.
    template <typename Table>
    const Table* as() const
    {
        return message().body_as<Table>();
    }

    Descriptor takeDescriptor() { return std::move(m_descriptor); }
    std::size_t size() const { return m_bytes.size(); }

private:
    friend class Channel;

    std::vector<std::uint8_t> m_bytes;
    Descriptor m_descriptor;
};

/// One end of the socket between the two halves of the engine. Used on one thread at a time.
class Channel
{
public:
    /// Whether descriptors may come in; where they may not, the system drops them.
    enum class Descriptors
    {
        refused,
        taken
    };

    enum class Result
    {
        done,
        ended,    ///< the other half has gone
        tooLate,  ///< the deadline has passed
        nonsense, ///< what came is no message
    };

    Channel(Descriptor socket, Descriptors descriptors)
        : m_socket(std::move(socket))
        , m_descriptors(descriptors)
    {}

    /// Sends a message of `Table`, and `descriptor` with it unless that is -1.
    template <typename Table>
    Result send(flatbuffers::FlatBufferBuilder& builder, flatbuffers::Offset<Table> body,
                Clock::time_point deadline, int descriptor = -1)
    {
        builder.Finish(
            CreateMessage(builder, BodyTraits<Table>::enum_value, body.Union(), m_request));
        return sendBytes(builder.GetBufferPointer(), builder.GetSize(), deadline, descriptor);
    }

    /// A message of at most `largest` bytes.
    Result receive(Letter& letter, Clock::time_point deadline,
                   std::size_t largest = largestMessage);

    /// Messages that are sent belong to the request of this number from now on.
    void setRequest(std::uint32_t number) { m_request = number; }

private:
    Result sendBytes(const std::uint8_t* bytes, std::size_t size, Clock::time_point deadline,
                     int descriptor);
    Result receiveSize(std::uint32_t& size, Letter& letter, Clock::time_point deadline);
    Result wait(short events, Clock::time_point deadline) const;

    Descriptor m_socket;
    Descriptors m_descriptors;
    std::uint32_t m_request = 0;
};

/// Whether `size` bytes are a message. Aligned as new[] aligns.
bool isMessage(const std::uint8_t* bytes, std::size_t size);

} // namespace wire
