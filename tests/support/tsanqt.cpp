// SPDX-License-Identifier: GPL-2.0-or-later
//
// Tells ThreadSanitizer what Qt guarantees.
//
// Distributions build Qt without the sanitizer, which therefore does not see Qt's locks and queues
// and takes everything that they order for a race. This library comes before Qt's and reports,
// around the same operations of Qt: a lock orders its holders; connecting comes before emitting;
// emitting, or invoking, comes before the delivery of what was queued by it; a thread's event loop
// ends before wait() returns. It orders nothing beyond that, so that races in this project's code
// are still found.
#include <QtCore/QEvent>
#include <QtCore/QMetaObject>
#include <QtCore/QMutex>
#include <QtCore/QObject>
#include <QtCore/QReadWriteLock>
#include <QtCore/QThread>
#include <QtCore/QThreadStorage>

#include <dlfcn.h>

extern "C" {
void __tsan_acquire(void* address);
void __tsan_release(void* address);
}

namespace {

char queuedCalls; ///< stands for all event queues

/// Qt's own definition of the operation with that name.
template <typename Function>
Function original(const char* mangledName)
{
    return reinterpret_cast<Function>(dlsym(RTLD_NEXT, mangledName));
}

void* address(const volatile void* object)
{
    return const_cast<void*>(object);
}

/// Lies in a thread's storage, which Qt clears when the thread has done all but to say so.
class EndOfThread
{
public:
    explicit EndOfThread(QThread* thread)
        : m_thread(thread)
    {}
    ~EndOfThread() { __tsan_release(m_thread); }

private:
    QThread* m_thread;
};

} // namespace

void QMutex::lock()
{
    static const auto call = original<void (*)(QMutex*)>("_ZN6QMutex4lockEv");
    call(this);
    __tsan_acquire(this);
}

void QMutex::unlock() noexcept
{
    static const auto call = original<void (*)(QMutex*)>("_ZN6QMutex6unlockEv");
    __tsan_release(this);
    call(this);
}

void QReadWriteLock::lockForRead()
{
    static const auto call =
        original<void (*)(QReadWriteLock*)>("_ZN14QReadWriteLock11lockForReadEv");
    call(this);
    __tsan_acquire(this);
}

void QReadWriteLock::lockForWrite()
{
    static const auto call =
        original<void (*)(QReadWriteLock*)>("_ZN14QReadWriteLock12lockForWriteEv");
    call(this);
    __tsan_acquire(this);
}

void QReadWriteLock::unlock()
{
    static const auto call = original<void (*)(QReadWriteLock*)>("_ZN14QReadWriteLock6unlockEv");
    __tsan_release(this);
    call(this);
}

QMetaObject::Connection QObject::connect(const QObject* sender, const char* signal,
                                         const QObject* receiver, const char* member,
                                         Qt::ConnectionType type)
{
    using Connect = QMetaObject::Connection (*)(const QObject*, const char*, const QObject*,
                                                const char*, Qt::ConnectionType);
    static const auto call =
        original<Connect>("_ZN7QObject7connectEPKS_PKcS1_S3_N2Qt14ConnectionTypeE");
    __tsan_release(address(sender));
    return call(sender, signal, receiver, member, type);
}

QMetaObject::Connection QObject::connectImpl(const QObject* sender, void** signal,
                                             const QObject* receiver, void** slotPtr,
                                             QtPrivate::QSlotObjectBase* slot,
                                             Qt::ConnectionType type, const int* types,
                                             const QMetaObject* senderMetaObject)
{
    using Connect = QMetaObject::Connection (*)(const QObject*, void**, const QObject*, void**,
                                                QtPrivate::QSlotObjectBase*, Qt::ConnectionType,
                                                const int*, const QMetaObject*);
    static const auto call =
        original<Connect>("_ZN7QObject11connectImplEPKS_PPvS1_S3_PN9QtPrivate15QSlotObjectBaseEN2Qt"
                          "14ConnectionTypeEPKiPK11QMetaObject");
    __tsan_release(address(sender));
    return call(sender, signal, receiver, slotPtr, slot, type, types, senderMetaObject);
}

void QMetaObject::activate(QObject* sender, const QMetaObject* meta, int index, void** arguments)
{
    using Activate = void (*)(QObject*, const QMetaObject*, int, void**);
    static const auto call = original<Activate>("_ZN11QMetaObject8activateEP7QObjectPKS_iPPv");
    __tsan_acquire(sender);
    __tsan_release(&queuedCalls);
    call(sender, meta, index, arguments);
}

bool QMetaObject::invokeMethodImpl(QObject* object, QtPrivate::QSlotObjectBase* slot,
                                   Qt::ConnectionType type, void* result)
{
    using Invoke = bool (*)(QObject*, QtPrivate::QSlotObjectBase*, Qt::ConnectionType, void*);
    static const auto call = original<Invoke>(
        "_ZN11QMetaObject16invokeMethodImplEP7QObjectPN9QtPrivate15QSlotObjectBaseEN"
        "2Qt14ConnectionTypeEPv");
    __tsan_release(&queuedCalls);
    return call(object, slot, type, result);
}

bool QObject::event(QEvent* event)
{
    static const auto call = original<bool (*)(QObject*, QEvent*)>("_ZN7QObject5eventEP6QEvent");
    __tsan_acquire(&queuedCalls);
    return call(this, event);
}

bool QThread::event(QEvent* event)
{
    static const auto call = original<bool (*)(QThread*, QEvent*)>("_ZN7QThread5eventEP6QEvent");
    __tsan_acquire(&queuedCalls);
    return call(this, event);
}

int QThread::exec()
{
    static const auto call = original<int (*)(QThread*)>("_ZN7QThread4execEv");
    static QThreadStorage<EndOfThread*> endOfThread;
    endOfThread.setLocalData(new EndOfThread(this));
    const int code = call(this);
    __tsan_release(&queuedCalls); // finished() follows
    return code;
}

bool QThread::wait(unsigned long time)
{
    static const auto call = original<bool (*)(QThread*, unsigned long)>("_ZN7QThread4waitEm");
    const bool finished = call(this, time);
    if (finished)
        __tsan_acquire(this);
    return finished;
}

bool QThread::isFinished() const
{
    static const auto call = original<bool (*)(const QThread*)>("_ZNK7QThread10isFinishedEv");
    const bool finished = call(this);
    if (finished)
        __tsan_acquire(address(this));
    return finished;
}
