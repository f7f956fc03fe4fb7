// SPDX-License-Identifier: LGPL-2.1-or-later
#pragma once

#include "vspavbased/bdrecords.h"
#include "vspavbased/ibdlist.h"
#include "vspavbased/movierecords.h"

namespace AVBased {

/// A reader of Blu-ray discs. Records that it returns live as long as the loader.
class IBDLoader
{
public:
    /// The disc's titles. Owned by the caller; null before open() succeeded.
    virtual IBDList* titleList() = 0;

    /// The chapters of the title called `title`; `count` receives their number. Null, with a count
    /// of 0, when there are none.
    virtual const BDPlayInfo* chapters(const char* title, std::uint32_t* count) = 0;

    /// The title called `title`, or null.
    virtual const BDPlayInfo* titleInfo(const char* title) = 0;

    virtual void reserved3() {}
    virtual void reserved4() {}

    /// The streams of the stream file called `file`, or null.
    virtual const AVMovieInfo* fileMovieInfo(const char* file) = 0;

    virtual void reserved6() {}

    /// Opens a Blu-ray folder or disc image. Called once. False when it is none or cannot be read.
    virtual bool open(const char* utf8Path) = 0;

    /// The disc's stream files. Owned by the caller; null before open() succeeded.
    virtual IBDList* fileList() = 0;

    virtual void reserved9() {}

    /// Ends the loader.
    virtual void release() = 0;

    /// The disc; `index` is 0. Null before open() succeeded.
    virtual const BDDiscInfo* discInfo(std::uint32_t index) = 0;

protected:
    ~IBDLoader() {}
};

} // namespace AVBased
