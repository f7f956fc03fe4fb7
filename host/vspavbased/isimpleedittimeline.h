// SPDX-License-Identifier: LGPL-2.1-or-later
#pragma once

#include "vspavbased/timelinerecords.h"

namespace AVBased {

/// An edit timeline: sources that are played one after another. Part of the "SimpleEditImporter"
/// component and gone with it.
class ISimpleEditTimeLine
{
public:
    virtual void reserved0() {}

    /// Writes the timeline to a file, from which IAVManager::createImporter() makes an importer.
    virtual void saveToFile(const char* utf8Path) = 0;

    virtual void reserved2() {}
    virtual void reserved3() {}
    virtual void reserved4() {}
    virtual void reserved5() {}
    virtual void reserved6() {}
    virtual void reserved7() {}
    virtual void reserved8() {}
    virtual void reserved9() {}

    /// Sets duration and format of the source inserted last; the number of sources so far.
    virtual std::int32_t applyFormat(const FormatRecord* format) = 0;

    virtual void reserved11() {}

    /// Puts a source before the one at `position`, at the end with -1.
    virtual void insertSource(std::int32_t position, const SourceRecord* source) = 0;

    virtual void reserved13() {}
    virtual void reserved14() {}
    virtual void reserved15() {}
    virtual void reserved16() {}
    virtual void reserved17() {}

    /// Removes all sources.
    virtual void reset() = 0;

    virtual void reserved19() {}
    virtual void reserved20() {}
    virtual void reserved21() {}
    virtual void reserved22() {}
    virtual void reserved23() {}
    virtual void reserved24() {}
    virtual void reserved25() {}
    virtual void reserved26() {}
    virtual void reserved27() {}
    virtual void reserved28() {}
    virtual void reserved29() {}
    virtual void reserved30() {}
    virtual void reserved31() {}
    virtual void reserved32() {}
    virtual void reserved33() {}
    virtual void reserved34() {}

    /// Makes the source at `index` the current one.
    virtual void selectItem(std::int32_t index) = 0;

protected:
    ~ISimpleEditTimeLine() {}
};

} // namespace AVBased
