// SPDX-License-Identifier: GPL-2.0-or-later
#include "namelock.h"

#include <QtCore/QCryptographicHash>
#include <QtCore/QElapsedTimer>
#include <QtCore/QFile>
#include <QtCore/QtEndian>

#include <cerrno>
#include <fcntl.h>
#include <unistd.h>

namespace {

/// Most items take less than that.
const qint64 mostWaitMs = 10000;

const useconds_t pauseUs = 2000;

/// The byte of the file that stands for `name`; the file itself stays empty.
std::int64_t placeOf(const QString& name)
{
    const QByteArray code = QCryptographicHash::hash(name.toUtf8(), QCryptographicHash::Sha1);
    return std::int64_t(qFromBigEndian<quint64>(code.constData()) >> 2);
}

} // namespace

NameLock::NameLock(const QString& path)
    : m_file(::open(QFile::encodeName(path).constData(),
                    O_WRONLY | O_CREAT | O_CLOEXEC | O_NOFOLLOW | O_NONBLOCK, 0666))
{}

NameLock::~NameLock()
{
    if (m_file >= 0)
        ::close(m_file);
}

bool NameLock::set(short type) const
{
    struct flock place = {};
    place.l_type = type;
    place.l_whence = SEEK_SET;
    place.l_start = m_place;
    place.l_len = 1;
    return ::fcntl(m_file, F_OFD_SETLK, &place) == 0;
}

bool NameLock::take(const QString& name, const std::function<bool()>& isStopped)
{
    release();
    m_place = placeOf(name);
    QElapsedTimer waited;
    waited.start();
    while (!set(F_WRLCK) && (errno == EAGAIN || errno == EACCES)) {
        if (isStopped() || waited.elapsed() > mostWaitMs) {
            m_place = -1;
            return false;
        }
        usleep(pauseUs);
    }
    return true;
}

void NameLock::release()
{
    if (m_place >= 0)
        set(F_UNLCK);
    m_place = -1;
}
