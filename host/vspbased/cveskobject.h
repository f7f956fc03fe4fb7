// SPDX-License-Identifier: LGPL-2.1-or-later
//
// The private-implementation pattern of the framework:
//
//   class X : public CVeskObject            class XPrivate : public CVeskObjectPrivate
//     VESK_DECLARE_PRIVATE(X)                 VESK_DECLARE_PUBLIC(X)
//
// XPrivate holds all the data and, in its destructor, all the clean-up. X's constructor hands a new
// XPrivate to CVeskObject, which owns it from then on and points its q_ptr back at X. X's own
// destructor adds nothing. d_func() leads from X to XPrivate, q_func() back.
#pragma once

#include "vspbased/vspbasedglobal.h"

#include <QtCore/QObject>

namespace Vesk {

class CVeskObject;

/// Base of all private parts. Owned by the public object that `q_ptr` points to.
class CVeskObjectPrivate
{
public:
    CVeskObjectPrivate()
        : q_ptr(0)
    {}
    /// A copied private part points at the source's owner until a CVeskObject takes it.
    CVeskObjectPrivate(const CVeskObjectPrivate& other)
        : q_ptr(other.q_ptr)
    {}
    virtual ~CVeskObjectPrivate() {}

    CVeskObject* q_ptr; ///< the public object, set by CVeskObject

private:
    CVeskObjectPrivate& operator=(const CVeskObjectPrivate&);
};

/// Base of all objects with a private part.
class VSPBASED_EXPORT CVeskObject : public QObject
{
    Q_OBJECT

public:
    /// Deletes the private part.
    virtual ~CVeskObject();

protected:
    /// Takes ownership of `dd` and makes this object its `q_ptr`.
    CVeskObject(CVeskObjectPrivate& dd, QObject* parent);

    /// The private part, for VESK_DECLARE_PRIVATE. Never null.
    CVeskObjectPrivate* privatePart() const { return m_private; }

private:
    CVeskObjectPrivate* m_private;

    Q_DISABLE_COPY(CVeskObject)
};

} // namespace Vesk

/// In the public class. The private class may still be incomplete here, hence the cast: private
/// parts derive from CVeskObjectPrivate first and alone.
#define VESK_DECLARE_PRIVATE(Class)                                                                \
    inline Class##Private* d_func()                                                                \
    {                                                                                              \
        return reinterpret_cast<Class##Private*>(privatePart());                                   \
    }                                                                                              \
    inline const Class##Private* d_func() const                                                    \
    {                                                                                              \
        return reinterpret_cast<const Class##Private*>(privatePart());                             \
    }                                                                                              \
    friend class Class##Private;

/// In the private class.
#define VESK_DECLARE_PUBLIC(Class)                                                                 \
    inline Class* q_func()                                                                         \
    {                                                                                              \
        return static_cast<Class*>(q_ptr);                                                         \
    }                                                                                              \
    inline const Class* q_func() const                                                             \
    {                                                                                              \
        return static_cast<const Class*>(q_ptr);                                                   \
    }                                                                                              \
    friend class Class;
