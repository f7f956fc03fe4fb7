// SPDX-License-Identifier: LGPL-2.1-or-later
#pragma once

#include "vspavbased/vspavbasedglobal.h"

namespace AVBased {
class IAVManager;
class IBDLoader;
class IImageConverter;
} // namespace AVBased

namespace Vesk {

class CAVBasedModel;
class CAVBasedModelWrapper;

/// Root of the way to the media engine; callers walk it anew each time and keep nothing of it.
/// Never null, for the life of the process. Callable from any thread.
class VSPAVBASED_EXPORT CAVBasedContext
{
public:
    /// The one object.
    static CAVBasedContext* instance();

    /// The step to the model. Never null.
    CAVBasedModel* avbasedModel();
};

/// The engine's model.
class VSPAVBASED_EXPORT CAVBasedModel
{
public:
    /// The step to the factories. Never null.
    CAVBasedModelWrapper* w_func();
};

/// The engine's factories.
class VSPAVBASED_EXPORT CAVBasedModelWrapper
{
public:
    /// Never null; not released.
    AVBased::IAVManager* avmanager();

    /// A new loader that the caller owns, or null.
    AVBased::IBDLoader* createBDLoader();

    /// A new converter to pictures of `width` x `height` pixels in `pixelFormat` (a PixelFormat),
    /// owned by the caller; null when the engine has none such. `flags` is 0.
    AVBased::IImageConverter* CreateImageConverterEx(unsigned int pixelFormat, unsigned int width,
                                                     unsigned int height, unsigned int flags);
};

} // namespace Vesk
