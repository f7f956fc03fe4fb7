// SPDX-License-Identifier: LGPL-2.1-or-later
#pragma once

#include "vspavbased/vspavbasedglobal.h"

namespace AVBased {

class IAVImporter;

/// The engine. One object for the whole process, never released.
class IAVManager
{
public:
    virtual void reserved0() {}

    /// A component by its name, "SimpleEditImporter" for the edit timeline. Owned by the caller;
    /// null when there is no such component.
    virtual IAVImporter* createNamedImporter(const char* name) = 0;

    /// Opens a media file, a DVD folder, an IFO file (with a separator behind its name), a disc
    /// image or a saved timeline. Owned by the caller; null when the engine cannot open it.
    virtual IAVImporter* createImporter(const char* utf8Path) = 0;

    virtual void reserved3() {}
    virtual void reserved4() {}
    virtual void reserved5() {}
    virtual void reserved6() {}

    /// Announces an import run, before its first source is opened.
    virtual void beginImport() = 0;

protected:
    ~IAVManager() {}
};

} // namespace AVBased
