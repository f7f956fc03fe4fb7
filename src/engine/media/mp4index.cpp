// SPDX-License-Identifier: GPL-2.0-or-later
#include "media/mp4index.h"

#include "bytes/bufferedbytes.h"
#include "bytes/plainfile.h"
#include "enginelink/ascii.h"
#include "media/mp4boxes.h"

#include <algorithm>

namespace engine {

namespace {

/// What follows a box of a wrong size is no box.
bool isBox(const Mp4Box& box)
{
    return std::all_of(box.type.begin(), box.type.end(),
                       [](char c) { return isLetter(c) || isDigit(c) || c == ' '; });
}

} // namespace

bool mp4LacksIndex(const std::string& path, Deadline& deadline)
{
    constexpr int mostBoxes = 20000;
    const auto file = PlainFile::open(path);
    if (!file)
        return false;
    const BufferedBytes bytes(*file);
    auto box = readMp4Box(bytes, 0, file->size());
    if (!box || !box->isOneOf({"ftyp", "mdat", "wide", "free", "skip", "pnot"}))
        return false;
    for (int i = 0; box && i < mostBoxes && !deadline.expired(); ++i) {
        if (box->isOneOf({"moov"}) || !isBox(*box))
            return false;
        box = readMp4Box(bytes, box->end, file->size());
    }
    return !box;
}

} // namespace engine
