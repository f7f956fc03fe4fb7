// SPDX-License-Identifier: GPL-2.0-or-later
//
// The one place that includes libudfread's headers, and the types that own its objects.
#pragma once

#include <udfread/udfread.h>

#include <memory>

namespace engine {

struct CloseUdf
{
    void operator()(udfread* volume) const { udfread_close(volume); }
    void operator()(UDFDIR* directory) const { udfread_closedir(directory); }
    void operator()(UDFFILE* file) const { udfread_file_close(file); }
};

using UdfVolumePtr = std::unique_ptr<udfread, CloseUdf>;
using UdfDirectoryPtr = std::unique_ptr<UDFDIR, CloseUdf>; ///< goes before its volume
using UdfFilePtr = std::unique_ptr<UDFFILE, CloseUdf>;     ///< goes before its volume

} // namespace engine
