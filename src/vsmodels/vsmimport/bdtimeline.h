// SPDX-License-Identifier: LGPL-2.1-or-later
#pragma once

#include "engineaccess.h"
#include "vspavbased/timelinerecords.h"

#include <QtCore/QString>

namespace AVBased {
class ISimpleEditTimeLine;
}

namespace Vesk {

class CBDFile;
class CMovieInfomation;

/// Builds the engine's timeline of a Blu-ray disc: stream files one after another, each in full.
class BdTimeline
{
public:
    /// Makes an empty timeline, if the engine has such a thing.
    BdTimeline();

    bool isValid() const { return m_timeline != 0; }

    /// Puts `file` at the end.
    void append(CBDFile* file);

    /// Writes the timeline file.
    void save(const QString& path);

private:
    void setFormat(CMovieInfomation* movie);

    ImporterPtr m_importer;
    AVBased::ISimpleEditTimeLine* m_timeline; ///< part of m_importer
    // Kept from file to file: what a file does not have stays as it was.
    AVBased::SourceRecord m_source;
    AVBased::FormatRecord m_format;
};

} // namespace Vesk
