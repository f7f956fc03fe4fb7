// SPDX-License-Identifier: GPL-2.0-or-later
#include "importprogress.h"

namespace {

/// What is left is guessed from what was done, once that is not too little.
const qint64 leastElapsedMs = 3000;

QString timeText(qint64 seconds)
{
    return QStringLiteral("%1:%2").arg(seconds / 60).arg(seconds % 60, 2, 10, QLatin1Char('0'));
}

} // namespace

ImportProgress::ImportProgress(bool enabled, bool hasManySources)
    : m_line(enabled)
    , m_hasManySources(hasManySources)
{}

void ImportProgress::show(const ImportEvent& event)
{
    switch (event.kind) {
    case ImportEvent::Found:
        ++m_found;
        ++m_tasks;
        break;
    case ImportEvent::Seen:
        m_line.show(m_hasManySources
                        ? QStringLiteral("import %1%  %2").arg(m_percent, 3).arg(m_found)
                        : QStringLiteral("found %1").arg(m_found),
                    event.path);
        break;
    case ImportEvent::ImportPercent:
        m_percent = event.value;
        break;
    case ImportEvent::ImportFinished:
        m_sincePictures.start();
        break;
    case ImportEvent::Pictured:
        ++m_pictured;
        m_line.show(pictureText(), event.path);
        break;
    case ImportEvent::Finished: // of a part
        m_tasks = m_pictured = m_percent = 0;
        break;
    default:
        break;
    }
}

QString ImportProgress::pictureText() const
{
    QString text = QStringLiteral("pictures %1%  %2 of %3")
                       .arg(m_pictured * 100LL / m_tasks, 3)
                       .arg(m_pictured)
                       .arg(m_tasks);
    const qint64 elapsed = m_sincePictures.elapsed();
    if (elapsed < leastElapsedMs)
        return text;
    const qint64 left = elapsed * (m_tasks - m_pictured) / m_pictured / 1000;
    return text + QStringLiteral("  %1 left").arg(timeText(left));
}
