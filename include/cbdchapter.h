// SPDX-License-Identifier: LGPL-2.1-or-later
#pragma once

#include "vspimportglobal.h"

#include <QtCore/QObject>

namespace Vesk {

class CBDChapterPrivate;
class CBDFileClip;
class CBDTitle;

/// One chapter of a Blu-ray title. Owned by the title.
class VSPIMPORT_EXPORT CBDChapter : public QObject
{
public:
    /// At 0, of no length, without clips and title.
    CBDChapter(QObject* parent = 0);
    virtual ~CBDChapter();

    /// Start within the title, seconds.
    double timeStamp() const;
    void setTimeStamp(double seconds);

    /// Length in seconds.
    double duration() const;
    void setDuration(double seconds);

    /// The title that owns the chapter.
    CBDTitle* title() const;
    void setTitle(CBDTitle* title);

    /// The clips in playing order, which belong to their files; null outside the list.
    int clipCount() const;
    CBDFileClip* clip(int index) const;
    void appendClip(CBDFileClip* clip);

private:
    CBDChapterPrivate* d;

    Q_DISABLE_COPY(CBDChapter)
};

} // namespace Vesk
