// SPDX-License-Identifier: LGPL-2.1-or-later
#pragma once

#include "vsputils/vsputilsglobal.h"

namespace Vesk {

class CVeskException;

/// The host's error log: one receiver for the records of the whole process.
class VSPUTILS_EXPORT CVeskLog
{
public:
    /// Receives one record. Called on the thread that flushed it, one call at a time.
    typedef void (*Receiver)(const CVeskException& record, void* context);

    /// Directs the log to `receiver`, which gets `context` with each record; with a null receiver
    /// it goes to standard error again, a line a record. When setReceiver() returns, the former
    /// receiver is not running and is never called again. A receiver must not call it, nor
    /// flush a record, nor throw.
    static void setReceiver(Receiver receiver, void* context);

    /// Writes `record`. Used by CVeskException::flush().
    static void write(const CVeskException& record);
};

} // namespace Vesk
