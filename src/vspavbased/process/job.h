// SPDX-License-Identifier: LGPL-2.1-or-later
#pragma once

#include "enginelink/channel.h"
#include "enginelink/timeline/timeline.h"
#include "vspavbased/enginecontrol.h"

#include <chrono>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>

namespace engine {

/// What a request is about.
struct Item
{
    std::string path;
    std::shared_ptr<const Timeline> timeline; ///< of a timeline file; else null
};

/// One request to an engine process and what came of it; a subclass a kind of request. Its answer
/// is there once EnginePool says that it is done.
class Job
{
public:
    explicit Job(Item item)
        : m_item(std::move(item))
    {}
    virtual ~Job() = default;

    const Item& item() const { return m_item; }

    /// Why the item cannot be opened, as far as the engine knows. Nothing when that is not the
    /// item's fault, or when it can be.
    std::optional<AVBased::Refusal> refusal() const { return m_refusal; }

    /// Whether pictures or streams may have to be decoded for it: else the program that only reads
    /// tables will do.
    virtual bool needsDecoding() const { return true; }

    /// How long an answer may take.
    virtual std::chrono::milliseconds limit() const = 0;

    /// Bytes that an answer may take, or anything else that is said before it.
    virtual std::size_t largestAnswer() const = 0;

    /// Bytes that the picture takes that is asked for; 0 when there is none.
    virtual std::size_t canvasSize() const { return 0; }

    /// Sends the request; `file` is the item's descriptor, or -1.
    virtual wire::Channel::Result send(wire::Channel& channel, wire::Clock::time_point deadline,
                                       int file) const = 0;

    /// Takes the answer out of `letter`, and the picture from `canvas`. False when it answers
    /// something else, or is one that no engine gives.
    virtual bool accept(wire::Letter& letter, const void* canvas) = 0;

    Job(const Job&) = delete;
    Job& operator=(const Job&) = delete;

protected:
    void setRefusal(AVBased::Refusal refusal) { m_refusal = refusal; }

private:
    friend class EnginePool;

    enum class State
    {
        fresh,
        queued, ///< to be run ahead of being asked for
        running,
        answered,
        failed
    };

    Item m_item;
    std::optional<AVBased::Refusal> m_refusal;
    // The pool's, under its lock:
    State m_state = State::fresh;
    std::string m_failure; ///< why there is no answer, until it is in the log
};

using JobPtr = std::shared_ptr<Job>;

} // namespace engine
