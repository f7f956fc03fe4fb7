// SPDX-License-Identifier: GPL-2.0-or-later
#include "fakeengine.h"

#include "fakeobject.h"

#include <QtCore/QRegularExpression>

#include <algorithm>
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

FakeEngine& FakeEngine::instance()
{
    static FakeEngine* const engine = new FakeEngine;
    return *engine;
}

void FakeEngine::reset()
{
    static_cast<FakeScript&>(*this) = FakeScript();
    QMutexLocker lock(&m_mutex);
    m_calls.clear();
    m_leftovers.clear();
}

QStringList FakeEngine::calls(const QString& pattern) const
{
    QMutexLocker lock(&m_mutex);
    return m_calls.filter(QRegularExpression(pattern));
}

void FakeEngine::forgetCalls()
{
    QMutexLocker lock(&m_mutex);
    m_calls.clear();
}

QStringList FakeEngine::leftovers() const
{
    QMutexLocker lock(&m_mutex);
    return m_leftovers;
}

bool FakeEngine::note(const QString& call, bool isMisuse)
{
    {
        QMutexLocker lock(&m_mutex);
        m_calls.append(call);
        if (isMisuse)
            m_leftovers.append(call);
    }
    if (hook && call.startsWith(hooked))
        hook();
    return std::none_of(failing.begin(), failing.end(),
                        [&call](const QString& prefix) { return call.startsWith(prefix); });
}

void FakeEngine::on(const char* call, const std::function<void()>& action)
{
    hooked = call;
    hook = action;
}

void FakeEngine::noteRelease(const QString& name)
{
    QMutexLocker lock(&m_mutex);
    m_leftovers.removeOne(name);
}

void FakeEngine::keepObject(std::unique_ptr<FakeObject> object)
{
    QMutexLocker lock(&m_mutex);
    if (object->name() != "converter")
        m_leftovers.append(object->name());
    m_objects.push_back(std::move(object));
}
