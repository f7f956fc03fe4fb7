// SPDX-License-Identifier: LGPL-2.1-or-later
#pragma once

#include <chrono>
#include <cstdint>
#include <string>

namespace engine {

/// More of them would mostly wait for the disk.
constexpr unsigned mostProcesses = 4;

/// How engine processes are used. The deadlines stand behind the engine's own, which end what they
/// can reach: they are for what does not come back.
struct Policy
{
    std::string program;                       ///< the engine's program
    std::string tablesProgram;                 ///< another that starts faster, and describes DVDs
    unsigned processes;                        ///< at work at once
    std::chrono::milliseconds describe{45000}; ///< a media file, a DVD, a timeline
    std::chrono::milliseconds readDisc{150000};
    std::chrono::milliseconds takePicture{25000};
    std::chrono::milliseconds idle{10000}; ///< after which they are ended
    std::uint32_t readsOfPicture = 4;      ///< frames behind a position, of which the last is shown
    bool readsAhead = true;                ///< where there are two processes or more

    /// What suits this machine.
    Policy();

    void end(); ///< with the process
};

/// In force for the whole process. To be changed before the engine is first used, by tests.
Policy& policy();

} // namespace engine
