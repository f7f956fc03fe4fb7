// SPDX-License-Identifier: LGPL-2.1-or-later
#pragma once

#include "vsputils/vsputilsglobal.h"

#include <QtCore/QString>

namespace Vesk {

/// An error record: thrown by value, caught by reference, handed to the host's log with flush().
class VSPUTILS_EXPORT CVeskException
{
public:
    /// `file` and `line` say where in the source the error was raised or handled.
    CVeskException(int code, const QString& message, const QString& file, int line);
    CVeskException(const CVeskException& other);
    ~CVeskException();

    /// The module's are 20030009 for what a standard exception says, and 20030001 for all else.
    int code() const { return m_code; }
    /// For people, in English.
    QString message() const { return m_message; }
    /// Path of the source file, as the compiler has it.
    QString file() const { return m_file; }
    /// Line in it.
    int line() const { return m_line; }

    /// Hands the record to the host's log (see CVeskLog). Callable from any thread.
    void flush();

private:
    CVeskException& operator=(const CVeskException&);

    int m_code;
    QString m_message;
    QString m_file;
    int m_line;
};

} // namespace Vesk
