// SPDX-License-Identifier: LGPL-2.1-or-later
#pragma once

#include "vspavbased/vspavbasedglobal.h"

namespace AVBased {

class IAVFrame;
class IAVPicture;

/// Turns frames into pictures of one format and size. The frame keeps its shape and is fitted in
/// with black bars.
class IImageConverter
{
public:
    virtual void reserved0() {}

    /// Converts `frame`; null when it is null or cannot be converted.
    virtual IAVPicture* convert(IAVFrame* frame) = 0;

    /// Ends the converter and its picture.
    virtual void release() = 0;

protected:
    ~IImageConverter() {}
};

} // namespace AVBased
