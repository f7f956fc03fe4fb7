// SPDX-License-Identifier: GPL-2.0-or-later
#include "fakeengine.h"

#include "fakeobject.h"

#include <cstring>

AVBased::AVStreamInfo fakeStream(int kind, int id, double duration)
{
    AVBased::AVStreamInfo stream{};
    stream.name = stream.language = "";
    stream.codecName = "h264";
    std::memcpy(stream.fourcc, "FAKE", 4);
    stream.kind = kind;
    stream.id = id;
    stream.duration = duration;
    return stream;
}

AVBased::AVMovieInfo FakeMovie::record() const
{
    return {name.constData(), id,    quint32(streams.size()), streams.data(), quint32(tags.size()),
            tags.data(),      "fake"};
}

FakeEngine::FakeEngine()
{
    reset();
}

/// Never destroyed: the import context lets go of its converter when the process ends.
FakeEngine& FakeEngine::instance()
{
    static FakeEngine* const engine = new FakeEngine;
    return *engine;
}

void FakeEngine::reset()
{
    QMutexLocker lock(&m_mutex);
    items.clear();
    discs.clear();
    anyTimeline.reset();
    failing.clear();
    pictureFormat = 30;
    topDown = true;
    hook = nullptr;
    m_calls.clear();
    m_misuses.clear();
    // The converter belongs to the import context, for the rest of the process.
    std::vector<std::unique_ptr<FakeObject>> kept;
    for (auto& object : m_objects) {
        if (!object->isReleased() && object->name() == QLatin1String("converter"))
            kept.push_back(std::move(object));
    }
    m_objects = std::move(kept);
}

QStringList FakeEngine::calls(const QString& prefix) const
{
    QMutexLocker lock(&m_mutex);
    QStringList found;
    for (const QString& call : m_calls) {
        if (call.startsWith(prefix))
            found.append(call);
    }
    return found;
}

void FakeEngine::forgetCalls()
{
    QMutexLocker lock(&m_mutex);
    m_calls.clear();
}

QStringList FakeEngine::misuses() const
{
    QMutexLocker lock(&m_mutex);
    return m_misuses;
}

QStringList FakeEngine::living() const
{
    QMutexLocker lock(&m_mutex);
    QStringList names;
    for (const auto& object : m_objects) {
        if (!object->isReleased() && object->name() != QLatin1String("converter"))
            names.append(object->name());
    }
    return names;
}

bool FakeEngine::note(const QString& call, bool isMisuse)
{
    {
        QMutexLocker lock(&m_mutex);
        m_calls.append(call);
        if (isMisuse)
            m_misuses.append(call);
    }
    if (hook)
        hook(call);
    for (const QString& prefix : failing) {
        if (call.startsWith(prefix))
            return false;
    }
    return true;
}
