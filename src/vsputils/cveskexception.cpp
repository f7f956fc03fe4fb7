// SPDX-License-Identifier: LGPL-2.1-or-later
#include "vsputils/cveskexception.h"

#include "vsputils/cvesklog.h"

namespace Vesk {

CVeskException::CVeskException(int code, const QString& message, const QString& file, int line)
    : m_code(code)
    , m_message(message)
    , m_file(file)
    , m_line(line)
{}

CVeskException::CVeskException(const CVeskException& other)
    : m_code(other.m_code)
    , m_message(other.m_message)
    , m_file(other.m_file)
    , m_line(other.m_line)
{}

CVeskException::~CVeskException() {}

void CVeskException::flush()
{
    CVeskLog::write(*this);
}

} // namespace Vesk
