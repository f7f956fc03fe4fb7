// SPDX-License-Identifier: LGPL-2.1-or-later
#include "enginelink/channel.h"

#include <poll.h>
#include <sys/socket.h>
#include <sys/uio.h>

#include <algorithm>
#include <cerrno>
#include <climits>
#include <cstring>

namespace wire {

namespace {

constexpr unsigned deepestTable = 16;
constexpr unsigned mostTables = 8 * 1000 * 1000;

/// Memory grows with what has come, not with what is announced.
constexpr std::size_t largestStep = std::size_t{1024} * 1024;

/// Room for one descriptor beside a message.
union Control
{
    cmsghdr header;
    char bytes[CMSG_SPACE(sizeof(int))];
};

int millisecondsTo(Clock::time_point deadline)
{
    if (deadline == noDeadline)
        return -1;
    const auto left = std::chrono::ceil<std::chrono::milliseconds>(deadline - Clock::now()).count();
    return static_cast<int>(std::clamp<std::int64_t>(left, 0, INT_MAX));
}

bool isToBeTriedAgain(int error)
{
    return error == EAGAIN || error == EWOULDBLOCK || error == EINTR;
}

} // namespace

bool isMessage(const std::uint8_t* bytes, std::size_t size)
{
    flatbuffers::Verifier verifier(bytes, size, deepestTable, mostTables);
    return VerifyMessageBuffer(verifier);
}

Channel::Result Channel::sendBytes(const std::uint8_t* bytes, std::size_t size,
                                   Clock::time_point deadline, int descriptor)
{
    if (size > largestMessage)
        return Result::nonsense;
    std::uint32_t announced = static_cast<std::uint32_t>(size);
    const std::size_t total = sizeof(announced) + size;
    for (std::size_t done = 0; done < total;) {
        const std::size_t head = std::min(done, sizeof(announced));
        iovec parts[2] = {{reinterpret_cast<char*>(&announced) + head, sizeof(announced) - head},
                          {const_cast<std::uint8_t*>(bytes) + (done - head), size - (done - head)}};
        msghdr message{};
        message.msg_iov = parts;
        message.msg_iovlen = 2;
        Control control{};
        if (done == 0 && descriptor >= 0) {
            message.msg_control = control.bytes;
            message.msg_controllen = sizeof(control.bytes);
            control.header.cmsg_level = SOL_SOCKET;
            control.header.cmsg_type = SCM_RIGHTS;
            control.header.cmsg_len = CMSG_LEN(sizeof(int));
            std::memcpy(CMSG_DATA(&control.header), &descriptor, sizeof(int));
        }
        const ssize_t count = sendmsg(m_socket.get(), &message, MSG_NOSIGNAL | MSG_DONTWAIT);
        if (count >= 0) {
            done += static_cast<std::size_t>(count);
            continue;
        }
        if (!isToBeTriedAgain(errno))
            return Result::ended;
        const Result room = wait(POLLOUT, deadline);
        if (room != Result::done)
            return room;
    }
    return Result::done;
}

Channel::Result Channel::receive(Letter& letter, Clock::time_point deadline, std::size_t largest)
{
    std::uint32_t size = 0;
    const Result announced = receiveSize(size, letter, deadline);
    if (announced != Result::done)
        return announced;
    if (size > largest)
        return Result::nonsense;
    std::vector<std::uint8_t>& bytes = letter.m_bytes;
    bytes.clear();
    for (std::size_t done = 0; done < size;) {
        if (done == bytes.size())
            bytes.resize(std::min<std::size_t>(size, done + std::max(done, largestStep)));
        const ssize_t count =
            recv(m_socket.get(), bytes.data() + done, bytes.size() - done, MSG_DONTWAIT);
        if (count > 0) {
            done += static_cast<std::size_t>(count);
            if (deadline != noDeadline && Clock::now() >= deadline)
                return Result::tooLate;
            continue;
        }
        if (count == 0 || !isToBeTriedAgain(errno))
            return Result::ended;
        const Result more = wait(POLLIN, deadline);
        if (more != Result::done)
            return more;
    }
    return isMessage(bytes.data(), bytes.size()) ? Result::done : Result::nonsense;
}

/// The size that goes before a message, and the descriptor that comes with its first byte.
Channel::Result Channel::receiveSize(std::uint32_t& size, Letter& letter,
                                     Clock::time_point deadline)
{
    letter.m_descriptor.reset();
    for (std::size_t done = 0; done < sizeof(size);) {
        const Result more = wait(POLLIN, deadline);
        if (more != Result::done)
            return more;
        iovec part = {reinterpret_cast<char*>(&size) + done, sizeof(size) - done};
        Control control{};
        msghdr message{};
        message.msg_iov = &part;
        message.msg_iovlen = 1;
        if (m_descriptors == Descriptors::taken) {
            message.msg_control = control.bytes;
            message.msg_controllen = sizeof(control.bytes);
        }
        const ssize_t count = recvmsg(m_socket.get(), &message, MSG_CMSG_CLOEXEC | MSG_DONTWAIT);
        if (count == 0 || (count < 0 && !isToBeTriedAgain(errno)))
            return Result::ended;
        if (count < 0)
            continue;
        done += static_cast<std::size_t>(count);
        const cmsghdr* header = CMSG_FIRSTHDR(&message);
        if (header && header->cmsg_type == SCM_RIGHTS) {
            int descriptor = -1;
            std::memcpy(&descriptor, CMSG_DATA(header), sizeof(descriptor));
            letter.m_descriptor.reset(descriptor);
        }
    }
    return Result::done;
}

Channel::Result Channel::wait(short events, Clock::time_point deadline) const
{
    pollfd file = {m_socket.get(), events, 0};
    for (;;) {
        // Also when there is always something to do.
        if (deadline != noDeadline && Clock::now() >= deadline)
            return Result::tooLate;
        const int count = poll(&file, 1, millisecondsTo(deadline));
        if (count > 0)
            return Result::done;
        if (count < 0 && errno != EINTR)
            return Result::ended;
    }
}

} // namespace wire
