// SPDX-License-Identifier: LGPL-2.1-or-later
#pragma once

#include "vspimportglobal.h"

#include <QtCore/QObject>

namespace Vesk {

class CDVDChapterPrivate;
class CDVDTitle;

/// One chapter of a DVD title. Times in seconds from the title's start.
///
/// Its picture is the title's movieInfo()->imageUrl() with this chapter's number, counted from 1,
/// in the place of the last chapter's: "…-title-2-chapter-5.jpg". CImportContext::configDir() says
/// how pictures are called.
class VSPIMPORT_EXPORT CDVDChapter : public QObject
{
    Q_OBJECT

public:
    /// At 0, of no length, without title.
    CDVDChapter(QObject* parent = 0);
    virtual ~CDVDChapter();

    /// Where it begins.
    double timeStart() const;
    void setTimeStart(double seconds);

    /// Where it ends: the next chapter's start or the title's end.
    double timeEnd() const;
    void setTimeEnd(double seconds);

    /// timeEnd() - timeStart(), negative when they are reversed.
    double duration() const;

    /// The title that owns the chapter; not cleared when the title goes.
    CDVDTitle* title() const;
    void setTitle(CDVDTitle* title);

private:
    CDVDChapterPrivate* d;

    Q_DISABLE_COPY(CDVDChapter)
};

} // namespace Vesk
