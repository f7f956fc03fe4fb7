// SPDX-License-Identifier: GPL-2.0-or-later
#include "takepicture.h"

#include "picture/imageconverter.h"
#include "server/openmovie.h"

void takePicture(AVBased::IAVImporter& importer, int movie, int stream, int positionMs)
{
    using Converter = std::unique_ptr<AVBased::IImageConverter, engine::Release>;
    static const Converter converter(
        engine::ImageConverter::create(AVBased::PixelFormatArgb32, 32, 18));
    const engine::SourcePtr source(importer.openSource(movie, stream, -1));
    if (!source)
        return;
    source->seek(positionMs);
    AVBased::IAVFrame* frame = nullptr;
    std::int64_t time = -1;
    std::int32_t flags = 0;
    for (int i = 0; i < 4 && source->readFrame(&time, &frame, &flags, 1); ++i) {
    }
    if (frame)
        converter->convert(frame);
}
