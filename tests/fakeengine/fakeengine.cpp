// SPDX-License-Identifier: GPL-2.0-or-later
#include "fakeengine.h"

#include "fakeobjects.h"
#include "vspavbased/cavbasedcontext.h"

#include <QtCore/QMutexLocker>

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
    hasTimeline = hasConverter = hasLoader = topDown = true;
    pictureFormat = 30;
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

QStringList FakeEngine::calls() const
{
    QMutexLocker lock(&m_mutex);
    return m_calls;
}

QStringList FakeEngine::calls(const QString& prefix) const
{
    QStringList found;
    for (const QString& call : calls()) {
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

void FakeEngine::note(const QString& call)
{
    {
        QMutexLocker lock(&m_mutex);
        m_calls.append(call);
    }
    if (hook)
        hook(call);
}

void FakeEngine::noteMisuse(const QString& call)
{
    QMutexLocker lock(&m_mutex);
    m_misuses.append(call);
}

void FakeObject::called(const QString& operation)
{
    const QString call = m_name + QLatin1Char('.') + operation;
    if (m_released)
        FakeEngine::instance().noteMisuse(call);
    FakeEngine::instance().note(call);
}

void FakeObject::released()
{
    called(QStringLiteral("release"));
    m_released = true;
}

namespace Vesk {

CAVBasedContext* CAVBasedContext::instance()
{
    static CAVBasedContext context;
    return &context;
}

CAVBasedModel* CAVBasedContext::avbasedModel()
{
    static CAVBasedModel model;
    return &model;
}

CAVBasedModelWrapper* CAVBasedModel::w_func()
{
    static CAVBasedModelWrapper wrapper;
    return &wrapper;
}

AVBased::IAVManager* CAVBasedModelWrapper::avmanager()
{
    static FakeManager manager;
    return &manager;
}

AVBased::IBDLoader* CAVBasedModelWrapper::createBDLoader()
{
    FakeEngine& engine = FakeEngine::instance();
    engine.note(QStringLiteral("createBDLoader"));
    return engine.hasLoader ? engine.make<FakeLoader>() : nullptr;
}

AVBased::IImageConverter* CAVBasedModelWrapper::CreateImageConverterEx(unsigned int pixelFormat,
                                                                       unsigned int width,
                                                                       unsigned int height,
                                                                       unsigned int flags)
{
    FakeEngine& engine = FakeEngine::instance();
    engine.note(QStringLiteral("createConverter %1 %2 %3 %4")
                    .arg(pixelFormat)
                    .arg(width)
                    .arg(height)
                    .arg(flags));
    return engine.hasConverter ? engine.make<FakeConverter>(int(width), int(height)) : nullptr;
}

} // namespace Vesk
