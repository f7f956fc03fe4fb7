// SPDX-License-Identifier: GPL-2.0-or-later
#include "bluray/bdloader.h"
#include "engine.h"
#include "enginelink/ascii.h"
#include "enginelink/timeline/timelinetext.h"
#include "picture/imageconverter.h"
#include "timeline/timelineeditor.h"
#include "timeline/writtentimelines.h"
#include "vspavbased/cavbasedcontext.h"
#include "vspavbased/iavmanager.h"

#include <cstring>

namespace {

class InProcessManager final : public AVBased::IAVManager
{
public:
    AVBased::IAVImporter* createNamedImporter(const char* name) override
    {
        return std::strcmp(name, "SimpleEditImporter") == 0 ? new engine::TimelineEditor : nullptr;
    }

    AVBased::IAVImporter* createImporter(const char* utf8Path) override
    {
        const std::string path = utf8Path;
        if (!engine::endsWith(path, engine::timelineSuffix))
            return engine::fullEngine().open(path).importer;
        return engine::WrittenTimelines::ofThisProcess().find(path)
                   ? engine::fullEngine().openTimeline(path)
                   : nullptr;
    }

    void beginImport() override {}
};

} // namespace

namespace Vesk {

CAVBasedContext* CAVBasedContext::instance()
{
    static CAVBasedContext context;
    return &context;
}

CAVBasedModel* CAVBasedContext::avbasedModel()
{
    static CAVBasedModel model;
    return &model;
}

CAVBasedModelWrapper* CAVBasedModel::w_func()
{
    static CAVBasedModelWrapper wrapper;
    return &wrapper;
}

AVBased::IAVManager* CAVBasedModelWrapper::avmanager()
{
    static InProcessManager manager;
    return &manager;
}

AVBased::IBDLoader* CAVBasedModelWrapper::createBDLoader()
{
    return new engine::BdLoader;
}

AVBased::IImageConverter* CAVBasedModelWrapper::CreateImageConverterEx(unsigned int pixelFormat,
                                                                       unsigned int width,
                                                                       unsigned int height,
                                                                       unsigned int /*flags*/)
{
    return engine::ImageConverter::create(pixelFormat, width, height);
}

} // namespace Vesk
