// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include "fakeengine.h"

#include <QtCore/QTextStream>

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

    bool isReleased() const { return m_released; }
    QString name() const { return m_name; }

protected:
    template <typename... Arguments>
    bool called(const char* operation, const Arguments&... arguments)
    {
        const QString name = m_name + '.' + operation;
        return FakeEngine::instance().note(callText(name, arguments...), m_released);
    }
    void released()
    {
        called("release");
        m_released = true;
    }

private:
    QString m_name;
    bool m_released = false;
};
