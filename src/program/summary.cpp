// SPDX-License-Identifier: GPL-2.0-or-later
#include "summary.h"

#include "cbdfile.h"
#include "cbdinformation.h"
#include "cbdtitle.h"
#include "cdvdinformation.h"
#include "cdvdtitle.h"
#include "cimporttask.h"
#include "cmovieinfomation.h"
#include "errornames.h"
#include "importsession.h"
#include "terminaltext.h"

#include <QtCore/QMap>
#include <QtCore/QStringList>

#include <cmath>

using namespace Vesk;

namespace {

/// Discs made of hundreds of small titles would push everything else off the screen.
const int mostTitlesShown = 50;

QString timeText(double seconds)
{
    if (seconds <= 0.0)
        return QStringLiteral("-");
    const qint64 whole = std::llround(std::min(seconds, 1e9));
    return QStringLiteral("%1:%2:%3")
        .arg(whole / 3600)
        .arg(whole / 60 % 60, 2, 10, QLatin1Char('0'))
        .arg(whole % 60, 2, 10, QLatin1Char('0'));
}

QString sizeText(const CMovieInfomation* movie)
{
    CStreamInfomation* video = nullptr;
    if (!movie->findFirstStreamInfo(CStreamInfomation::StreamVideo, &video))
        return QStringLiteral("-");
    return QStringLiteral("%1x%2").arg(video->width()).arg(video->height());
}

QString codecsText(const CMovieInfomation* movie)
{
    QStringList codecs;
    for (int i = 0; i < movie->streamCount(); ++i) {
        const CStreamInfomation* stream = movie->stream(i);
        const bool counts = stream->streamType() == CStreamInfomation::StreamVideo ||
                            stream->streamType() == CStreamInfomation::StreamAudio;
        if (counts && !stream->codecName().isEmpty() && !codecs.contains(stream->codecName()))
            codecs.append(stream->codecName());
    }
    return codecs.isEmpty() ? QStringLiteral("-") : codecs.join(QLatin1Char(','));
}

QString columns(const QString& kind, double duration, const QString& size, const QString& codecs,
                const QString& name)
{
    return QStringLiteral("%1  %2  %3  %4  %5\n")
        .arg(kind.leftJustified(7), timeText(duration).rightJustified(8), size.leftJustified(9),
             codecs.leftJustified(18), terminalText(name));
}

QString movieLine(const QString& kind, const CMovieInfomation* movie)
{
    return columns(kind, movie->duration(), sizeText(movie), codecsText(movie), movie->fileName());
}

QString moreTitles(int count)
{
    return count > mostTitlesShown
               ? QStringLiteral("           … and %1 more titles\n").arg(count - mostTitlesShown)
               : QString();
}

QString chaptersText(int count)
{
    return count == 1 ? QStringLiteral("1 chapter") : QStringLiteral("%1 chapters").arg(count);
}

QString dvdLines(const CDVDInformation* dvd, const QString& url)
{
    QString lines = columns(QStringLiteral("dvd"), 0.0, QStringLiteral("-"),
                            dvd->isScrambled() ? QStringLiteral("scrambled") : QStringLiteral("-"),
                            dvd->dvdName().isEmpty() ? url : dvd->dvdName());
    for (int i = 0; i < qMin(dvd->titleCount(), mostTitlesShown); ++i) {
        const CDVDTitle* title = dvd->title(i);
        lines +=
            columns(QStringLiteral(" title"), title->movieInfo()->duration(),
                    sizeText(title->movieInfo()), codecsText(title->movieInfo()),
                    QStringLiteral("%1, %2%3")
                        .arg(i + 1)
                        .arg(chaptersText(title->chapterCount()),
                             title->isMainTitle() ? QStringLiteral(", main title") : QString()));
    }
    return lines + moreTitles(dvd->titleCount());
}

/// The picture and codecs of a title are those of its first clip's file; which file that is, a host
/// learns by looking for the clip.
const CMovieInfomation* movieOf(const CBDInformation* disc, const CBDTitle* title)
{
    static const CMovieInfomation none;
    for (int i = 0; i < disc->fileCount() && title->clipCount() > 0; ++i) {
        if (disc->file(i)->clips().contains(title->clip(0)))
            return disc->file(i)->movieInfo();
    }
    return &none;
}

QString bdLines(const CBDInformation* disc, const QString& url)
{
    QString lines = columns(QStringLiteral("bluray"), 0.0, QStringLiteral("-"), QStringLiteral("-"),
                            disc->bdName().isEmpty() ? url : disc->bdName());
    for (int i = 0; i < qMin(disc->titleCount(), mostTitlesShown); ++i) {
        const CBDTitle* title = disc->title(i);
        const CMovieInfomation* movie = movieOf(disc, title);
        lines +=
            columns(QStringLiteral(" title"), title->duration(), sizeText(movie), codecsText(movie),
                    QStringLiteral("%1, %2").arg(i + 1).arg(chaptersText(title->chapterCount())));
    }
    return lines + moreTitles(disc->titleCount());
}

QString taskLines(CImportTask* task)
{
    switch (task->taskType()) {
    case CImportTask::VideoTask:
        return movieLine(QStringLiteral("video"), task->movieInfo());
    case CImportTask::AudioTask:
        return movieLine(QStringLiteral("audio"), task->movieInfo());
    case CImportTask::DvdTask:
        return dvdLines(task->dvdInfo(), task->url());
    case CImportTask::BdTask:
        return bdLines(task->bdInfo(), task->url());
    }
    return QString();
}

QString errorLines(const ImportSession& session)
{
    QList<ImportSession::Error> errors = session.errors();
    for (const QString& path : session.unreported())
        errors.append({Vesk::CImportModel::ErrorImportFalsed, path});
    QString lines;
    for (const ImportSession::Error& error : errors) {
        lines += QStringLiteral("  %1: %2\n")
                     .arg(terminalText(error.path), QLatin1String(errorName(error.type).reason));
    }
    return lines.isEmpty() ? lines : QStringLiteral("\nNot imported:\n") + lines;
}

QString countLine(const ImportSession& session)
{
    static const char* const kinds[] = {"video", "audio", "Blu-ray", "DVD"};
    QMap<int, int> counts;
    for (const auto& task : session.tasks())
        ++counts[task->taskType()];
    QStringList parts;
    for (auto it = counts.constBegin(); it != counts.constEnd(); ++it)
        parts.append(QStringLiteral("%1 %2").arg(it.value()).arg(QLatin1String(kinds[it.key()])));
    QString line = QStringLiteral("\n%1 imported").arg(session.tasks().size());
    if (!parts.isEmpty())
        line += QStringLiteral(" (%1)").arg(parts.join(QStringLiteral(", ")));
    const int failed = session.errors().size() + session.unreported().size();
    if (failed > 0)
        line += QStringLiteral(", %1 not").arg(failed);
    return line + (session.wasStopped() ? QStringLiteral(", stopped\n") : QStringLiteral("\n"));
}

} // namespace

QString summaryOf(const ImportSession& session)
{
    QString text;
    for (const auto& task : session.tasks())
        text += taskLines(task.get());
    text += errorLines(session) + countLine(session);
    return text.startsWith(QLatin1Char('\n')) ? text.mid(1) : text;
}
