// SPDX-License-Identifier: LGPL-2.1-or-later
#pragma once

#include "records/discrecord.h"
#include "records/itemrecord.h"

#include <cstdint>
#include <vector>

namespace engine {

/// A picture that will probably be asked for.
struct PlannedPicture
{
    std::int32_t movie;
    std::int32_t stream;
    std::int32_t seekMs;
};

/// The pictures of one item, in the order in which the module asks for them: of a media file one, a
/// hundredth into it; of a DVD one in the middle of each chapter.
///
/// What is planned wrongly costs time, and nothing else.
std::vector<PlannedPicture> planPictures(const ItemRecord& item);

/// The same of a timeline that plays the files of a disc one after another, those without clips
/// left out: one a tenth into each clip, of those that begin at the same time the last.
std::vector<PlannedPicture> planPictures(const DiscRecord& disc);

} // namespace engine
