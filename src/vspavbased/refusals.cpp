// SPDX-License-Identifier: LGPL-2.1-or-later
#include "refusals.h"

#include "enginelink/log.h"
#include "enginelink/receiver.h"

namespace engine {

namespace {

Receiver<AVBased::RefusalReceiver>& receiver()
{
    static Receiver<AVBased::RefusalReceiver> receiver;
    return receiver;
}

const char* inWords(AVBased::Refusal refusal)
{
    switch (refusal) {
    case AVBased::RefusedOther:
        break;
    case AVBased::RefusedUnknown:
        return "not a media file, or of a kind that is not known";
    case AVBased::RefusedNoDisc:
        return "no disc in it";
    case AVBased::RefusedNoStreams:
        return "no video or audio in it";
    case AVBased::RefusedDamaged:
        return "it is damaged or not complete";
    case AVBased::RefusedCutOff:
        return "it is cut off";
    case AVBased::RefusedNoIndex:
        return "it is cut off: its index is missing";
    case AVBased::RefusedProtected:
        return "protected against copying";
    case AVBased::RefusedTooLong:
        return "it took too long";
    case AVBased::RefusedCrashed:
        return "its decoder crashed, or needed too much memory";
    case AVBased::RefusedEmpty:
        return "the file is empty";
    case AVBased::RefusedUnreadable:
        return "the disk cannot read it";
    case AVBased::RefusedNoFile:
        return "neither a file nor a folder";
    case AVBased::RefusedGone:
        return "it is not there any more";
    case AVBased::RefusedDenied:
        return "no permission to read it";
    case AVBased::RefusedNoEngine:
        return "the engine cannot be started";
    }
    return "it cannot be opened or read";
}

} // namespace

AVBased::Refusal refusalOfEngine(std::uint32_t told)
{
    return told <= AVBased::RefusedNoEngine ? static_cast<AVBased::Refusal>(told)
                                            : AVBased::RefusedOther;
}

void refuse(const std::string& path, AVBased::Refusal refusal, bool isInLog)
{
    const char* reason = inWords(refusal);
    if (!isInLog)
        log(path + ": " + reason);
    receiver().tell(path.c_str(), static_cast<int>(refusal), reason);
}

} // namespace engine

void AVBased::setRefusalReceiver(RefusalReceiver receiver, void* context)
{
    engine::receiver().set(receiver, context);
}
