// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include "bytes/byteview.h"

#include <string>

namespace engine {

/// What a UDF file system writes in front of each of its descriptors, as ECMA-167 numbers them.
enum class UdfTag
{
    none = -1, ///< no descriptor, or a damaged one
    primaryVolume = 1,
    anchor = 2,
    partition = 5,
    logicalVolume = 6,
    terminator = 8,
    fileSet = 256,
    fileIdentifier = 257,
    allocationExtent = 258,
    fileEntry = 261,
    extendedFileEntry = 266
};

/// The descriptor that begins `bytes`. Only the tag itself is checked, not what follows it: one
/// wrong bit in a descriptor rarely hits what matters.
UdfTag udfTagOf(const ByteView& bytes);

/// One block of a partition or an image; short where it cannot be read.
Bytes readUdfBlock(const ByteSource& source, std::uint64_t block);

/// Text as UDF stores it: a byte that tells the width of the letters, and the letters.
std::string decodeUdfText(const ByteView& bytes);

} // namespace engine
