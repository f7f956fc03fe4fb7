// SPDX-License-Identifier: GPL-2.0-or-later
#include "importqueue.h"

ImportQueue::ImportQueue(ImportSession::Receiver receiver)
    : m_receiver(std::move(receiver))
    , m_import([this](const ImportEvent& event) { receive(event); })
{}

void ImportQueue::add(const ImportRequest& request)
{
    m_waiting.push_back(request);
    next();
}

void ImportQueue::stop()
{
    m_waiting.clear();
    if (m_isRunning)
        m_import.stop();
}

void ImportQueue::receive(const ImportEvent& event)
{
    const bool isOver = event.kind == ImportEvent::Finished;
    if (isOver)
        m_isRunning = false;
    m_receiver(event);
    if (isOver)
        next();
}

void ImportQueue::next()
{
    while (!m_isRunning && !m_waiting.empty()) {
        const ImportRequest request = std::move(m_waiting.front());
        m_waiting.pop_front();
        m_isRunning = m_import.start(request);
        if (!m_isRunning) {
            m_receiver({ImportEvent::NotStarted});
            m_receiver({ImportEvent::Finished});
        }
    }
}
