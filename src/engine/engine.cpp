// SPDX-License-Identifier: GPL-2.0-or-later
#include "engine.h"

#include "bluray/bdloader.h"
#include "dvd/dvdimporter.h"
#include "dvd/dvdsource.h"
#include "enginelink/log.h"
#include "libavlog.h"
#include "media/mediaimporter.h"
#include "picture/imageconverter.h"
#include "timeline/timelineimporter.h"

namespace engine {

namespace {

Opening openDvd(const std::string& path)
{
    return DvdImporter::open(path, DvdSource::open);
}

/// Asked in this order: the first that knows the path decides.
using Opener = Opening (*)(const std::string& path);
const Opener openers[] = {
    openDvd,
    MediaImporter::open,
};

class FullEngine final : public Engine
{
public:
    FullEngine() { joinLibavLog(); }

    Opening open(const std::string& path) override
    {
        for (const Opener open : openers) {
            const Opening opening = open(path);
            if (opening.answer != Opening::Answer::notMine)
                return opening;
        }
        return Opening::refused();
    }

    AVBased::IAVImporter* openTimeline(const std::string& path) override
    {
        return TimelineImporter::open(path).importer;
    }

    Bytes reopening(const AVBased::IAVImporter& importer) override
    {
        const auto* media = dynamic_cast<const MediaImporter*>(&importer);
        return media ? media->reopening().toBytes() : Bytes();
    }

    AVBased::IAVImporter* reopen(const std::string& path, const Bytes& bytes) override
    {
        const auto reopening = Reopening::fromBytes(bytes.data(), bytes.size());
        return reopening ? MediaImporter::reopen(path, *reopening) : nullptr;
    }

    AVBased::IBDLoader* openDisc(const std::string& path) override
    {
        auto* loader = new BdLoader;
        if (loader->open(path.c_str()))
            return loader;
        loader->release();
        return nullptr;
    }

    AVBased::IImageConverter* createConverter(unsigned width, unsigned height) override
    {
        return ImageConverter::create(AVBased::PixelFormatArgb32, width, height);
    }
};

} // namespace

Engine& fullEngine()
{
    static FullEngine engine;
    return engine;
}

} // namespace engine
