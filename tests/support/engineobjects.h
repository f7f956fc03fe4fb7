// SPDX-License-Identifier: GPL-2.0-or-later
//
// What the module does with the engine's objects, in short.
#pragma once

#include "fixture.h"
#include "vspavbased/cavbasedcontext.h"
#include "vspavbased/iavimporter.h"
#include "vspavbased/iavmanager.h"
#include "vspavbased/iavpicture.h"
#include "vspavbased/iavsource.h"
#include "vspavbased/ibdloader.h"
#include "vspavbased/iimageconverter.h"

#include <QtCore/QDir>
#include <QtGui/QImage>

#include <memory>

/// Whether the engine works in processes of its own, and opens nothing in this one.
#ifdef THROUGH_HALVES
constexpr bool throughHalves = true;
#else
constexpr bool throughHalves = false;
#endif

struct Release
{
    template <typename T>
    void operator()(T* object) const
    {
        object->release();
    }
};

using ImporterPtr = std::unique_ptr<AVBased::IAVImporter, Release>;
using SourcePtr = std::unique_ptr<AVBased::IAVSource, Release>;
using ConverterPtr = std::unique_ptr<AVBased::IImageConverter, Release>;
using LoaderPtr = std::unique_ptr<AVBased::IBDLoader, Release>;
using ListPtr = std::unique_ptr<AVBased::IBDList, Release>;

inline Vesk::CAVBasedModelWrapper* engineWrapper()
{
    return Vesk::CAVBasedContext::instance()->avbasedModel()->w_func();
}

inline ImporterPtr openItem(const QString& path)
{
    return ImporterPtr(engineWrapper()->avmanager()->createImporter(path.toUtf8().constData()));
}

inline ImporterPtr openFixture(const QString& name)
{
    return openItem(fixturePath(name));
}

/// Null when there is no importer.
inline SourcePtr openVideo(const ImporterPtr& importer, int movie = 0, int stream = 0)
{
    return SourcePtr(importer ? importer->openSource(movie, stream, -1) : nullptr);
}

/// A copy of the picture of `frame` in `width` x `height`; null when the engine gives none.
inline QImage pictureOf(AVBased::IAVFrame* frame, int width = 320, int height = 180)
{
    const ConverterPtr converter(
        engineWrapper()->CreateImageConverterEx(30, unsigned(width), unsigned(height), 0));
    AVBased::IAVPicture* picture = converter ? converter->convert(frame) : nullptr;
    if (!picture)
        return QImage();
    std::int32_t w, h, stride, rows, bytes;
    picture->dimensions(&w, &h);
    const void* pixels = picture->plane(0, &stride, &rows, &bytes);
    return QImage(static_cast<const uchar*>(pixels), w, h, QImage::Format_ARGB32).copy();
}

/// The frame that a snapshot at `positionMs` would show: the `count`th after the seek. Null when
/// none comes; `timeMs` receives its time.
inline AVBased::IAVFrame* frameAt(AVBased::IAVSource& source, int positionMs, int count = 4,
                                  std::int64_t* timeMs = nullptr)
{
    source.seek(positionMs);
    AVBased::IAVFrame* frame = nullptr;
    std::int64_t time = -1;
    std::int32_t flags;
    for (int i = 0; i < count && source.readFrame(&time, &frame, &flags, 1);)
        i += frame ? 1 : 0;
    if (timeMs)
        *timeMs = time;
    return frame;
}

/// "kind codec language name" of a stream, with its measures.
inline QString textOf(const AVBased::AVStreamInfo& stream)
{
    const QString head =
        QString("%1 %2 %3 %4").arg(stream.kind).arg(stream.codecName, stream.language, stream.name);
    if (stream.kind == AVBased::StreamKindVideo) {
        return head + QString(" %1x%2 %3/%4 %5:%6 %7")
                          .arg(stream.width)
                          .arg(stream.height)
                          .arg(stream.frameRate >> 32)
                          .arg(stream.frameRate & 0xFFFFFFFF)
                          .arg(stream.aspectRatio >> 16)
                          .arg(stream.aspectRatio & 0xFFFF)
                          .arg(QString::fromLatin1(stream.fourcc, 4));
    }
    return head + QString(" %1Hz %2ch %3")
                      .arg(stream.sampleRate)
                      .arg(stream.channels)
                      .arg(stream.channelLayout);
}

/// Files of this process that are open: with paths, not sockets or memory.
inline QStringList openFiles()
{
    QStringList names;
    const QDir descriptors("/proc/self/fd");
    for (const QString& name : descriptors.entryList(QDir::AllEntries | QDir::System)) {
        const QString file = QFile::symLinkTarget(descriptors.filePath(name));
        if (file.startsWith('/') && !file.contains(':'))
            names << file;
    }
    return names;
}
