// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include <QtCore/QTemporaryFile>

#include <unistd.h>

/// Takes what is written to standard error while it lives.
class StandardError
{
public:
    StandardError()
        : m_original(dup(STDERR_FILENO))
    {
        m_file.open();
        dup2(m_file.handle(), STDERR_FILENO);
    }
    ~StandardError()
    {
        dup2(m_original, STDERR_FILENO);
        close(m_original);
    }

    QByteArray text()
    {
        m_file.seek(0);
        return m_file.readAll();
    }

private:
    QTemporaryFile m_file;
    int m_original;
};
