// SPDX-License-Identifier: LGPL-2.1-or-later
#pragma once

#include "vspavbased/vspavbasedglobal.h"

namespace AVBased {

/// Single facts about an importer's movie, by name.
class IMovieInfoExt
{
public:
    /// The value of `key` as a text, or null. "is_drm_encryption" is "1" or "0".
    virtual const char* value(const char* key) = 0;

protected:
    ~IMovieInfoExt() {}
};

} // namespace AVBased
