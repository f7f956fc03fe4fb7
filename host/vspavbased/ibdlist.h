// SPDX-License-Identifier: LGPL-2.1-or-later
#pragma once

#include "vspavbased/vspavbasedglobal.h"

namespace AVBased {

/// One named item of a Blu-ray list. Owned by the list.
class IBDListItem
{
public:
    /// A stream file's path (UTF-8) in lists of files and clips, a title's name in title lists. A
    /// clip has byte for byte the name that the file list gives its stream file.
    virtual const char* name() = 0;

protected:
    ~IBDListItem() {}
};

/// A list of named items.
class IBDList
{
public:
    /// Ends a list that the caller owns.
    virtual void release() = 0;

    /// The number of items.
    virtual std::uint32_t count() = 0;

    virtual void reserved2() {}
    virtual void reserved3() {}
    virtual void reserved4() {}
    virtual void reserved5() {}
    virtual void reserved6() {}
    virtual void reserved7() {}
    virtual void reserved8() {}

    /// The item at `index`, counted from 0; null when there is none.
    virtual IBDListItem* item(std::uint32_t index) = 0;

protected:
    ~IBDList() {}
};

} // namespace AVBased
