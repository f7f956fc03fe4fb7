// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include <QtCore/QString>

#include <cstdint>

/// When a file was last changed, in nanoseconds since 1970; 0 for one that is not there.
using FileTime = std::int64_t;

FileTime fileTime(const QString& path);

/// The time of a file system, which on a network is not this machine's.
class FileClock
{
public:
    /// Tells the time by the file at `path`, which is made if need be. Where it cannot be written,
    /// the time is this machine's.
    explicit FileClock(const QString& path);
    ~FileClock();

    /// No file that is written there from now on has an earlier time. On any thread.
    FileTime now() const;

private:
    int m_file;

    Q_DISABLE_COPY(FileClock)
};
