// SPDX-License-Identifier: GPL-2.0-or-later
#include "refusal.h"

#include <algorithm>
#include <cerrno>
#include <utility>

namespace engine {

namespace {

AVBased::Refusal& noted()
{
    thread_local AVBased::Refusal refusal = AVBased::RefusedOther;
    return refusal;
}

} // namespace

void noteRefusal(AVBased::Refusal refusal)
{
    noted() = std::max(noted(), refusal);
}

void noteFileError(int error)
{
    if (error == EACCES)
        noteRefusal(AVBased::RefusedDenied);
    else if (error == EIO)
        noteRefusal(AVBased::RefusedUnreadable);
}

AVBased::Refusal takeRefusal()
{
    return std::exchange(noted(), AVBased::RefusedOther);
}

} // namespace engine
