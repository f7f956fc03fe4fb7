// SPDX-License-Identifier: LGPL-2.1-or-later
#pragma once

#include "vspavbased/vspavbasedglobal.h"

namespace AVBased {

/// Codes of IAVPicture::pixelFormat().
enum PixelFormat
{
    PixelFormatArgb32 = 30 ///< four bytes a pixel: 0xAARRGGBB as a number of the machine
};

/// A converted picture. Owned by its converter and valid until the converter's next convert().
class IAVPicture
{
public:
    /// A PixelFormat.
    virtual std::int32_t pixelFormat() = 0;

    /// Width and height in pixels.
    virtual void dimensions(std::int32_t* width, std::int32_t* height) = 0;

    virtual void reserved2() {}
    virtual void reserved3() {}

    /// True when the first row in memory is the top one.
    virtual bool isTopDown() = 0;

    virtual void reserved5() {}
    virtual void reserved6() {}
    virtual void reserved7() {}

    /// The pixels of plane `index`, row after row without gaps; null when there is no such plane.
    /// The out values receive bytes a row, rows and bytes in all.
    virtual void* plane(std::int32_t index, std::int32_t* stride, std::int32_t* rows,
                        std::int32_t* bytes) = 0;

protected:
    ~IAVPicture() {}
};

} // namespace AVBased
