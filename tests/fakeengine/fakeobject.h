// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include "fakeengine.h"

#include <QtCore/QIODevice>
#include <QtCore/QTextStream>

#include <utility>

/// "operation argument argument".
template <typename... Arguments>
QString callText(const QString& operation, const Arguments&... arguments)
{
    QString text = operation;
    QTextStream stream(&text, QIODevice::Append);
    (void(stream << ' ' << arguments), ...);
    return text;
}

/// An object that the module may hold.
class FakeObject
{
public:
    explicit FakeObject(const QString& name)
        : m_name(name)
    {}
    virtual ~FakeObject() = default;

    QString name() const { return m_name; }

protected:
    template <typename... Arguments>
    bool called(const char* operation, const Arguments&... arguments)
    {
        const QString name = m_name + '.' + operation;
        return FakeEngine::instance().note(callText(name, arguments...), m_released);
    }
    /// It is over also when the call throws.
    void released()
    {
        FakeEngine& engine = FakeEngine::instance();
        engine.noteRelease(m_name);
        engine.note(m_name + ".release", std::exchange(m_released, true));
    }

private:
    QString m_name;
    bool m_released = false;
};
