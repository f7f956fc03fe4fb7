// SPDX-License-Identifier: GPL-2.0-or-later
//
// Tells ThreadSanitizer what Qt guarantees.
//
// Distributions build Qt without the sanitizer, which therefore does not see Qt's locks and queues
// and takes everything that they order for a race. This library comes before Qt's and reports,
// around the same operations of Qt: a lock orders its holders; connecting comes before emitting;
// emitting comes before the delivery of what was queued by it; a thread's event loop ends before
// wait() returns. It orders nothing beyond that, so that races in this project's code are still
// found.
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
#define ORIGINAL(Type, mangledName)                                                                \
    (*[] {                                                                                         \
        static const auto call = reinterpret_cast<Type>(dlsym(RTLD_NEXT, mangledName));            \
        return call;                                                                               \
    }())

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
    ORIGINAL(void (*)(QMutex*), "_ZN6QMutex4lockEv")(this);
    __tsan_acquire(this);
}

void QMutex::unlock() noexcept
{
    __tsan_release(this);
    ORIGINAL(void (*)(QMutex*), "_ZN6QMutex6unlockEv")(this);
}

void QReadWriteLock::lockForRead()
{
    ORIGINAL(void (*)(QReadWriteLock*), "_ZN14QReadWriteLock11lockForReadEv")(this);
    __tsan_acquire(this);
}

void QReadWriteLock::lockForWrite()
{
    ORIGINAL(void (*)(QReadWriteLock*), "_ZN14QReadWriteLock12lockForWriteEv")(this);
    __tsan_acquire(this);
}

void QReadWriteLock::unlock()
{
    __tsan_release(this);
    ORIGINAL(void (*)(QReadWriteLock*), "_ZN14QReadWriteLock6unlockEv")(this);
}

QMetaObject::Connection QObject::connect(const QObject* sender, const char* signal,
                                         const QObject* receiver, const char* member,
                                         Qt::ConnectionType type)
{
    using Connect = QMetaObject::Connection (*)(const QObject*, const char*, const QObject*,
                                                const char*, Qt::ConnectionType);
    __tsan_release(address(sender));
    return ORIGINAL(Connect, "_ZN7QObject7connectEPKS_PKcS1_S3_N2Qt14ConnectionTypeE")(
        sender, signal, receiver, member, type);
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
    __tsan_release(address(sender));
    return ORIGINAL(Connect,
                    "_ZN7QObject11connectImplEPKS_PPvS1_S3_PN9QtPrivate15QSlotObjectBaseEN2Qt"
                    "14ConnectionTypeEPKiPK11QMetaObject")(sender, signal, receiver, slotPtr, slot,
                                                           type, types, senderMetaObject);
}

void QMetaObject::activate(QObject* sender, const QMetaObject* meta, int index, void** arguments)
{
    using Activate = void (*)(QObject*, const QMetaObject*, int, void**);
    __tsan_acquire(sender);
    __tsan_release(&queuedCalls);
    ORIGINAL(Activate, "_ZN11QMetaObject8activateEP7QObjectPKS_iPPv")
    (sender, meta, index, arguments);
}

bool QObject::event(QEvent* event)
{
    __tsan_acquire(&queuedCalls);
    return ORIGINAL(bool (*)(QObject*, QEvent*), "_ZN7QObject5eventEP6QEvent")(this, event);
}

bool QThread::event(QEvent* event)
{
    __tsan_acquire(&queuedCalls);
    return ORIGINAL(bool (*)(QThread*, QEvent*), "_ZN7QThread5eventEP6QEvent")(this, event);
}

int QThread::exec()
{
    static QThreadStorage<EndOfThread*> endOfThread;
    endOfThread.setLocalData(new EndOfThread(this));
    const int code = ORIGINAL(int (*)(QThread*), "_ZN7QThread4execEv")(this);
    __tsan_release(&queuedCalls); // finished() follows
    return code;
}

bool QThread::wait(unsigned long time)
{
    const bool finished =
        ORIGINAL(bool (*)(QThread*, unsigned long), "_ZN7QThread4waitEm")(this, time);
    if (finished)
        __tsan_acquire(this);
    return finished;
}

bool QThread::isFinished() const
{
    const bool finished = ORIGINAL(bool (*)(const QThread*), "_ZNK7QThread10isFinishedEv")(this);
    if (finished)
        __tsan_acquire(address(this));
    return finished;
}
