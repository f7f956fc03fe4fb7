// SPDX-License-Identifier: LGPL-2.1-or-later
#include "discloader.h"
#include "enginemanager.h"
#include "imageconverter.h"
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
    return new engine::DiscLoader;
}

AVBased::IImageConverter* CAVBasedModelWrapper::CreateImageConverterEx(unsigned int pixelFormat,
                                                                       unsigned int width,
                                                                       unsigned int height,
                                                                       unsigned int /*flags*/)
{
    return engine::ImageConverter::create(pixelFormat, width, height);
}

} // namespace Vesk
