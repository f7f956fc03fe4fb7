// SPDX-License-Identifier: GPL-2.0-or-later
//
// The one place that includes libudfread's headers, and the types that own its objects.
//
// The library writes what it finds wrong with an image to standard error, and cannot be told not
// to: images without a UDF file system are to be kept from it.
#pragma once

#include <udfread/udfread.h>

#include <memory>

namespace engine {

/// Deletes with a function that takes the pointer.
template <auto Close>
struct CloseUdf
{
    template <typename T>
    void operator()(T* object) const
    {
        Close(object);
    }
};

using UdfPtr = std::unique_ptr<udfread, CloseUdf<udfread_close>>;
using UdfFilePtr = std::unique_ptr<UDFFILE, CloseUdf<udfread_file_close>>;
using UdfFolderPtr = std::unique_ptr<UDFDIR, CloseUdf<udfread_closedir>>;

} // namespace engine
