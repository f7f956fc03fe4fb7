// SPDX-License-Identifier: LGPL-2.1-or-later
#pragma once

#include "cbdchapter.h"
#include "vspimportglobal.h"

#include <QtCore/QObject>

namespace Vesk {

class CBDFileClip;
class CBDTitlePrivate;

/// One title of a Blu-ray disc: a sequence of clips, which belong to their files, and chapters,
/// which belong to the title.
class VSPIMPORT_EXPORT CBDTitle : public QObject
{
public:
    /// Of no length, without chapters and clips.
    CBDTitle(QObject* parent = 0);
    virtual ~CBDTitle();

    /// Length in seconds.
    double duration() const;
    void setDuration(double seconds);

    /// Place in the disc's title list, counted from 0; -1 when the title could not be read.
    int titleId() const;
    void setTitleId(int id);

    /// Setting shrinks from the end, deleting what it removes, and grows by default objects; a
    /// negative count is 0.
    int chapterCount() const;
    void setChapterCount(int count);
    /// Null outside the list.
    CBDChapter* chapter(int index) const;

    /// The clips in playing order; null outside the list. A clip may occur several times.
    int clipCount() const;
    CBDFileClip* clip(int index) const;
    void appendClip(CBDFileClip* clip);

private:
    CBDTitlePrivate* d;

    Q_DISABLE_COPY(CBDTitle)
};

} // namespace Vesk
