// SPDX-License-Identifier: GPL-2.0-or-later
#include "bluray/bdloader.h"
#include "enginemanager.h"
#include "log.h"
#include "picture/imageconverter.h"
#include "vspavbased/cavbasedcontext.h"

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
    engine::joinLibavLog();
    static CAVBasedModelWrapper wrapper;
    return &wrapper;
}

AVBased::IAVManager* CAVBasedModelWrapper::avmanager()
{
    static engine::EngineManager manager;
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
