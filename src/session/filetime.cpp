// SPDX-License-Identifier: GPL-2.0-or-later
#include "filetime.h"

#include <QtCore/QFile>

#include <ctime>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {

FileTime nanoseconds(const timespec& time)
{
    return FileTime{time.tv_sec} * 1000000000 + time.tv_nsec;
}

} // namespace

FileTime fileTime(const QString& path)
{
    struct stat status = {};
    return ::stat(QFile::encodeName(path).constData(), &status) == 0 ? nanoseconds(status.st_mtim)
                                                                     : 0;
}

FileClock::FileClock(const QString& path)
    : m_file(::open(QFile::encodeName(path).constData(),
                    O_WRONLY | O_CREAT | O_CLOEXEC | O_NOFOLLOW | O_NONBLOCK, 0666))
{}

FileClock::~FileClock()
{
    if (m_file >= 0)
        ::close(m_file);
}

FileTime FileClock::now() const
{
    const timespec justNow[] = {{0, UTIME_NOW}, {0, UTIME_NOW}};
    struct stat status = {};
    if (m_file >= 0 && ::futimens(m_file, justNow) == 0 && ::fstat(m_file, &status) == 0)
        return nanoseconds(status.st_mtim);
    timespec time = {};
    clock_gettime(CLOCK_REALTIME_COARSE, &time); // that of files
    return nanoseconds(time);
}
