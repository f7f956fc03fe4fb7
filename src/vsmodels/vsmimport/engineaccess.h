// SPDX-License-Identifier: LGPL-2.1-or-later
#pragma once

#include "guard.h"
#include "vspavbased/cavbasedcontext.h"
#include "vspavbased/iavimporter.h"
#include "vspavbased/iavmanager.h"
#include "vspavbased/iavsource.h"
#include "vspavbased/ibdloader.h"

#include <memory>

namespace Vesk {

/// Ends an engine object that has not been handed over when its scope is left, also by an
/// exception. What the ending throws is flushed to the host's log: it must not leave a destructor.
struct EngineRelease
{
    template <typename T>
    void operator()(T* object) const
    {
        VESK_GUARDED_CALL(object->release());
    }
};

typedef std::unique_ptr<AVBased::IAVImporter, EngineRelease> ImporterPtr;
typedef std::unique_ptr<AVBased::IAVSource, EngineRelease> SourcePtr;
typedef std::unique_ptr<AVBased::IBDLoader, EngineRelease> BdLoaderPtr;
typedef std::unique_ptr<AVBased::IBDList, EngineRelease> BdListPtr;

inline CAVBasedModelWrapper* engineWrapper()
{
    return CAVBasedContext::instance()->avbasedModel()->w_func();
}

inline AVBased::IAVManager* engineManager()
{
    return engineWrapper()->avmanager();
}

} // namespace Vesk
