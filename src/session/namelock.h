// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include <QtCore/QString>

#include <cstdint>
#include <functional>

/// Keeps other processes, also of other machines, from what goes by the same name. What a process
/// has ends with it, however it ends.
class NameLock
{
public:
    /// Of all processes that give the file at `path`, which is made if need be. Where it cannot be
    /// written, or its file system knows no locks, nobody is kept from anything.
    explicit NameLock(const QString& path);
    ~NameLock();

    /// Waits while another process has `name`, and lets go of the name before. False when that
    /// takes too long, or when `isStopped` says so.
    bool take(const QString& name, const std::function<bool()>& isStopped);

    void release();

private:
    bool set(short type) const;

    int m_file;
    std::int64_t m_place = -1; ///< in the file; -1 when there is none

    Q_DISABLE_COPY(NameLock)
};
